#include "platform/BitmapImage.h"

namespace corvane {
namespace {

// The lines of a picture of this format have no padding.
std::uint32_t* Pixels(QImage& image) { return reinterpret_cast<std::uint32_t*>(image.bits()); }

}  // namespace

QImage LoadPart(const BitmapFile& picture, const QRect& part) {
  QImage image(part.size(), QImage::Format_RGB32);
  if (image.isNull()) return {};
  const PixelRect pixels{part.x(), part.y(), part.width(), part.height()};
  return picture.Read(pixels, Pixels(image)) ? image : QImage();
}

QImage LoadReduced(const BitmapFile& picture, QSize size) {
  size = size.boundedTo(SizeOf(picture));
  QImage image(size, QImage::Format_RGB32);
  if (image.isNull()) return {};
  return ReadReduced(picture, size.width(), size.height(), Pixels(image)) ? image : QImage();
}

QImage LoadBitmapImage(const std::filesystem::path& path) {
  const BitmapFile file(path);
  return file.IsOpen() ? LoadPart(file, QRect(QPoint(0, 0), SizeOf(file))) : QImage();
}

}  // namespace corvane
