#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "core/modcv.h"
#include "core/refusal.h"

namespace corvane {

inline constexpr int kBitmapHeaderSize = 1078;  // file header, information header, 256-entry palette
inline constexpr int kBitmapFieldsSize = 54;    // file header, information header

// The fields of a Windows bitmap with an information header of 40 bytes, as they stand in the file.
struct BitmapFields {
  bool isBitmap = false;  // begins with "BM"
  std::uint32_t fileSize = 0;
  std::uint32_t dataOffset = 0;
  std::uint32_t headerSize = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint16_t bitCount = 0;
  std::uint32_t compression = 0;
};
BitmapFields ParseBitmapFields(std::span<const unsigned char, kBitmapFieldsSize> bytes);

// The four little-endian bytes of a non-negative number below 2^32.
std::array<std::uint8_t, 4> LongToBytes(double value);

// Reads a display bitmap's header back into the store: BitmapFileSize, DataOffset, ImageWidth, ImageHeight,
// BitmapDataSize, ImageAspect, RowStride. The file is checked first (signature, offset 1078, 8 bits, sizes
// that agree with its length); on a refusal, which names the file, the store stays as it was.
std::optional<Refusal> ReadBitmapHeader(ModCV& cv, const std::filesystem::path& path);

// ReadBitmapHeader, then the pixel bytes into DisplayBits. On a refusal the store stays as it was, but for
// the values (never the number) of the pixel bytes where the disk failed in the middle of them.
std::optional<Refusal> LoadDisplayBits(ModCV& cv, const std::filesystem::path& path);

// Writes a display bitmap: the header template of AppDir (the gray one, or a palette template of the same
// form) with its size fields set, then the pixels, over whatever `target` holds. The rows of `pixels` are
// RowStrideFor(width) apart. A refusal names the file at fault.
std::optional<Refusal> WriteDisplayBitmap(const std::filesystem::path& templateFile,
                                          const std::filesystem::path& target, ConstGrayView pixels);

// Sets the store's size fields (ImageWidth .. DataOffset) for a display bitmap of this size.
void DescribeDisplayBitmap(ModCV& cv, int width, int height);

// What is said where memory does not suffice for a picture.
Refusal NotEnoughMemory();

}  // namespace corvane
