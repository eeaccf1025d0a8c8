#pragma once

#include <cstddef>
#include <cstdint>

#include "core/instruction_set.h"

namespace corvane {

// Kernels behind core/render.h, over plain arrays.
struct LevelKernels {
  // Lowers *minimum and raises *maximum by `count` values.
  void (*findRange)(const float* values, std::size_t count, float* minimum, float* maximum);
  // One row of levels (value - minimum) * scale.
  void (*mapRow)(const float* values, float minimum, float scale, std::uint8_t* levels, int width);
};
DECLARE_VECTOR_KERNELS(LevelKernels, levelKernels, ChosenLevelKernels)

}  // namespace corvane
