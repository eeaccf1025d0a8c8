#pragma once

#include "filters/filter.h"

namespace corvane {

// Levels spread so that their cumulative distribution becomes linear: each becomes the share of the pixels
// that are not brighter, counted and divided in 32 bits, times 255. All bytes are mapped, row padding
// included, but only pixels are counted. Data are counted as integers of 0..32767 (nearest, ties to even;
// values beyond the range count at its ends, blanks as 0) and become their share times 32767.
FilterEntry Equalization();

}  // namespace corvane
