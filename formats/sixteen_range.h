#pragma once

#include "base/float_image.h"
#include "base/levels.h"

namespace corvane {

struct RangedImage {
  FloatImage values;
  ValueRange range;
};
// `image` brought into 0..32767 by the rule of its slot's bytes per pixel: floats (-4) are stretched to the
// whole range; integers (2, 4) are shifted where one is negative and scaled down where the range is too small
// for them; anything else keeps its values. Unchanged values share the memory of `image`. Throws
// std::bad_alloc.
RangedImage IntoSixteenBitRange(const FloatImage& image, int precision);

}  // namespace corvane
