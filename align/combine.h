#pragma once

#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/instruction_set.h"

namespace corvane {

// A way to combine two pictures, a with the multiplier m1 and b with the multiplier m2, in single precision.
// All pictures have one size and stride; `result` may be a or b.
struct CombineMethod {
  const char* key;
  const char* caption;
  // Display levels: every byte, row padding included, limited to 0..255 and rounded to the nearest, ties to
  // even.
  void (*display)(ConstGrayView a, ConstGrayView b, float m1, float m2, GrayView result);
  // Physical values, limited to 0..32767. A result computed from a blank is blank.
  void (*data)(ConstFloatView a, ConstFloatView b, float m1, float m2, FloatView result);
};

// In the order of the option buttons. One table for each instruction set: the functions are its kernels.
using CombineTable = CombineMethod[6];
DECLARE_VECTOR_KERNELS(CombineTable, combineMethods, CombineMethods)

}  // namespace corvane
