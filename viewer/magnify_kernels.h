#pragma once

#include <cstdint>

#include "base/instruction_set.h"

namespace corvane {

// Kernels behind viewer/magnify.h, over plain arrays.
inline constexpr int kMagnifyStep = 64;
struct MagnifyKernels {
  // out[x * factor + k] = in[x] for k below factor.
  void (*repeatBytes)(const std::uint8_t* in, int width, int factor, std::uint8_t* out);
  void (*repeatFloats)(const float* in, int width, int factor, float* out);
  // Interpolates along a row: sums[i] is `factor` times the level at place i, for `count` places. `repeated`
  // holds each pixel `factor` times and one more pixel after the last; steps[i] is i % factor.
  void (*spreadLevels)(const std::uint8_t* repeated, int count, int factor, const std::uint16_t* steps,
                       std::uint16_t* sums);
  // The row k / factor of the way from `lower` to `upper`, both made by spreadLevels, in nearest levels;
  // factors up to 5. The rows are readable up to the next multiple of kMagnifyStep values.
  void (*blendLevels)(const std::uint16_t* lower, const std::uint16_t* upper, int k, int factor,
                      std::uint8_t* out, int width);
  // The row `in` and the values between its pixels; the last pixel is repeated. `steps` holds i % factor for
  // every value of `out`, `repeated` is scratch for (width + 1) * factor values.
  void (*spread)(const float* in, int width, int factor, const float* steps, float* repeated, float* out);
  // The row k / factor of the way from `lower` to `upper`, in single precision.
  void (*blendBytes)(const float* lower, const float* upper, int k, int factor, std::uint8_t* out, int width);
  void (*blendFloats)(const float* lower, const float* upper, int k, int factor, float* out, int width);
};
DECLARE_VECTOR_KERNELS(MagnifyKernels, magnifyKernels, ChosenMagnifyKernels)

}  // namespace corvane
