#include "align/centroid.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/images.h"

namespace corvane {
namespace {

struct Star {
  int x;
  int y;
  int level;
};

TEST(Center, MovesTheMarkToTheLightAboveTheThreshold) {
  struct Case {
    const char* what;
    Mark mark;
    int radius;
    int threshold;
    std::vector<Star> stars;
    Mark expected;
  };
  const Case cases[] = {
      {"one star", {10, 10}, 5, 10, {{12, 9, 200}}, {12, 9}},
      {"a tie goes to the even column", {11, 10}, 5, 10, {{10, 10, 90}, {13, 10, 90}}, {12, 10}},
      {"a tie below the even row", {10, 11}, 5, 10, {{10, 10, 90}, {10, 11, 90}}, {10, 10}},
      {"levels weigh", {11, 11}, 5, 0, {{8, 8, 200}, {14, 14, 100}}, {10, 10}},
      {"nothing above the threshold", {10, 10}, 5, 50, {{12, 9, 50}, {9, 9, 30}}, {10, 10}},
      {"a level counts whole", {9, 10}, 5, 10, {{6, 10, 11}, {12, 10, 33}}, {10, 10}},
      {"outside the square", {10, 10}, 2, 10, {{13, 10, 255}}, {10, 10}},
      {"on its edge", {10, 10}, 3, 10, {{13, 7, 255}}, {13, 7}},
      {"two from the left: 5 x 5", {2, 10}, 5, 10, {{4, 12, 200}, {5, 10, 255}, {2, 13, 255}}, {4, 12}},
      {"two from the right", {17, 10}, 5, 10, {{15, 8, 200}, {14, 10, 255}}, {15, 8}},
      {"one from the top", {10, 18}, 5, 10, {{11, 19, 200}, {12, 18, 255}}, {11, 19}},
      {"in a corner", {0, 0}, 5, 10, {{0, 0, 20}, {1, 1, 255}}, {0, 0}},
      {"never farther than 11", {12, 12}, 40, 10, {{0, 12, 255}, {23, 12, 200}}, {23, 12}},
  };
  for (const Case& c : cases) {
    const int side = c.radius > 11 ? 25 : 20;
    DisplayBitmap picture(side, side);
    for (const Star& star : c.stars)
      picture.View().At(star.x, star.y) = static_cast<std::uint8_t>(star.level);
    EXPECT_EQ(Center(picture.View(), c.mark, c.radius, c.threshold), c.expected) << c.what;
  }
}

}  // namespace
}  // namespace corvane
