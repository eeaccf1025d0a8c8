#pragma once

#include <algorithm>

#include "core/numeric.h"

namespace corvane {

struct FittedSize {
  int width = 0;
  int height = 0;
};

// The size of a picture shown in a box: its own when it fits, else reduced to the box with its aspect kept;
// never enlarged, at least one pixel in each direction.
inline FittedSize FitInto(int width, int height, int boxWidth, int boxHeight) {
  if (width <= boxWidth && height <= boxHeight) return {width, height};
  const double scale =
      std::min(static_cast<double>(boxWidth) / width, static_cast<double>(boxHeight) / height);
  return {std::clamp(RoundEven(width * scale), 1, boxWidth),
          std::clamp(RoundEven(height * scale), 1, boxHeight)};
}

}  // namespace corvane
