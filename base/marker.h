#pragma once

#include <array>

#include "base/drawing.h"

namespace corvane {

// A marked pixel, x from the left, y from the bottom row.
struct Mark {
  int x = 0;
  int y = 0;
  bool operator==(const Mark&) const = default;
};

// The nearest pixel inside a picture of at least one pixel.
Mark ClampMark(Mark mark, int width, int height);

// The light-green cross over a mark, in picture pixels: seven pixels wide and high with the mark in its
// middle. A row's units run from y to y + 1, so + 0.5 is the middle of the marked row.
std::array<Stroke, 2> MarkerCross(Mark mark);

}  // namespace corvane
