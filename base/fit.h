#pragma once

#include <algorithm>

#include "base/numeric.h"

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

// The combiner's rule: the aspect ratio, in single precision, decides which side of the box limits the
// picture; the other side follows from it and is cut to its integer part.
inline FittedSize FitByAspect(int width, int height, int boxWidth, int boxHeight) {
  const float aspect = static_cast<float>(width) / static_cast<float>(height);
  if (aspect >= 1.3333f) {
    if (width < boxWidth) return {width, height};
    return {boxWidth, std::max(1, static_cast<int>(static_cast<float>(boxWidth) / aspect))};
  }
  if (height < boxHeight) return {width, height};
  return {std::max(1, static_cast<int>(aspect * static_cast<float>(boxHeight))), boxHeight};
}

}  // namespace corvane
