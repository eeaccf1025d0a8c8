#pragma once

#include <cstddef>
#include <cstdint>

#include "core/instruction_set.h"

namespace corvane {

// Kernels behind analysis/views.h, over plain arrays.
struct ViewKernels {
  // out[i] = 255 - in[i]; `out` may be `in`.
  void (*negate)(const std::uint8_t* in, std::uint8_t* out, std::size_t count);
  // The edge view of columns 1..width-2 of `row`; `below` and `above` are the stored rows before and after
  // it.
  void (*edgeRow)(const std::uint8_t* below, const std::uint8_t* row, const std::uint8_t* above,
                  std::uint8_t* out, int width);
};
DECLARE_VECTOR_KERNELS(ViewKernels, viewKernels, ChosenViewKernels)

}  // namespace corvane
