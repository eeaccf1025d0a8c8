#include "platform/QtPrintJob.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPrintDialog>
#include <algorithm>

#include "platform/QtText.h"
#include "widgets/BitmapImage.h"

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

}  // namespace

QtPrintJob::QtPrintJob(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer)) {
  failed_ = !painter_.begin(printer_.get());
  // Otherwise pictures go through a lossy compression on their way to a PDF file.
  if (!failed_) painter_.setRenderHint(QPainter::LosslessImageRendering);
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
  if (failed_ || image.isNull()) {
    failed_ = true;
    return;
  }
  const double scale = printer_->resolution() / kPixelsPerInch;
  painter_.drawImage(QRectF(left * scale, top * scale, width * scale, height * scale), image);
}

void QtPrintJob::Text(const std::string& text) {
  if (failed_) return;
  const QRectF page(QPointF(0, 0), Page().size());
  painter_.setFont(TextFont(painter_, page.width()));
  const QFontMetricsF metrics = painter_.fontMetrics();
  const auto columns =
      std::max<qsizetype>(kTextColumns, qsizetype(page.width() / metrics.horizontalAdvance('M')));
  double y = 0;
  for (const QString& line : PrintedLines(ToQt(text), columns)) {
    if (y + metrics.height() > page.height()) {
      failed_ = failed_ || !printer_->newPage();
      y = 0;
    }
    painter_.drawText(QPointF(0, y + metrics.ascent()), line);
    y += metrics.lineSpacing();
  }
}

bool QtPrintJob::End() {
  if (!failed_) failed_ = !painter_.end() || printer_->printerState() == QPrinter::Error;
  if (failed_ || printer_->outputFormat() != QPrinter::PdfFormat) return !failed_;
  // The PDF engine does not notice a full disk: a document that was written ends in its end mark.
  QFile file(printer_->outputFileName());
  const QByteArray mark = "%%EOF";
  return QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly) &&
         file.seek(std::max<qint64>(0, file.size() - 16)) && file.readAll().contains(mark);
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
