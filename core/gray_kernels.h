#pragma once

#include <cstdint>

#include "core/instruction_set.h"

namespace corvane {

// Kernels behind GrayFromColor: one row of pixels of three or four bytes.
struct GrayKernels {
  void (*fromThreeBytes)(const std::uint8_t* pixels, std::uint8_t* gray, int width);
  void (*fromFourBytes)(const std::uint8_t* pixels, std::uint8_t* gray, int width);
};
DECLARE_VECTOR_KERNELS(GrayKernels, grayKernels, ChosenGrayKernels)

}  // namespace corvane
