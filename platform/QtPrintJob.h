#pragma once

#include <QPainter>
#include <QPrinter>
#include <memory>
#include <optional>

#include "base/safe_write.h"
#include "platform/platform.h"

namespace corvane {

class QtPrintJob : public PrintJob {
 public:
  explicit QtPrintJob(std::unique_ptr<QPrinter> printer);
  float PageWidth() const override;
  float PageHeight() const override;
  void Picture(const std::filesystem::path& bitmap, float left, float top, float width,
               float height) override;
  void Text(const std::string& text) override;
  int End() override;

 private:
  QRectF Page() const;
  void Fail(int error);

  std::unique_ptr<QPrinter> printer_;
  std::optional<Replacement> file_;  // where the document goes to a file
  QPainter painter_;
  int error_ = 0;
};

// Qt's print dialog, which offers a PDF file where there is no printer. Null when it was cancelled.
std::unique_ptr<PrintJob> ShowPrintDialog(const std::string& documentName);

}  // namespace corvane
