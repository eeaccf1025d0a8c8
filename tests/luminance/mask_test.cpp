#include "luminance/mask.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Mask, ReplacesBothEndsBoundsIncluded) {
  const auto table = MaskTable({1, 254, 128});
  for (const int level : {0, 1, 254, 255}) EXPECT_EQ(table[level], 128);
  for (int level = 2; level <= 253; ++level) EXPECT_EQ(table[level], level);

  const auto bright = MaskTable({0, 200, 0});
  EXPECT_EQ(bright[199], 199);
  for (int level = 200; level < 256; ++level) EXPECT_EQ(bright[level], 0);
  EXPECT_EQ(MaskPixel({0, 255, 9}, 0), 9);
}

TEST(Mask, IsOffOnlyAtItsDefaults) {
  EXPECT_TRUE(Mask{}.Off());
  EXPECT_TRUE((Mask{0, 255, 40}.Off()));
  EXPECT_FALSE((Mask{1, 255, 0}.Off()));
  EXPECT_FALSE((Mask{0, 254, 0}.Off()));
}

TEST(MaskMap, DrawsTheGraphOfTheMask) {
  EXPECT_EQ(MaskMap({0, 200, 40}),
            (std::vector<Stroke>{
                {0, 0, 200, 200, kWhite}, {200, 200, 200, 40, kWhite}, {200, 40, 255, 40, kWhite}}));
  EXPECT_EQ(MaskMap({30, 200, 40}), (std::vector<Stroke>{{0, 40, 30, 40, kWhite},
                                                         {30, 40, 30, 30, kWhite},
                                                         {30, 30, 200, 200, kWhite},
                                                         {200, 200, 200, 40, kWhite},
                                                         {200, 40, 255, 40, kWhite}}));
}

}  // namespace
}  // namespace corvane
