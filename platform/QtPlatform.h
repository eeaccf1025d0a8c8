#pragma once

#include <QElapsedTimer>
#include <QPointer>

#include "platform/HelpViewer.h"
#include "platform/platform.h"

namespace corvane {

// The platform of a desktop session.
class QtPlatform : public Platform {
 public:
  QtPlatform() = default;
  ~QtPlatform() override;
  QtPlatform(const QtPlatform&) = delete;
  QtPlatform& operator=(const QtPlatform&) = delete;

  FileChoice OpenFile(const FileRequest& request) override;
  FileChoice SaveFile(const FileRequest& request) override;
  std::string Setting(const std::string& key, const std::string& fallback) override;
  int SaveSettings(const Settings& values) override;
  std::filesystem::path DocumentsDir() override;
  std::unique_ptr<PrintJob> Print(const std::string& documentName) override;
  void OpenHelp(const std::filesystem::path& file, const std::string& topic) override;
  void BusyCursor(bool busy) override;
  void Yield() override;

 protected:
  Answer DoMessage(const std::string& text, const std::string& title, Buttons buttons) override;

 private:
  bool busy_ = false;
  bool yielding_ = false;
  QElapsedTimer sinceYield_;
  QPointer<HelpViewer> help_;
};

}  // namespace corvane
