#pragma once

#include "core/display_bitmap.h"
#include "core/float_image.h"

namespace corvane {

// Display bytes re-mapped for inspection. Source and result have the same size and stride, and every byte of
// the result is written, row padding included. (The pseudo-colour view changes no byte: it is the picture
// under one of the palette templates.)

// The gray ramp `cycles` (1..128) times over: (cycles * level) mod 255. `result` may be `source`.
void RasterView(ConstGrayView source, int cycles, GrayView result);

// 255 - level. `result` may be `source`.
void NegativeView(ConstGrayView source, GrayView result);
// The same for data of the range 0..32767.
void NegativeData(FloatView values);

// Gradients along rows and columns added to a gray of 100; the outermost pixels and the padding are 100.
// `result` is another picture.
void EdgeView(ConstGrayView source, GrayView result);

}  // namespace corvane
