#include "platform/QtPrintJob.h"

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QFontDatabase>
#include <QPrintDialog>
#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

#include "platform/BitmapImage.h"
#include "platform/QtText.h"

namespace corvane {
namespace {

constexpr double kPixelsPerInch = 96;
constexpr double kTextPoints = 10;
constexpr int kTextColumns = 80;

// Ten points, or less where a line of 80 characters would not fit the page.
QFont TextFont(QPainter& painter, double pageWidth) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setStyleHint(QFont::Monospace);
  font.setPixelSize(std::max(1, qRound(kTextPoints / 72 * painter.device()->logicalDpiY())));
  const double lineWidth =
      QFontMetricsF(font, painter.device()).horizontalAdvance(QString(kTextColumns, 'M'));
  if (lineWidth > pageWidth) font.setPixelSize(std::max(1, int(font.pixelSize() * pageWidth / lineWidth)));
  return font;
}

// Lines of at most `columns` characters.
QStringList PrintedLines(QString text, qsizetype columns) {
  QStringList lines;
  for (const QString& line : text.remove('\r').split('\n')) {
    qsizetype start = 0;
    do {
      lines.append(line.mid(start, columns));
      start += columns;
    } while (start < line.size());
  }
  while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
  return lines;
}

// The PDF engine does not notice a full disk: a document that was written ends in its end mark.
bool IsWhole(const std::filesystem::path& pdf) {
  const InputFile file(pdf);
  std::array<char, 16> end{};
  const std::size_t got = file.ReadAt(std::max<std::int64_t>(0, file.Size() - 16), end.data(), end.size());
  return std::string_view(end.data(), got).find("%%EOF") != std::string_view::npos;
}

// What keeps more from being written to a file, an errno.
int WriteFault(const std::filesystem::path& path) {
  constexpr int kTries = 256;
  const std::array<char, 4096> block{};
  const int file = open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOFOLLOW);
  if (file < 0) return errno;
  int error = EIO;
  for (int i = 0; i < kTries && error == EIO; ++i)
    if (write(file, block.data(), block.size()) < 0) error = errno;
  close(file);
  return error;
}

}  // namespace

QtPrintJob::QtPrintJob(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer)) {
  const QString name = printer_->outputFileName();
  if (!name.isEmpty()) {
    file_.emplace(ToPath(name));
    Fail(file_->Error());
    printer_->setOutputFileName(ToQt(file_->Temporary()));
  }
  if (error_ == 0 && !painter_.begin(printer_.get())) Fail(EIO);
  // Without it, pictures in a PDF file are compressed with loss.
  if (error_ == 0) painter_.setRenderHint(QPainter::LosslessImageRendering);
}

void QtPrintJob::Fail(int error) {
  if (error_ == 0) error_ = error;
}

QRectF QtPrintJob::Page() const { return printer_->pageLayout().paintRectPixels(printer_->resolution()); }

float QtPrintJob::PageWidth() const {
  return static_cast<float>(Page().width() * kPixelsPerInch / printer_->resolution());
}

float QtPrintJob::PageHeight() const {
  return static_cast<float>(Page().height() * kPixelsPerInch / printer_->resolution());
}

void QtPrintJob::Picture(const std::filesystem::path& bitmap, float left, float top, float width,
                         float height) {
  const QImage image = LoadBitmapImage(bitmap);
  if (image.isNull()) Fail(EIO);
  if (error_ != 0) return;
  const double scale = printer_->resolution() / kPixelsPerInch;
  painter_.drawImage(QRectF(left * scale, top * scale, width * scale, height * scale), image);
}

void QtPrintJob::Text(const std::string& text) {
  if (error_ != 0) return;
  const QRectF page(QPointF(0, 0), Page().size());
  painter_.setFont(TextFont(painter_, page.width()));
  const QFontMetricsF metrics = painter_.fontMetrics();
  const auto columns =
      std::max<qsizetype>(kTextColumns, qsizetype(page.width() / metrics.horizontalAdvance('M')));
  double y = 0;
  for (const QString& line : PrintedLines(ToQt(text), columns)) {
    if (y + metrics.height() > page.height()) {
      if (!printer_->newPage()) Fail(EIO);
      y = 0;
    }
    painter_.drawText(QPointF(0, y + metrics.ascent()), line);
    y += metrics.lineSpacing();
  }
}

int QtPrintJob::End() {
  if (error_ == 0 && (!painter_.end() || printer_->printerState() == QPrinter::Error)) Fail(EIO);
  if (error_ == 0 && file_)
    Fail(IsWhole(file_->Temporary()) ? file_->Commit() : WriteFault(file_->Temporary()));
  return error_;
}

std::unique_ptr<PrintJob> ShowPrintDialog(const std::string& documentName) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setDocName(ToQt(documentName));
  QPrintDialog dialog(printer.get(), QApplication::activeWindow());
  dialog.setOptions(QAbstractPrintDialog::PrintToFile);
  if (dialog.exec() != QDialog::Accepted) return nullptr;
  return std::make_unique<QtPrintJob>(std::move(printer));
}

}  // namespace corvane
