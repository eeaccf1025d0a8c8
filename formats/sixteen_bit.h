#pragma once

#include <cstddef>

#include "base/instruction_set.h"

namespace corvane {

struct SixteenBitKernels {
  void (*encode)(const float* values, unsigned char* raw, std::size_t count);
  void (*intoRange)(const float* values, float offset, float factor, float divisor, float* result,
                    std::size_t count);
};
DECLARE_VECTOR_KERNELS(SixteenBitKernels, sixteenBitKernels, ChosenSixteenBitKernels)

// Values to big-endian 16-bit pixels, rounded to the nearest (ties to even), limited to 0..65535;
// NaN is 0.
inline void EncodeSixteen(const float* values, unsigned char* raw, std::size_t count) {
  ChosenSixteenBitKernels().encode(values, raw, count);
}

// (value - offset) * factor / divisor, each step rounded; a step with a neutral operand changes nothing.
inline void ScaleIntoRange(const float* values, float offset, float factor, float divisor, float* result,
                           std::size_t count) {
  ChosenSixteenBitKernels().intoRange(values, offset, factor, divisor, result, count);
}

}  // namespace corvane
