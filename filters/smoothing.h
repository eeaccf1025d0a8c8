#pragma once

#include "filters/filter.h"

namespace corvane {

// The mean of the (2 radius + 1) squared pixels around each pixel. Edge pixels repeat outwards. Bytes are
// rounded, ties to even; data are not.
DECLARE_VECTOR_KERNELS(FilterEntry, average, Average)

// A circular Gaussian whose half width at half maximum is the radius; edges and rounding as above.
DECLARE_VECTOR_KERNELS(FilterEntry, gaussianBlur, GaussianBlur)

}  // namespace corvane
