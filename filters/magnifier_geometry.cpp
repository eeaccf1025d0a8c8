#include "filters/magnifier_geometry.h"

#include <algorithm>

#include "base/numeric.h"

namespace corvane {

MagnifierBox MagScale(int imageWidth, int imageHeight) {
  MagnifierBox box{std::min(imageWidth, MagnifierBox::kMostWidth),
                   std::min(imageHeight, MagnifierBox::kMostHeight)};
  const float aspect =
      imageHeight > 0 ? static_cast<float>(imageWidth) / static_cast<float>(imageHeight) : 1.0f;
  if (aspect >= 1.3333f && imageWidth >= MagnifierBox::kMostWidth)
    box.height =
        std::clamp(RoundEven(MagnifierBox::kMostWidth / aspect), std::min(1, imageHeight), box.height);
  return box;
}

int MagnifierScrollMaximum(int imageLength, int boxLength, int factor) {
  return RoundEven(imageLength + 1 - static_cast<double>(boxLength) / factor);
}

int MagnifiedOffset(int scrollValue, int imageLength, int boxPixels, int factor) {
  return std::clamp(scrollValue * factor, 0, std::max(0, imageLength * factor - boxPixels));
}

}  // namespace corvane
