#pragma once

#include <cstddef>

#include "core/instruction_set.h"

namespace corvane {

// Kernels behind DecodePixels, one for each sample type: `count` big-endian pixels to value = raw * scale +
// zero. Neither array needs alignment.
struct FitsKernels {
  using Decode = void (*)(const unsigned char* raw, double scale, double zero, float* values,
                          std::size_t count);
  Decode bytes;
  Decode words;
  Decode longs;
  Decode floats;
};
DECLARE_VECTOR_KERNELS(FitsKernels, fitsKernels, ChosenFitsKernels)

}  // namespace corvane
