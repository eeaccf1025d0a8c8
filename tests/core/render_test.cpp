#include "core/render.h"

#include <cerrno>
#include <cmath>
#include <limits>
#include <tuple>

#include "core/working_files.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// Values that decide: ties, limits, what has no level, mixed with ordinary ones.
FloatImage AwkwardFloats(int width, int height, std::uint32_t seed) {
  static constexpr float kSpecial[] = {0.5f,    1.5f,          2.5f,  126.5f,  127.5f,    254.5f, 255.0f,
                                       255.49f, -0.5f,         -0.0f, -1e-40f, 1e-40f,    kNan,   3e38f,
                                       -3e38f,  2147483648.0f, 4e9f,  -5e9f,   kInfinity, 0.0f,   -kInfinity};
  Random random(seed);
  FloatImage image(width, height);
  for (float& value : std::span(image.Edit().values, image.Count()))
    value = random.Below(3) == 0 ? kSpecial[random.Below(std::size(kSpecial))]
                                 : static_cast<float>(random.Fraction() * 400 - 60);
  return image;
}

int LevelOf(float value, float minimum, float scale) {
  const float shifted = value - minimum;
  const float level = shifted * scale;
  if (std::isnan(level) || level < 0) return 0;
  if (level > 255) return 255;
  return static_cast<int>(std::nearbyint(level));
}

TEST(FindRange, PassesOverBlanksAtEveryLength) {
  OnEveryInstructionSet([] {
    for (int width = 1; width <= 150; ++width) {
      const FloatImage image = AwkwardFloats(width, 1, static_cast<std::uint32_t>(width));
      float least = 3.4028e38f;
      float most = -3.4028e38f;
      for (const float value : Values(image.View())) {
        if (value < least) least = value;
        if (value > most) most = value;
      }
      const ValueRange range = FindRange(image.View());
      ASSERT_EQ(range.min, least) << width;
      ASSERT_EQ(range.max, most) << width;
    }
    const ValueRange none = FindRange(UniformFloats(40, 2, kNan).View());
    EXPECT_EQ(none.min, 3.4028e38f);
    EXPECT_EQ(none.max, -3.4028e38f);
  });
}

TEST(MapLevels, EqualsTheDefinitionUprightWithZeroPadding) {
  OnEveryInstructionSet([] {
    for (int width = 1; width <= 140; ++width)
      for (const auto& [minimum, scale] :
           {std::pair(0.0f, 1.0f), {-12.3f, 0.77f}, {1e30f, 1e-30f}, {0.0f, 0.0f}, {-3e38f, 1e38f}}) {
        const int height = 1 + width % 3;
        const FloatImage image = AwkwardFloats(width, height, static_cast<std::uint32_t>(width));
        DisplayBitmap levels = Noise(width, height, 1);
        MapLevels(image.View(), minimum, scale, levels.View());
        DisplayBitmap expected(width, height);
        for (int y = 0; y < height; ++y)
          for (int x = 0; x < width; ++x)
            expected.View().At(x, height - 1 - y) =
                static_cast<std::uint8_t>(LevelOf(image.View().At(x, y), minimum, scale));
        ASSERT_EQ(AllBytes(levels.View()), AllBytes(expected.View())) << width << ", scale " << scale;
      }
  });
}

class Render : public AppDirFixture {
 protected:
  void Take(int bytesPerPixel, const FloatImage& image) {
    cv.BytesPerPixel = bytesPerPixel;
    cv.ImageData = image;
    cv.ImageWidth = static_cast<float>(image.Width());
    cv.ImageHeight = static_cast<float>(image.Height());
  }
  std::vector<int> Rendered(int bytesPerPixel, const FloatImage& image) {
    Take(bytesPerPixel, image);
    RenderFits(cv, os);
    EXPECT_FALSE(cv.LoadFailed);
    return Pixels(cv.Display());
  }
};

TEST_F(Render, TheScaleFollowsTheKindOfData) {
  const std::tuple<int, std::vector<float>, float> cases[] = {
      {1, {0, 1000}, 1},         {2, {1000, 1200}, 1},  {2, {1000, 1254.9f}, 1},  {2, {1000, 1255}, 1},
      {2, {1000, 2000}, 0.255f}, {4, {-5, 5}, 1},       {4, {-500, 500}, 0.255f}, {-4, {0, 0.5f}, 510},
      {-4, {7, 7}, 1},           {-4, {kNan, kNan}, 1}, {2, {kNan, kNan}, 1},     {-4, {0, 1000}, 0.255f},
      {-4, {-3e38f, 3e38f}, 0},
  };
  for (const auto& [bytesPerPixel, values, scale] : cases) {
    Take(bytesPerPixel, Floats(2, 1, {values[0], values[1]}));
    FindMinMax(cv);
    EXPECT_EQ(cv.DisplayScale, scale) << bytesPerPixel << ": " << values[0] << ", " << values[1];
    if (!std::isnan(values[0])) {
      EXPECT_EQ(cv.ImageMin, values[0]);
      EXPECT_EQ(cv.ImageMax, values[1]);
    }
  }
}

TEST_F(Render, ShowsSmallRangesAsTheyAreAndStretchesLargeOnes) {
  EXPECT_THAT(Rendered(2, Floats(3, 1, {1000, 1100, 1200})), ElementsAre(0, 100, 200));
  EXPECT_THAT(Rendered(4, Floats(3, 1, {1000, 1500, 2000})), ElementsAre(0, 128, 255));
  EXPECT_THAT(Rendered(-4, Floats(4, 1, {kNan, -1, 0, 1})), ElementsAre(0, 0, 128, 255));
  EXPECT_THAT(Rendered(-4, Floats(2, 1, {kNan, kNan})), ElementsAre(0, 0));
  EXPECT_THAT(Rendered(3, UniformFloats(3, 1, 100)), ElementsAre(0, 0, 0)) << "a kind that does not exist";
}

TEST_F(Render, EightBitDataAreTheirOwnLevels) {
  std::tie(cv.ImageMin, cv.ImageMax, cv.DisplayScale) = std::tuple(11, 12, 13);
  EXPECT_THAT(Rendered(1, Floats(7, 1, {0, 0.5f, 1.5f, 254.5f, 256, 510, -3})),
              ElementsAre(0, 0, 2, 254, 255, 255, 0));
  EXPECT_EQ(std::tuple(cv.ImageMin, cv.ImageMax, cv.DisplayScale), std::tuple(11, 12, 13));
}

TEST_F(Render, WritesTheSlotAboutToBeAddedTopRowLast) {
  cv.ImageCount = 2;
  EXPECT_THAT(Rendered(2, Floats(5, 2, {1, 2, 3, 4, 5, 10, 20, 30, 40, 0})),
              ElementsAre(10, 20, 30, 40, 0, 1, 2, 3, 4, 5));
  EXPECT_THAT(WorkingFiles(), ElementsAre("2temp.bmp"));
  EXPECT_EQ(std::tuple(cv.RowStride, cv.BitmapDataSize, cv.BitmapFileSize, cv.DataOffset),
            std::tuple(8, 16, 1094, 1078));
  const std::string file = ReadFile(AppFile("2temp.bmp"));
  EXPECT_EQ(file.substr(1078), std::string("\x0A\x14\x1E\x28\0\0\0\0\1\2\3\4\5\0\0\0", 16));
}

TEST_F(Render, ASavedSlotIsStretchedWheneverItsRangeIsWiderThanOne) {
  const std::pair<std::vector<float>, float> cases[] = {
      {{1000, 1200}, 255.0f / 200}, {{3, 4}, 1}, {{3, 5}, 127.5f}, {{7, 7}, 1}, {{kNan, kNan}, 1},
      {{16777218, 16777220}, 1},  // the minimum plus one rounds to the maximum
  };
  for (const auto& [values, scale] : cases) {
    Take(2, Floats(2, 1, {values[0], values[1]}));
    EXPECT_EQ(RenderSlotData(cv), std::nullopt);
    EXPECT_EQ(cv.DisplayScale, scale) << values[0];
  }
}

TEST_F(Render, ASavedSlotGetsItsPictureAndItsHistogram) {
  cv.ImageCount = 3;
  cv.CurrentSlot = 1;
  cv.LumHist.fill(5);
  cv.LumHistLog.fill(5);
  cv.HistDecades = 4;
  Take(2, Floats(3, 2, {1000, 1100, 1200, 1000, 1000, 1200}));
  EXPECT_EQ(RenderSlotData(cv), std::nullopt);
  EXPECT_THAT(Pixels(cv.Display()), ElementsAre(0, 0, 255, 0, 128, 255));
  EXPECT_THAT(WorkingFiles(), ElementsAre("1temp.bmp"));
  EXPECT_EQ(ReadFile(AppFile("1temp.bmp")).substr(1078), std::string("\0\0\xFF\0\0\x80\xFF\0", 8));
  std::array<float, 256> counts{};
  counts[0] = 3;
  counts[128] = 1;
  counts[255] = 2;
  EXPECT_THAT(cv.LumHist, ElementsAreArray(counts));
  EXPECT_THAT(cv.LumHistLog, testing::Each(0));
  EXPECT_EQ(cv.HistDecades, 4);
}

TEST_F(Render, SaysWhichFileStoppedIt) {
  std::filesystem::create_directory(AppFile("0temp.bmp"));
  os.Expect("FILE OPEN ERROR",
            AllOf(HasSubstr("\"0temp.bmp\""), HasSubstr("Error Number " + std::to_string(EISDIR))));
  Take(2, Floats(2, 1, {1, 2}));
  RenderFits(cv, os);
  EXPECT_TRUE(cv.LoadFailed);

  std::filesystem::remove(AppFile(kGrayTemplate));
  const auto refusal = RenderSlotData(cv);
  ASSERT_TRUE(refusal);
  EXPECT_THAT(refusal->text, HasSubstr("\"gr_8.bm_\""));
}

}  // namespace
}  // namespace corvane
