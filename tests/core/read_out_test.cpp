#include "core/read_out.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/images.h"

namespace corvane {
namespace {

TEST(ReadOut, NamesValueAndFitsRowWhereTheDataAreThoseOfThePicture) {
  ModCV cv;
  cv.SlotName[2] = "~m31.fit";  // its own name
  cv.SlotBytesPerPixel[2] = -4;
  cv.SlotData[2] = Floats(2, 3, {0.5f, 1, 2, -12.25f, std::numeric_limits<float>::quiet_NaN(), 5});
  EXPECT_EQ(DescribeData(cv, 2, 2, 3, {0, 2}), "Value 0.5, FITS row 1");
  EXPECT_EQ(DescribeData(cv, 2, 2, 3, {1, 1}), "Value -12.25, FITS row 2");
  EXPECT_EQ(DescribeData(cv, 2, 2, 3, {0, 0}), "Value blank, FITS row 3");

  EXPECT_EQ(DescribeData(cv, 2, 3, 2, {0, 0}), "");  // a picture of another size
  EXPECT_EQ(DescribeData(cv, 1, 2, 3, {0, 0}), "");  // no data
  cv.SlotBytesPerPixel[2] = 1;
  cv.SlotRendering[2] = Rendering::AsOpened;
  EXPECT_NE(DescribeData(cv, 2, 2, 3, {0, 0}), "");  // 8-bit data as the file holds them
  cv.SlotRendering[2] = Rendering::None;
  EXPECT_EQ(DescribeData(cv, 2, 2, 3, {0, 0}), "");  // a tool's picture
  cv.SlotBytesPerPixel[2] = 2;
  EXPECT_NE(DescribeData(cv, 2, 2, 3, {0, 0}), "");  // an aligned image: its data were cut with it
}

TEST(ReadOut, CallsAPictureDarkWhenNearlyAllItsPixelsAre) {
  for (const int height : {1, 100, 3000}) {
    DisplayBitmap picture = Uniform(100, height, 25);
    EXPECT_TRUE(IsMostlyDark(picture.View())) << height;
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < 5; ++x) picture.View().At(x, y) = 26;
    EXPECT_TRUE(IsMostlyDark(picture.View())) << height;
    for (int y = 0; y < height; ++y) picture.View().At(5, y) = 255;
    EXPECT_FALSE(IsMostlyDark(picture.View())) << height;
  }
  EXPECT_FALSE(IsMostlyDark({}));
}

}  // namespace
}  // namespace corvane
