#include "core/marker.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Marker, StaysInsideThePicture) {
  struct Case {
    Mark wanted, placed;
  };
  for (const Case& c :
       {Case{{2, 3}, {2, 3}}, Case{{-1, 9}, {0, 4}}, Case{{7, -5}, {6, 0}}, Case{{6, 4}, {6, 4}}})
    EXPECT_EQ(ClampMark(c.wanted, 7, 5), c.placed);
  EXPECT_EQ(ClampMark({20000, 20000}, 1, 1), (Mark{0, 0}));
}

TEST(Marker, IsACrossWithTheMarkInItsMiddle) {
  const auto cross = MarkerCross({10, 20});
  EXPECT_EQ(cross[0], (Stroke{7, 20.5f, 13, 20.5f, Color{0, 255, 0}}));
  EXPECT_EQ(cross[1], (Stroke{10, 23.5f, 10, 17.5f, Color{0, 255, 0}}));
}

}  // namespace
}  // namespace corvane
