#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "base/display_bitmap.h"
#include "base/files.h"
#include "base/refusal.h"

namespace corvane {

inline constexpr int kBitmapFieldsSize = 54;    // file header, information header
inline constexpr int kBitmapHeaderSize = 1078;  // the same and a palette of 256 entries

// The fields of a Windows bitmap with an information header of 40 bytes, as they stand in the file.
struct BitmapFields {
  bool isBitmap = false;  // begins with "BM"
  std::uint32_t fileSize = 0;
  std::uint32_t dataOffset = 0;
  std::uint32_t headerSize = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint16_t planes = 0;
  std::uint16_t bitCount = 0;
  std::uint32_t compression = 0;

  // What every bitmap has that the program reads or writes.
  bool IsUncompressed() const { return isBitmap && headerSize == 40 && compression == 0; }
};
BitmapFields ParseBitmapFields(std::span<const unsigned char, kBitmapFieldsSize> bytes);

// Whether a bitmap of this size can be written: its bytes are counted in 31 bits. Sides below 2^32.
constexpr bool FitsBitmapFile(std::int64_t width, std::int64_t height, int bytesPerPixel = 1) {
  const std::int64_t stride = (bytesPerPixel * width + 3) / 4 * 4;
  return height <= (INT32_MAX - kBitmapHeaderSize) / stride;
}

// Where the pixels of an uncompressed file lie.
struct PixelLayout {
  int width = 0;
  int height = 0;
  int bytesPerPixel = 0;  // 1, 3 or 4
  std::int64_t offset = 0;
  std::int64_t stride = 0;  // bytes from one file row to the next
  bool topDown = false;

  std::int64_t Size() const { return stride * height; }
};
// Nothing where the fields name no such pixels, or more than a file of this size holds.
std::optional<PixelLayout> LayoutOf(const BitmapFields& fields, std::int64_t fileSize);

// The four little-endian bytes of a non-negative number below 2^32.
std::array<std::uint8_t, 4> LongToBytes(double value);

// True for the bytes of a template: of display bitmaps, gray or with another palette, and of bitmaps of 24
// bits.
bool IsDisplayTemplate(std::span<const unsigned char> bytes);
bool IsColorTemplate(std::span<const unsigned char> bytes);

// The refusal for a working or shipped file that is missing or damaged or, where `error` is an errno, cannot
// be read.
Refusal Damaged(const std::filesystem::path& path, int error = 0);

// The size of a display bitmap, which is checked first (signature, offset 1078, 8 bits, sizes that agree with
// its length). A refusal names the file and leaves the size alone.
std::optional<Refusal> ReadDisplaySize(const std::filesystem::path& path, int& width, int& height);

// The same and its pixel bytes. A picture of the same size keeps its memory; on a refusal it stays as it was,
// except that a disk that fails during the read leaves some levels changed.
std::optional<Refusal> ReadDisplayBitmap(const std::filesystem::path& path, DisplayBitmap& picture);

// Writes a display bitmap: the header template (the gray one, or any display bitmap whose palette is wanted)
// with its size fields set, then the pixels, over whatever `target` holds. The rows of `pixels` are
// RowStrideFor(width) apart. A refusal names the file at fault.
std::optional<Refusal> WriteDisplayBitmap(const std::filesystem::path& templateFile,
                                          const std::filesystem::path& target, ConstGrayView pixels);

// The same for a bitmap of 24 bits and its template: `pixels` are rows of blue, green and red bytes, bottom
// row first, RowStrideFor(3 * width) apart.
std::optional<Refusal> WriteColorBitmap(const std::filesystem::path& templateFile,
                                        const std::filesystem::path& target, int width, int height,
                                        Bytes pixels);

}  // namespace corvane
