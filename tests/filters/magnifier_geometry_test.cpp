#include "filters/magnifier_geometry.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(MagnifierBox, HasTheImagesProportionsAndNeverShowsMore) {
  const struct {
    int width, height, boxWidth, boxHeight, pixelHeight;
  } cases[] = {
      {1, 1, 1, 1, 2},           {100, 50, 100, 50, 51},     {227, 100, 227, 100, 101},
      {228, 171, 228, 171, 171}, {456, 228, 228, 114, 115},  {6000, 4000, 228, 152, 153},
      {300, 300, 228, 171, 171}, {100, 5000, 100, 171, 171}, {32767, 1, 228, 1, 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.width << " x " << c.height);
    const MagnifierBox box = MagScale(c.width, c.height);
    EXPECT_EQ(box.width, c.boxWidth);
    EXPECT_EQ(box.height, c.boxHeight);
    EXPECT_EQ(box.PixelWidth(), c.boxWidth + 1);
    EXPECT_EQ(box.PixelHeight(), c.pixelHeight);
  }
}

TEST(MagnifierScroll, RoundsItsMaximumToEven) {
  EXPECT_EQ(MagnifierScrollMaximum(300, 228, 2), 187);
  EXPECT_EQ(MagnifierScrollMaximum(100, 171, 2), 16) << "15.5";
  EXPECT_EQ(MagnifierScrollMaximum(101, 171, 2), 16) << "16.5";
  EXPECT_EQ(MagnifierScrollMaximum(6000, 228, 6), 5963);
}

TEST(MagnifierScroll, NeverLeavesTheImage) {
  for (const int length : {1, 2, 5, 113, 114, 115, 228, 229, 1000, 24000}) {
    for (int factor = 2; factor <= 6; ++factor) {
      const MagnifierBox box = MagScale(length, length);
      const int most = MagnifierScrollMaximum(length, box.width, factor);
      for (const int value : {0, 1, most / 2, most - 1, most}) {
        const int offset = MagnifiedOffset(value, length, box.PixelWidth(), factor);
        EXPECT_GE(offset, 0);
        EXPECT_LE(offset + box.PixelWidth(), length * factor) << length << " x " << factor;
        if (value > 0 && value < most - 1) {
          EXPECT_EQ(offset, value * factor);
        }
      }
      EXPECT_EQ(MagnifiedOffset(most, length, box.PixelWidth(), factor) + box.PixelWidth(), length * factor)
          << "the end of the bar shows the end of the image";
    }
  }
}

}  // namespace
}  // namespace corvane
