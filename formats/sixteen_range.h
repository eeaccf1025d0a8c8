#pragma once

#include "base/float_image.h"
#include "base/levels.h"

namespace corvane {

struct RangedImage {
  FloatImage values;
  ValueRange range;
};
// `image` brought into 0..32767 by the rule of its slot's bytes per pixel: floats (-4) are spread over the
// range, integers (2, 4) are shifted and reduced as far as they must be, anything else keeps its values.
// Values that stay as they are share the memory of `image`. Throws std::bad_alloc.
RangedImage IntoSixteenBitRange(const FloatImage& image, int precision);

}  // namespace corvane
