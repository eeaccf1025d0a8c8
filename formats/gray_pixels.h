#pragma once

#include <cstdint>

#include "base/instruction_set.h"

namespace corvane {

struct GrayKernels {
  void (*fromThreeBytes)(const std::uint8_t* pixels, std::uint8_t* gray, int width);
  void (*fromFourBytes)(const std::uint8_t* pixels, std::uint8_t* gray, int width);
};
DECLARE_VECTOR_KERNELS(GrayKernels, grayKernels, ChosenGrayKernels)

// Gray levels of 24- or 32-bit pixels: the mean of the three color bytes, rounded to the nearest (there are
// no ties).
inline void GrayFromColor(const unsigned char* pixels, int bytesPerPixel, unsigned char* gray, int width) {
  const GrayKernels& kernels = ChosenGrayKernels();
  (bytesPerPixel == 3 ? kernels.fromThreeBytes : kernels.fromFourBytes)(pixels, gray, width);
}

}  // namespace corvane
