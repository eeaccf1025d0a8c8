#pragma once

#include <cstdint>

#include "base/color_bitmap.h"
#include "base/display_bitmap.h"
#include "base/instruction_set.h"

namespace corvane {

// One picture of a composite and what its levels are multiplied by.
struct ColorPlane {
  ConstGrayView levels;
  float multiplier = 1;
};

// The kernel behind Composite; planes in the order of the bytes of a pixel.
struct CompositeKernels {
  void (*composite)(const ColorPlane planes[3], std::uint8_t* pixels, std::int64_t stride);
};
DECLARE_VECTOR_KERNELS(CompositeKernels, compositeKernels, ChosenCompositeKernels)

// The levels of three pictures of one size as the red, green and blue of `result`, a picture of that size:
// each multiplied in single precision, limited to 0..255 and rounded to the nearest, ties to even. Padding
// bytes become 0.
inline void Composite(const ColorPlane& red, const ColorPlane& green, const ColorPlane& blue,
                      ColorBitmap& result) {
  const ColorPlane planes[] = {blue, green, red};
  ChosenCompositeKernels().composite(planes, result.bits.data(), result.stride);
}

}  // namespace corvane
