#pragma once

#include <cstddef>
#include <cstdint>

#include "base/pixel_buffer.h"

namespace corvane {

// Bytes of a row of `width` 24-bit pixels: 3 * width rounded up to a multiple of 4.
constexpr std::int64_t CompositeStride(std::int64_t width) { return (3 * width + 3) / 4 * 4; }

// A picture of three bytes a pixel, blue, green, red, bottom row first, rows padded to a multiple of 4 bytes.
// All bytes start out unspecified.
class ColorBitmap {
 public:
  ColorBitmap() = default;
  ColorBitmap(int bitmapWidth, int bitmapHeight)
      : bits(static_cast<std::size_t>(CompositeStride(bitmapWidth)) * bitmapHeight),
        width(bitmapWidth),
        height(bitmapHeight),
        stride(CompositeStride(bitmapWidth)) {}
  std::uint8_t* Row(int y) { return bits.data() + static_cast<std::size_t>(stride) * y; }
  const std::uint8_t* Row(int y) const { return bits.data() + static_cast<std::size_t>(stride) * y; }

  ByteBuffer bits;
  int width = 0;
  int height = 0;
  std::int64_t stride = 0;
};

}  // namespace corvane
