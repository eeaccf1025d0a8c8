#pragma once

#include "filters/filter.h"

namespace corvane {

// A weighted sum over the neighbors, divided so that a uniform picture stays as it is; products are summed
// row by row in 32 bits.
//   radius 1: center 7, the four diagonal neighbors -1, the other four 0; over 3
//   radius 2: center 11, the eight neighbors -1; over 3
//   radius 3: center 30, the 24 others of 5 x 5 -1; over 6
// Bytes are limited to 0..255 and rounded, ties to even; data are limited to 0..imageMax. The outermost rows
// and columns, two of them at radius 3, keep their values.
DECLARE_VECTOR_KERNELS(FilterEntry, sharpen, Sharpen)

// Three times the pixel minus twice its blurred value. Bytes are blurred by `Average` and limited; pixels
// nearer than the radius to an edge become their blurred value. Data are blurred by `GaussianBlur` and not
// limited.
DECLARE_VECTOR_KERNELS(FilterEntry, unsharpMask, UnsharpMask)

}  // namespace corvane
