#include "align/centroid.h"

#include <algorithm>

#include "base/numeric.h"

namespace corvane {
namespace {

constexpr int kLargestReach = 11;

// The centroid of the levels from `first` to `last`, `light(i)` being the light at i; `otherwise` where there
// is none. Sums of single precision in ascending order.
template <class Light>
int CentroidOf(int first, int last, int otherwise, Light light) {
  float moment = 0;
  float total = 0;
  for (int i = first; i <= last; ++i) {
    const auto here = static_cast<float>(light(i));
    moment += here * static_cast<float>(i);
    total += here;
  }
  return total > 0 ? RoundEven(moment / total) : otherwise;
}

}  // namespace

Mark Center(ConstGrayView picture, Mark mark, int radius, int threshold) {
  const int reach = std::min(
      {kLargestReach, radius, mark.x, picture.width - 1 - mark.x, mark.y, picture.height - 1 - mark.y});
  const auto light = [&](int x, int y) { return picture.At(x, y) > threshold ? picture.At(x, y) : 0; };
  const auto column = [&](int x) {
    int sum = 0;
    for (int y = mark.y - reach; y <= mark.y + reach; ++y) sum += light(x, y);
    return sum;
  };
  const auto row = [&](int y) {
    int sum = 0;
    for (int x = mark.x - reach; x <= mark.x + reach; ++x) sum += light(x, y);
    return sum;
  };
  const Mark found{CentroidOf(mark.x - reach, mark.x + reach, mark.x, column),
                   CentroidOf(mark.y - reach, mark.y + reach, mark.y, row)};
  // Far from the origin the 32-bit sums are off by whole pixels, so the result may lie beyond an edge.
  return ClampMark(found, picture.width, picture.height);
}

}  // namespace corvane
