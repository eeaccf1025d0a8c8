#pragma once

#include "core/display_bitmap.h"
#include "core/float_image.h"

namespace corvane {

// Turns and mirrors of a picture as it stands on screen. Display rows count from the bottom, data rows from
// the top; both forms of an operation show the same picture.

// On display rows. `result` is another picture of the stated size; its padding bytes become 0.
void Rotate90(ConstGrayView source, GrayView result);        // height x width; counter-clockwise
void Rotate180(ConstGrayView source, GrayView result);       // width x height, as below
void FlipVertical(ConstGrayView source, GrayView result);    // left and right exchange
void FlipHorizontal(ConstGrayView source, GrayView result);  // top and bottom exchange

// On data rows.
FloatImage Rotate90(ConstFloatView source);
FloatImage Rotate180(ConstFloatView source);
FloatImage FlipVertical(ConstFloatView source);
FloatImage FlipHorizontal(ConstFloatView source);

}  // namespace corvane
