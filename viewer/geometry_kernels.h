#pragma once

#include <cstddef>
#include <cstdint>

#include "core/instruction_set.h"

namespace corvane {

// Kernels behind viewer/geometry.h, over plain arrays. Strides count elements and may be negative.
struct GeometryKernels {
  // out[x * outStride + y] = in[y * inStride + x] for x below width and y below height.
  void (*transposeBytes)(const std::uint8_t* in, std::ptrdiff_t inStride, int width, int height,
                         std::uint8_t* out, std::ptrdiff_t outStride);
  void (*transposeFloats)(const float* in, std::ptrdiff_t inStride, int width, int height, float* out,
                          std::ptrdiff_t outStride);
  // out[count - 1 - i] = in[i]; the arrays do not overlap.
  void (*reverseBytes)(const std::uint8_t* in, std::uint8_t* out, int count);
  void (*reverseFloats)(const float* in, float* out, int count);
};
DECLARE_VECTOR_KERNELS(GeometryKernels, geometryKernels, ChosenGeometryKernels)

}  // namespace corvane
