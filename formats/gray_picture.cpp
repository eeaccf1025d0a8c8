#include "formats/gray_picture.h"

#include <algorithm>
#include <array>
#include <new>
#include <string>
#include <utility>

#include "formats/gray_pixels.h"

namespace corvane {
namespace {

constexpr std::uint32_t kMostPixels = 32767;  // in a row, and in a column

Refusal OpenError(const std::string& text) { return {"FILE OPEN ERROR", text}; }

Refusal Incomplete() { return OpenError("The bitmap file is damaged or incomplete. Can't open file."); }

// A file of the older kind, complete with its header of 12 bytes, may be shorter than the fields read here.
bool IsOlderKind(const BitmapFields& fields, std::int64_t size) {
  return fields.isBitmap && fields.headerSize == 12 && size >= 26;
}

std::optional<Refusal> ReadFields(const InputFile& file, BitmapFields& fields) {
  if (file.Error() != 0) return OpenError("Error Number " + std::to_string(file.Error()));
  std::array<unsigned char, kBitmapFieldsSize> bytes{};
  const std::size_t got = file.ReadAt(0, bytes.data(), bytes.size());
  BitmapFields found = ParseBitmapFields(bytes);
  if (got < bytes.size()) {
    if (!IsOlderKind(found, file.Size())) return Incomplete();
    found.compression = 0;  // a field it does not have
  }
  fields = found;
  return std::nullopt;
}

std::optional<Refusal> FindLayout(const BitmapFields& fields, std::int64_t fileSize, PixelLayout& layout) {
  const std::uint32_t height = std::min(fields.height, 0u - fields.height);  // a negative one is topDown
  if (fields.width > kMostPixels) return OpenError("Image width exceeds bitmap limit.");
  if (height > kMostPixels) return OpenError("Image height exceeds bitmap limit.");
  if (fields.bitCount != 8 && fields.bitCount != 24 && fields.bitCount != 32)
    return OpenError("Unrecognized bitmap format. Cant open file.");
  const auto found = LayoutOf(fields, fileSize);
  if (!found) return Incomplete();
  layout = *found;
  return std::nullopt;
}

// Rows of gray levels as they stand in the file, padding included. False when the file cannot be read.
bool ReadBitmap8(const InputFile& file, const PixelLayout& layout, GrayView levels) {
  if (file.ReadAt(layout.offset, levels.bits, levels.Size()) != levels.Size()) return false;
  if (!layout.topDown) return true;
  for (int y = 0; y < levels.height / 2; ++y)
    std::swap_ranges(levels.Row(y), levels.Row(y) + levels.stride, levels.Row(levels.height - 1 - y));
  return true;
}

// Gray levels of 24- and 32-bit pixels. The file is read some rows at a time: its colors are never all in
// memory.
bool ReadBitmap24(const InputFile& file, const PixelLayout& layout, GrayView levels) {
  constexpr std::int64_t kBlockBytes = 256 * 1024;
  const auto stride = static_cast<std::size_t>(layout.stride);
  const int rows = static_cast<int>(std::clamp<std::int64_t>(kBlockBytes / layout.stride, 1, layout.height));
  ByteBuffer colors(static_cast<std::size_t>(rows) * stride);
  for (int first = 0; first < layout.height; first += rows) {
    const int count = std::min(rows, layout.height - first);
    const std::size_t bytes = static_cast<std::size_t>(count) * stride;
    if (file.ReadAt(layout.offset + first * layout.stride, colors.data(), bytes) != bytes) return false;
    for (int i = first; i < first + count; ++i) {
      std::uint8_t* row = levels.Row(layout.topDown ? layout.height - 1 - i : i);
      GrayFromColor(colors.data() + static_cast<std::size_t>(i - first) * stride, layout.bytesPerPixel, row,
                    layout.width);
      std::fill(row + layout.width, row + levels.stride, std::uint8_t{0});
    }
  }
  return true;
}

}  // namespace

std::vector<Refusal> FindBitmapFaults(const std::filesystem::path& path) {
  BitmapFields fields;
  if (const auto refusal = ReadFields(InputFile(path), fields)) return {*refusal};
  std::vector<Refusal> faults;
  if (!fields.isBitmap)
    faults.push_back({"FILE TYPE ERROR", "The file selected is not a proper Windows image bitmap."});
  if (fields.headerSize != 40) faults.push_back(OpenError("Unsupported bitmap format. Can't open file."));
  if (fields.compression != 0)
    faults.push_back(OpenError("Compressed bitmap formats are not supported. Can't open file."));
  return faults;
}

std::optional<Refusal> ReadGrayPicture(const std::filesystem::path& path, DisplayBitmap& picture,
                                       BitmapFields& fields) try {
  const InputFile file(path);
  BitmapFields found;
  PixelLayout layout;
  if (auto refusal = ReadFields(file, found)) return refusal;
  if (auto refusal = FindLayout(found, file.Size(), layout)) return refusal;
  DisplayBitmap gray;
  gray.width = layout.width;
  gray.height = layout.height;
  gray.stride = RowStrideFor(layout.width);
  gray.bits.Resize(gray.View().Size());
  const bool read = layout.bytesPerPixel == 1 ? ReadBitmap8(file, layout, gray.View())
                                              : ReadBitmap24(file, layout, gray.View());
  if (!read) return Incomplete();
  picture = std::move(gray);
  fields = found;
  return std::nullopt;
} catch (const std::bad_alloc&) {
  return NotEnoughMemory();
}

}  // namespace corvane
