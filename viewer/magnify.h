#pragma once

#include "base/display_bitmap.h"
#include "base/float_image.h"

namespace corvane {

// Enlargement by a whole factor of 2 to 6, on display rows and on data rows. Both forms show the same
// picture: source pixels are placed every `factor` pixels from the left and from the bottom row.

// False when the enlarged picture would have more than ten million pixels.
bool CanMagnify(int width, int height, int factor);

// Every pixel becomes a block of factor x factor pixels. `result` has factor times the width and height of
// `source`; its padding bytes become 0.
void Replicate(ConstGrayView source, int factor, GrayView result);
FloatImage Replicate(ConstFloatView source, int factor);

// Between neighbors a and b the k-th of the factor-1 new values is a + ((k * (b - a)) / factor), each step
// rounded to a 32-bit float: along the rows first, a being the left pixel, then along the columns from those
// floats, a being the lower one. Columns after the last placed one and rows above the last placed one repeat
// it. Bytes are limited to 0..255 and rounded to the nearest, ties to even; data are neither.
void Interpolate(ConstGrayView source, int factor, GrayView result);
FloatImage Interpolate(ConstFloatView source, int factor);

}  // namespace corvane
