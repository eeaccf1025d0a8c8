#pragma once

#include <cstdint>

#include "core/instruction_set.h"

namespace corvane {

// Kernels behind viewer/magnify.h, over plain arrays.
struct MagnifyKernels {
  // out[x * factor + k] = in[x] for k below factor.
  void (*repeatBytes)(const std::uint8_t* in, int width, int factor, std::uint8_t* out);
  void (*repeatFloats)(const float* in, int width, int factor, float* out);
  // The row `in` and the values between its pixels; the last pixel is repeated. `steps` holds i % factor for
  // every value of `out`, `repeated` is scratch for (width + 1) * factor values.
  void (*spread)(const float* in, int width, int factor, const float* steps, float* repeated, float* out);
  // Row k of `factor` from `lower` on the way to `upper`.
  void (*blendBytes)(const float* lower, const float* upper, int k, int factor, std::uint8_t* out, int width);
  void (*blendFloats)(const float* lower, const float* upper, int k, int factor, float* out, int width);
};
DECLARE_VECTOR_KERNELS(MagnifyKernels, magnifyKernels, ChosenMagnifyKernels)

}  // namespace corvane
