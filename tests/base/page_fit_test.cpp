#include "base/page_fit.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(PageFit, ReducesLargePicturesToThePageAndCentersTheRest) {
  struct Case {
    float width, height;
    PagePlace place;
  };
  const Case cases[] = {
      {400, 300, {1, 200, 350}},  // fits: its own size
      {800, 1000, {1, 0, 0}},     // the page itself
      {1600, 1000, {2, 0, 250}},  // too wide
      {800, 4000, {4, 300, 0}},   // too high
      {2400, 3000, {3, 0, 0}},    // the page's own shape
      {801, 10, {1.00125f, 0, 495.00625f}},
  };
  for (const Case& c : cases) {
    const PagePlace place = FitOnPage(c.width, c.height, 800, 1000);
    EXPECT_FLOAT_EQ(place.scale, c.place.scale) << c.width;
    EXPECT_FLOAT_EQ(place.left, c.place.left) << c.width;
    EXPECT_FLOAT_EQ(place.top, c.place.top) << c.width;
  }
}

}  // namespace
}  // namespace corvane
