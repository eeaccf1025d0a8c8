#include "widgets/BitmapImage.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "core/files.h"

namespace corvane {
namespace {

constexpr int kFixedHeader = 54;
constexpr int kPaletteEntries = 256;
constexpr int kPaletteEnd = kFixedHeader + 4 * kPaletteEntries;
constexpr std::int64_t kBlock = 256 * 1024;  // stays in the cache between reading and copying

std::uint32_t Field(const unsigned char* bytes, int size) {
  std::uint32_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = value << 8 | bytes[i];
  return value;
}

struct Layout {
  int bits = 0;
  int width = 0;
  int height = 0;
  std::int64_t stride = 0;
  std::int64_t offset = 0;
};

// What the header promises, or zero bits where the program never writes such a file or it is cut short.
Layout ReadLayout(const std::array<unsigned char, kPaletteEnd>& header, std::size_t read,
                  std::int64_t fileSize) {
  Layout layout;
  if (read < kFixedHeader || header[0] != 'B' || header[1] != 'M') return layout;
  const std::uint32_t width = Field(&header[18], 4);
  const std::uint32_t height = Field(&header[22], 4);
  const std::uint32_t bits = Field(&header[28], 2);
  const bool known = Field(&header[14], 4) == 40 && Field(&header[30], 4) == 0 && (bits == 8 || bits == 24);
  if (!known || width == 0 || height == 0 || width > INT32_MAX || height > INT32_MAX) return layout;
  layout.width = static_cast<int>(width);
  layout.height = static_cast<int>(height);
  layout.stride = (std::int64_t{width} * bits / 8 + 3) / 4 * 4;
  layout.offset = Field(&header[10], 4);
  const std::int64_t firstPixel = bits == 8 ? kPaletteEnd : kFixedHeader;
  if (layout.offset < firstPixel || layout.offset > fileSize) return layout;
  if (layout.stride <= (fileSize - layout.offset) / height) layout.bits = static_cast<int>(bits);
  return layout;
}

QList<QRgb> Palette(const std::array<unsigned char, kPaletteEnd>& header) {
  QList<QRgb> colors(kPaletteEntries);
  for (int i = 0; i < kPaletteEntries; ++i) {
    const unsigned char* entry = &header[kFixedHeader + 4 * i];
    colors[i] = qRgb(entry[2], entry[1], entry[0]);
  }
  return colors;
}

void CopyRow(const unsigned char* source, uchar* target, const Layout& layout) {
  if (layout.bits == 8) {
    std::memcpy(target, source, static_cast<std::size_t>(layout.width));
    return;
  }
  for (int x = 0; x < layout.width; ++x, source += 3, target += 3) {
    target[0] = source[2];
    target[1] = source[1];
    target[2] = source[0];
  }
}

bool ReadRows(const InputFile& file, const Layout& layout, QImage& image) {
  const int rowsPerBlock =
      static_cast<int>(std::clamp<std::int64_t>(kBlock / layout.stride, 1, layout.height));
  std::vector<unsigned char> block(static_cast<std::size_t>(rowsPerBlock * layout.stride));
  for (int first = 0; first < layout.height; first += rowsPerBlock) {
    const int rows = std::min(rowsPerBlock, layout.height - first);
    const auto bytes = static_cast<std::size_t>(rows * layout.stride);
    if (file.ReadAt(layout.offset + first * layout.stride, block.data(), bytes) != bytes) return false;
    for (int row = 0; row < rows; ++row)
      CopyRow(&block[static_cast<std::size_t>(row * layout.stride)],
              image.scanLine(layout.height - 1 - first - row), layout);
  }
  return true;
}

}  // namespace

QImage LoadBitmapImage(const std::filesystem::path& path) {
  const InputFile file(path);
  if (file.Error() != 0) return {};
  std::array<unsigned char, kPaletteEnd> header{};
  const std::size_t read = file.ReadAt(0, header.data(), header.size());
  const Layout layout = ReadLayout(header, read, file.Size());
  if (layout.bits == 0) return {};
  QImage image(layout.width, layout.height,
               layout.bits == 8 ? QImage::Format_Indexed8 : QImage::Format_RGB888);
  if (image.isNull()) return {};
  if (layout.bits == 8) image.setColorTable(Palette(header));
  return ReadRows(file, layout, image) ? image : QImage();
}

}  // namespace corvane
