#include "base/marker.h"

#include <algorithm>

namespace corvane {

Mark ClampMark(Mark mark, int width, int height) {
  return {std::clamp(mark.x, 0, width - 1), std::clamp(mark.y, 0, height - 1)};
}

std::array<Stroke, 2> MarkerCross(Mark mark) {
  const auto x = static_cast<float>(mark.x);
  const auto y = static_cast<float>(mark.y);
  return {Stroke{x - 3, y + 0.5f, x + 3, y + 0.5f, kLightGreen},
          Stroke{x, y + 3.5f, x, y - 2.5f, kLightGreen}};
}

}  // namespace corvane
