// Writes the manual with its pictures inside: make_manual TEXT PICTURES SAMPLE MANUAL. In TEXT a picture is
// named as "picture:NAME", which is PICTURES/NAME.png, or as "filter:CAPTION:RADIUS": part of SAMPLE, a
// bitmap, as it comes out of that filter, or as it is where CAPTION is "none". The manual stays one file:
// they become data URLs.

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "filters/filter_table.h"
#include "formats/gray_picture.h"

namespace corvane {
namespace {

constexpr int kLeft = 392, kTop = 75, kWidth = 76, kHeight = 56;  // the part of the sample: a star cluster
constexpr int kEnlarged = 3;
constexpr int kWidest = 620;  // of a picture, in pixels of the help window

[[noreturn]] void Fail(const std::string& what) {
  std::cerr << "make_manual: " << what << '\n';
  std::exit(EXIT_FAILURE);
}

QByteArray Read(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) Fail("cannot read " + path.toStdString());
  return file.readAll();
}

DisplayBitmap Filtered(ConstGrayView source, const QString& caption, int radius) {
  DisplayBitmap result(source.width, source.height);
  std::memcpy(result.bits.data(), source.bits, source.Size());
  if (caption == "none") return result;
  NoProgress progress;
  for (const FilterEntry& filter : FilterTable()) {
    if (caption != filter.caption) continue;
    filter.preview({source, result.View(), radius, progress});
    return result;
  }
  Fail("no filter " + caption.toStdString());
}

QByteArray Png(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "PNG");
  return bytes;
}

QByteArray WindowPicture(const QString& path) {
  const QByteArray bytes = Read(path);
  const QImage image = QImage::fromData(bytes);
  if (image.isNull()) Fail("no picture in " + path.toStdString());
  if (image.width() <= kWidest) return bytes;
  return Png(image.convertToFormat(QImage::Format_RGB32).scaledToWidth(kWidest, Qt::SmoothTransformation));
}

QByteArray FilterPicture(ConstGrayView sample, const QString& caption, int radius) {
  const DisplayBitmap result = Filtered(sample, caption, radius);
  QImage part(kWidth, kHeight, QImage::Format_Grayscale8);
  for (int y = 0; y < kHeight; ++y)
    std::memcpy(part.scanLine(y), result.View().Row(sample.height - 1 - kTop - y) + kLeft, kWidth);
  return Png(part.scaled(part.size() * kEnlarged));
}

QByteArray WithPictures(const QString& text, const QString& pictures, ConstGrayView sample) {
  static const QRegularExpression kSource("src=\"(picture|filter):([^\":]+)(?::([123]))?\"");
  QByteArray manual;
  qsizetype done = 0;
  for (auto each = kSource.globalMatch(text); each.hasNext();) {
    const QRegularExpressionMatch match = each.next();
    const QByteArray png = match.captured(1) == "picture"
                               ? WindowPicture(pictures + "/" + match.captured(2) + ".png")
                               : FilterPicture(sample, match.captured(2), match.captured(3).toInt());
    manual += text.mid(done, match.capturedStart() - done).toUtf8() + "src=\"data:image/png;base64," +
              png.toBase64() + '"';
    done = match.capturedEnd();
  }
  return manual + text.mid(done).toUtf8();
}

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
  using namespace corvane;
  if (argc != 5) return EXIT_FAILURE;
  DisplayBitmap sample;
  BitmapFields fields;
  if (const auto refusal = ReadGrayPicture(argv[3], sample, fields)) Fail(refusal->text);
  if (sample.width < kLeft + kWidth || sample.height < kTop + kHeight) Fail("the sample is too small");
  const QByteArray manual =
      WithPictures(QString::fromUtf8(Read(argv[1])), argv[2], std::as_const(sample).View());
  QFile file(argv[4]);
  const bool written = file.open(QIODevice::WriteOnly) && file.write(manual) == manual.size() && file.flush();
  return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
