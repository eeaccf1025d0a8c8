#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/pixel_buffer.h"

namespace corvane {

// Bytes of a display row: `width` rounded up to a multiple of 4.
constexpr int RowStrideFor(int width) { return (width + 3) / 4 * 4; }

// Gray levels, bottom row first, `stride` bytes from one row to the next: what kernels take.
struct ConstGrayView {
  const std::uint8_t* bits = nullptr;
  int width = 0;
  int height = 0;
  int stride = 0;
  const std::uint8_t* Row(int y) const { return bits + static_cast<std::size_t>(y) * stride; }
  std::uint8_t At(int x, int y) const { return Row(y)[x]; }
  std::size_t Size() const { return static_cast<std::size_t>(stride) * height; }
};
struct GrayView {
  std::uint8_t* bits = nullptr;
  int width = 0;
  int height = 0;
  int stride = 0;
  std::uint8_t* Row(int y) const { return bits + static_cast<std::size_t>(y) * stride; }
  std::uint8_t& At(int x, int y) const { return Row(y)[x]; }
  std::size_t Size() const { return static_cast<std::size_t>(stride) * height; }
  operator ConstGrayView() const { return {bits, width, height, stride}; }
};

// A picture that owns its levels. Rows are padded to a multiple of 4 bytes; all bytes start as 0.
class DisplayBitmap {
 public:
  DisplayBitmap() = default;
  DisplayBitmap(int bitmapWidth, int bitmapHeight)
      : bits(static_cast<std::size_t>(RowStrideFor(bitmapWidth)) * bitmapHeight),
        width(bitmapWidth),
        height(bitmapHeight),
        stride(RowStrideFor(bitmapWidth)) {
    if (!bits.empty()) std::memset(bits.data(), 0, bits.size());
  }
  GrayView View() { return {bits.data(), width, height, stride}; }
  ConstGrayView View() const { return {bits.data(), width, height, stride}; }

  ByteBuffer bits;
  int width = 0;
  int height = 0;
  int stride = 0;
};

}  // namespace corvane
