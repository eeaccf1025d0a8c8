#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/instruction_set.h"

namespace corvane {

struct LevelKernels {
  // Lowers *minimum and raises *maximum to include `count` values.
  void (*findRange)(const float* values, std::size_t count, float* minimum, float* maximum);
  void (*mapRow)(const float* values, float minimum, float scale, std::uint8_t* levels, int width);
};
DECLARE_VECTOR_KERNELS(LevelKernels, levelKernels, ChosenLevelKernels)

struct ValueRange {
  float min = 3.4028e38f;
  float max = -3.4028e38f;
};
// The smallest and largest value; NaN values are blank and passed over.
inline ValueRange FindRange(ConstFloatView values) {
  ValueRange range;
  ChosenLevelKernels().findRange(values.values, values.Count(), &range.min, &range.max);
  return range;
}

// Levels (value - minimum) * scale, limited to 0..255 and rounded to the nearest, ties to even; NaN is
// 0. The top row of `values` becomes the last row of `levels`; padding bytes become 0.
inline void MapLevels(ConstFloatView values, float minimum, float scale, GrayView levels) {
  const auto mapRow = ChosenLevelKernels().mapRow;
  for (int y = 0; y < values.height; ++y) {
    std::uint8_t* row = levels.Row(levels.height - 1 - y);
    mapRow(values.Row(y), minimum, scale, row, values.width);
    std::fill(row + levels.width, row + levels.stride, std::uint8_t{0});
  }
}

}  // namespace corvane
