#pragma once

#include "base/display_bitmap.h"
#include "base/marker.h"

namespace corvane {

// The brightness centroid of the pixels above `threshold` in the square of `radius` pixels (at most 11) to
// each side of the mark, rounded to the nearest pixel with ties to even; the mark itself where no pixel is
// above. A square that would cross an edge of the picture shrinks on all sides. The mark lies in the picture.
Mark Center(ConstGrayView picture, Mark mark, int radius, int threshold);

}  // namespace corvane
