#include "base/page_fit.h"

#include <algorithm>

namespace corvane {

PagePlace FitOnPage(float width, float height, float pageWidth, float pageHeight) {
  const float across = width / pageWidth;
  const float down = height / pageHeight;
  PagePlace place;
  place.scale = std::max({across, down, 1.0f});
  // Exactly 0 in the limiting direction, where the quotient could leave a rounding error.
  place.left = across == place.scale ? 0 : (pageWidth - width / place.scale) / 2;
  place.top = down == place.scale ? 0 : (pageHeight - height / place.scale) / 2;
  return place;
}

}  // namespace corvane
