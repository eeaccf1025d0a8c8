#include "widgets/BitmapImage.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace corvane {
namespace {

constexpr int kFixedHeader = 54;
constexpr int kPaletteEntries = 256;
constexpr int kPaletteEnd = kFixedHeader + 4 * kPaletteEntries;
constexpr std::int64_t kBlock = 256 * 1024;  // stays in the cache between reading and copying

using Header = std::array<unsigned char, kPaletteEnd>;

std::uint32_t Field(const unsigned char* bytes, int size) {
  std::uint32_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = value << 8 | bytes[i];
  return value;
}

QList<QRgb> Palette(const Header& header) {
  QList<QRgb> colors(kPaletteEntries);
  for (int i = 0; i < kPaletteEntries; ++i) {
    const unsigned char* entry = &header[kFixedHeader + 4 * i];
    colors[i] = qRgb(entry[2], entry[1], entry[0]);
  }
  return colors;
}

}  // namespace

BitmapFile::BitmapFile(const std::filesystem::path& path) : file_(path) {
  if (file_.Error() != 0 || !ReadHeader()) bits_ = 0;
}

bool BitmapFile::ReadHeader() {
  Header header{};
  const std::size_t read = file_.ReadAt(0, header.data(), header.size());
  if (read < kFixedHeader || header[0] != 'B' || header[1] != 'M') return false;
  const std::uint32_t width = Field(&header[18], 4);
  const std::uint32_t height = Field(&header[22], 4);
  bits_ = static_cast<int>(Field(&header[28], 2));
  if (Field(&header[14], 4) != 40 || Field(&header[30], 4) != 0 || (bits_ != 8 && bits_ != 24)) return false;
  if (width == 0 || height == 0 || width > INT32_MAX || height > INT32_MAX) return false;
  width_ = static_cast<int>(width);
  height_ = static_cast<int>(height);
  stride_ = (std::int64_t{width} * bits_ / 8 + 3) / 4 * 4;
  offset_ = Field(&header[10], 4);
  if (offset_ < (bits_ == 8 ? kPaletteEnd : kFixedHeader) || offset_ > file_.Size()) return false;
  if (bits_ == 8) palette_ = Palette(header);
  return stride_ <= (file_.Size() - offset_) / height;
}

QImage BitmapFile::Part(const QRect& part) const {
  if (!IsOpen()) return {};
  QImage image(part.size(), QImage::Format_RGB32);
  return !image.isNull() && ReadRows(part, image) ? image : QImage();
}

QImage BitmapFile::Whole() const {
  if (!IsOpen()) return {};
  QImage image(Size(), bits_ == 8 ? QImage::Format_Indexed8 : QImage::Format_RGB888);
  if (image.isNull()) return {};
  if (bits_ == 8) image.setColorTable(palette_);
  return ReadRows(QRect(QPoint(0, 0), Size()), image) ? image : QImage();
}

bool BitmapFile::ReadRows(const QRect& part, QImage& image) const {
  const std::int64_t skipped = std::int64_t{part.x()} * bits_ / 8;
  const std::int64_t wanted = std::int64_t{part.width()} * bits_ / 8;
  // Wide parts are read in blocks of whole rows, narrow ones row by row.
  const bool wholeRows = 4 * wanted >= stride_;
  const int rowsPerRead =
      wholeRows ? static_cast<int>(std::clamp<std::int64_t>(kBlock / stride_, 1, part.height())) : 1;
  std::vector<unsigned char> block(static_cast<std::size_t>(wholeRows ? rowsPerRead * stride_ : wanted));
  const int bottom = height_ - 1 - part.bottom();
  for (int first = 0; first < part.height(); first += rowsPerRead) {
    const int rows = std::min(rowsPerRead, part.height() - first);
    const auto bytes = static_cast<std::size_t>(wholeRows ? rows * stride_ : wanted);
    const std::int64_t start = offset_ + (bottom + first) * stride_ + (wholeRows ? 0 : skipped);
    if (file_.ReadAt(start, block.data(), bytes) != bytes) return false;
    for (int row = 0; row < rows; ++row)
      CopyRow(block.data() + (wholeRows ? row * stride_ + skipped : 0), image,
              part.height() - 1 - first - row);
  }
  return true;
}

void BitmapFile::CopyRow(const unsigned char* source, QImage& image, int y) const {
  const int width = image.width();
  uchar* target = image.scanLine(y);
  if (image.format() == QImage::Format_Indexed8) {
    std::memcpy(target, source, static_cast<std::size_t>(width));
    return;
  }
  if (image.format() == QImage::Format_RGB888) {
    for (int x = 0; x < width; ++x, source += 3, target += 3) {
      target[0] = source[2];
      target[1] = source[1];
      target[2] = source[0];
    }
    return;
  }
  auto* pixels = reinterpret_cast<QRgb*>(target);
  const QRgb* colors = palette_.constData();
  for (int x = 0; x < width; ++x)
    pixels[x] = bits_ == 8 ? colors[source[x]] : qRgb(source[3 * x + 2], source[3 * x + 1], source[3 * x]);
}

QImage LoadBitmapImage(const std::filesystem::path& path) { return BitmapFile(path).Whole(); }

}  // namespace corvane
