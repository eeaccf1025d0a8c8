#include "align/registration.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "core/render.h"
#include "tests/support/images.h"

namespace corvane {
namespace {

std::vector<MarkedPicture> RandomlyMarked(int count, Random& random) {
  std::vector<MarkedPicture> pictures(count);
  for (MarkedPicture& picture : pictures) {
    picture.width = 1 + random.Below(9);
    picture.height = 1 + random.Below(9);
    picture.mark = {random.Below(picture.width), random.Below(picture.height)};
  }
  return pictures;
}

DisplayBitmap Rendered(const FloatImage& data) {
  DisplayBitmap picture(data.Width(), data.Height());
  MapLevels(data.View(), 0, 1, picture.View());
  return picture;
}

// Levels without a mosaic's black.
FloatImage Data(const MarkedPicture& picture, std::uint32_t seed) {
  return NoiseFloats(picture.width, picture.height, seed, 1, 255);
}

TEST(AlignFrame, CoversWhatAllOrWhatAnyOfThePicturesShow) {
  struct Case {
    std::vector<MarkedPicture> pictures;
    AlignFrame crop;
    AlignFrame mosaic;
  };
  const Case cases[] = {
      {{{{10, 20}, 100, 80}, {{15, 22}, 120, 90}}, {10, 89, 20, 59}, {15, 104, 22, 67}},
      {{{{0, 5}, 50, 40}, {{7, 9}, 60, 40}}, {0, 49, 5, 30}, {7, 52, 9, 34}},
      {{{{0, 0}, 6, 4}, {{5, 3}, 6, 4}}, {0, 0, 0, 0}, {5, 5, 3, 3}},
      {{{{40000, 70000}, 80000, 90000}, {{30000, 1}, 60000, 50000}},
       {30000, 29999, 1, 19999},
       {40000, 39999, 70000, 49998}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CropFrame(c.pictures), c.crop);
    EXPECT_EQ(MosaicFrame(c.pictures), c.mosaic);
  }
  EXPECT_EQ(cases[0].crop.Width(), 100);
  EXPECT_EQ(cases[0].crop.Height(), 80);
  EXPECT_EQ(cases[0].mosaic.Width(), 120);
  EXPECT_EQ(cases[0].mosaic.Height(), 90);
}

// 2^31 - 1 bytes at most, the first 1078 of them for header and palette.
TEST(AlignFrame, MustFitABitmapFile) {
  const int rows = (INT32_MAX - 1078) / 32768;
  EXPECT_TRUE(FitsBitmapFile(AlignFrame{32767, 0, rows - 1, 0}));
  EXPECT_FALSE(FitsBitmapFile(AlignFrame{32767, 0, rows, 0}));
  EXPECT_FALSE(FitsBitmapFile(AlignFrame{32767, 1, rows - 1, 0})) << "four more bytes to the row";
  EXPECT_FALSE(FitsBitmapFile(AlignFrame{INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX}));
}

TEST(Crop, CutsTheSamePlaceFromPictureAndData) {
  Random random(1);
  for (int round = 0; round < 300; ++round) {
    const auto pictures = RandomlyMarked(1 + round % 4, random);
    const AlignFrame frame = CropFrame(pictures);
    for (const MarkedPicture& picture : pictures) {
      const FloatImage data = Data(picture, round);
      const DisplayBitmap whole = Rendered(data);
      DisplayBitmap cut = Noise(frame.Width(), frame.Height(), round);
      Crop(whole.View(), picture.mark, frame, cut.View());
      for (int y = 0; y < cut.height; ++y)
        for (int x = 0; x < cut.width; ++x)
          ASSERT_EQ(cut.View().At(x, y),
                    whole.View().At(picture.mark.x + x - frame.left, picture.mark.y + y - frame.below));
      ASSERT_EQ(AllBytes(cut.View()), AllBytes(Rendered(Crop(data.View(), picture.mark, frame)).View()));
    }
  }
}

TEST(Paste, LaysWholePicturesOverOneAnotherInPictureAndData) {
  Random random(2);
  for (int round = 0; round < 300; ++round) {
    const auto pictures = RandomlyMarked(1 + round % 4, random);
    const AlignFrame frame = MosaicFrame(pictures);
    DisplayBitmap mosaic(frame.Width(), frame.Height());
    DisplayBitmap expected(frame.Width(), frame.Height());
    FloatImage dataMosaic = UniformFloats(frame.Width(), frame.Height(), 0);
    for (const MarkedPicture& picture : pictures) {
      const FloatImage data = Data(picture, random.Next());
      const DisplayBitmap whole = Rendered(data);
      Paste(whole.View(), picture.mark, frame, mosaic.View());
      Paste(data.View(), picture.mark, frame, dataMosaic.Edit());
      for (int y = 0; y < whole.height; ++y)
        for (int x = 0; x < whole.width; ++x)
          expected.View().At(frame.left + x - picture.mark.x, frame.below + y - picture.mark.y) =
              whole.View().At(x, y);
    }
    ASSERT_EQ(AllBytes(mosaic.View()), AllBytes(expected.View()));
    ASSERT_EQ(AllBytes(Rendered(dataMosaic).View()), AllBytes(expected.View()));
  }
}

}  // namespace
}  // namespace corvane
