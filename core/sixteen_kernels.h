#pragma once

#include <cstddef>

#include "core/instruction_set.h"

namespace corvane {

// Kernels behind the 16-bit save, over plain arrays.
struct SixteenKernels {
  // Big-endian 16-bit pixels, rounded to the nearest (ties to even), limited to 0..65535; not-a-number is 0.
  void (*encode)(const float* values, unsigned char* raw, std::size_t count);
  // (value - offset) * factor / divisor, each step rounded; a step with a neutral operand changes nothing.
  void (*fit)(const float* values, float offset, float factor, float divisor, float* fitted,
              std::size_t count);
};
DECLARE_VECTOR_KERNELS(SixteenKernels, sixteenKernels, ChosenSixteenKernels)

}  // namespace corvane
