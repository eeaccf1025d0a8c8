#pragma once

#include "filters/filter.h"

namespace corvane {

// Every pixel of `result` that is `radius` (1, 2 or 3) pixels or more from all edges becomes the median of
// the 2 radius + 1 squared pixels of `source` around it; the others keep their value. The views have the same
// size and do not overlap. False when `progress` cancels, with a part of the result written.
bool MedianPreview(ConstGrayView source, GrayView result, int radius, Progress& progress);

// The same on data: the medians of the values rounded to the nearest integer, ties to even. A blank in the
// window gives a blank.
bool MedianData(ConstFloatView source, FloatView result, int radius, Progress& progress);

// Both as a row of the filter table.
FilterEntry Median();

}  // namespace corvane
