#pragma once

#include <string>

#include "base/marker.h"
#include "core/modcv.h"

namespace corvane {

// True where nearly all pixels are in the darkest tenth of the levels, judged from some 500 rows.
bool IsMostlyDark(ConstGrayView picture);

// "Value 1234.5, FITS row 7": what a pixel of the slot's own picture is in the slot's data. Empty where the
// slot has no data that describe a picture of this size.
std::string DescribeData(const ModCV& cv, int slot, int width, int height, Mark pixel);

}  // namespace corvane
