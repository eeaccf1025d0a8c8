#include "analysis/histogram.h"

#include <algorithm>

#include "core/slot_picture.h"
#include "formats/bitmap_format.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/images.h"

namespace corvane {
namespace {

using testing::ElementsAre;

LevelHistogram Counts(std::initializer_list<std::pair<int, float>> levels) {
  LevelHistogram counts{};
  for (const auto& [level, count] : levels) counts[level] = count;
  return counts;
}

std::vector<Stroke> StrokesOf(const std::vector<Stroke>& strokes, Color color) {
  std::vector<Stroke> found;
  std::copy_if(strokes.begin(), strokes.end(), std::back_inserter(found),
               [&](const Stroke& stroke) { return stroke.color == color; });
  return found;
}

std::vector<std::string> Texts(const std::vector<Label>& labels) {
  std::vector<std::string> texts;
  for (const Label& label : labels) texts.push_back(label.text);
  return texts;
}

TEST(CountPixels, PassesPaddingOverAndCountBytesDoesNot) {
  for (const int width : {1, 2, 3, 4, 5, 6, 7, 8, 9, 31, 32, 33, 1001}) {
    for (int height = 1; height <= 3; ++height) {
      const DisplayBitmap picture = Noise(width, height, 3 * width + height);
      LevelHistogram pixels{};
      LevelHistogram bytes{};
      for (const int level : Pixels(picture.View())) ++pixels[level];
      for (const int level : AllBytes(picture.View())) ++bytes[level];

      LevelHistogram counts{};
      CountPixels(picture.View(), counts);
      EXPECT_EQ(counts, pixels) << width << 'x' << height;
      counts.fill(0);
      CountBytes({picture.bits.data(), picture.bits.size()}, counts);
      EXPECT_EQ(counts, bytes) << width << 'x' << height;
    }
  }
}

TEST(HistogramGraph, AdaptsItsDecadesToTheLargestCount) {
  struct Case {
    float largest;
    int decades;
    int barScale;
  };
  for (const Case& c : {Case{0, 2, 80}, Case{1, 2, 80}, Case{9, 2, 80}, Case{10, 2, 80}, Case{99, 2, 80},
                        Case{100, 3, 53}, Case{999, 3, 53}, Case{1000, 4, 40}, Case{5000, 4, 40},
                        Case{1'000'000, 7, 22}, Case{24'000'000, 8, 20}}) {
    const HistogramGraph graph = GraphHistogram(Counts({{7, 1}, {200, c.largest}}));
    EXPECT_EQ(graph.decades, c.decades) << c.largest;
    EXPECT_EQ(graph.barScale, c.barScale) << c.largest;
  }
}

TEST(HistogramGraph, DrawsABarForEveryLevelThatOccursMoreThanOnce) {
  const HistogramGraph graph = GraphHistogram(Counts({{0, 10}, {128, 1}, {255, 1000}}));
  EXPECT_EQ(StrokesOf(graph.strokes, kHistogramBar),
            (std::vector<Stroke>{{0, 0, 0, 40, kHistogramBar}, {255, 0, 255, 120, kHistogramBar}}));
  EXPECT_EQ(graph.logarithms[255], 3.0f);
  const std::vector<Stroke> grid = StrokesOf(graph.strokes, kHistogramGrid);
  ASSERT_EQ(grid.size(), 5u);
  EXPECT_EQ(grid[0], (Stroke{-1, 0, 256, 0, kHistogramGrid}));
  EXPECT_EQ(grid[4], (Stroke{-1, 160, 256, 160, kHistogramGrid}));
  EXPECT_EQ(graph.strokes.back(), grid[4]) << "the grid lies over the bars";
}

TEST(HistogramLabels, NameTheGridLinesTheyStandBeside) {
  const GraphFrame frame{40, 20, 259, 164};
  const CountAxis axis = LabelCounts(8, 20, frame);
  EXPECT_THAT(Texts(axis.labels), ElementsAre("1", "10", "100", "1,000", "10,000", "100,000", "1,000,000",
                                              "10,000,000", "100,000,000"));
  EXPECT_EQ(axis.ticks[3], (Stroke{302, 123, 310, 123, kBlack}));
  EXPECT_EQ(axis.labels[3], (Label{312, 117, "1,000"}));
}

TEST(HistogramLabels, OfTheLevelAxisFollowTheKindOfData) {
  struct Case {
    int bytesPerPixel;
    float minimum, maximum;
    const char *left, *right;
    float leftX, rightX;
    const char* caption;
  };
  const char sixteen[] = "  Image Histogram (BITPIX = 16)";
  for (const Case& c : {
           Case{1, 3, 70, "0", "255", 97, 345, "Image Histogram at 8 Bits Per Pixel"},
           Case{2, -5.4f, 40000, "-5", "40000", 97, 340, sixteen},
           Case{2, -0.4f, 2.5f, "0", "2", 97, 340, sixteen},
           Case{2, 10, 999.6f, "10", "1000", 92, 340, sixteen},
           Case{2, -2000, 0, "-2000", "0", 92, 340, sixteen},
           Case{2, 1000, 65535, "1000", "65535", 87, 340, sixteen},
           Case{4, 0, 1e9f, "0.000E+00", "1.000E+09", 87, 330, "  Image Histogram (BITPIX = 32)"},
           Case{-4, -0.05f, 1234, "-5.000E-02", "1.234E+03", 87, 330, "  Image Histogram (BITPIX = -32)"},
           Case{-4, 3.4028e38f, -3.4028e38f, "", "", 97, 345, "  Image Histogram (BITPIX = -32)"},
           Case{0, 1, 2, "", "", 97, 345, ""},
       }) {
    SCOPED_TRACE(testing::Message() << c.bytesPerPixel << ": " << c.minimum << " to " << c.maximum);
    const LevelAxis axis = DataLevelAxis(c.bytesPerPixel, c.minimum, c.maximum);
    const std::vector<Label> labels = LabelLevels(axis, {100, 0, 259, 164});
    EXPECT_EQ(labels[0].text, c.left);
    EXPECT_EQ(labels[1].text, c.right);
    EXPECT_EQ(labels[0].x, c.leftX);
    EXPECT_EQ(labels[1].x, c.rightX);
    EXPECT_GT(labels[0].y, 163);
    EXPECT_EQ(HistogramCaption(c.bytesPerPixel), c.caption);
  }
}

TEST(HistogramDescription, NamesAxisPeakAndDarkness) {
  EXPECT_EQ(
      DescribeHistogram(Counts({{3, 1500}, {25, 300}, {26, 100}, {90, 100}}), GrayLevelAxis()),
      "Histogram, left 0, right 255, top count 10,000: most pixels (1,500) have gray level 3, levels 3 to "
      "90 occur, 90 % of the pixels are in the darkest tenth.");
  EXPECT_EQ(DescribeHistogram(LevelHistogram{}, GrayLevelAxis()),
            "Histogram, left 0, right 255, top count 100: no pixels.");
}

using LumVectTest = AppDirFixture;

TEST_F(LumVectTest, AddsThePixelsOfTheFileToTheCounts) {
  const DisplayBitmap picture = Levels(3, 2, {9, 9, 255, 0, 9, 1});
  ASSERT_FALSE(WriteDisplayBitmap(AppFile("gr_8.bm_"), AppFile("temp.bmp"), picture.View()));
  cv.LumHist[9] = 5;
  ASSERT_FALSE(LumVect(cv, AppFile("temp.bmp")));
  EXPECT_EQ(cv.LumHist, Counts({{0, 1}, {1, 1}, {9, 8}, {255, 1}}));
  EXPECT_EQ(AllBytes(cv.Display()), AllBytes(picture.View()));
}

TEST_F(LumVectTest, RefusesAMissingFileAndCountsNothing) {
  EXPECT_TRUE(LumVect(cv, AppFile("temp.bmp")));
  EXPECT_EQ(cv.LumHist, LevelHistogram{});
}

TEST_F(LumVectTest, TheHistogramWindowCountsPaddingAndTakesTheRangeOfTheData) {
  const DisplayBitmap picture = Levels(3, 1, {9, 9, 255});
  ASSERT_FALSE(WriteDisplayBitmap(AppFile("gr_8.bm_"), AppFile("1temp.bmp"), picture.View()));
  ASSERT_FALSE(LoadDisplayBits(cv, AppFile("1temp.bmp")));
  cv.CurrentSlot = 1;
  cv.SlotBytesPerPixel[1] = -4;
  cv.SlotData[1] = Floats(3, 1, {0.5f, 0.25f, 7});
  cv.LumHist.fill(3);
  CountCurrentImage(cv);
  EXPECT_EQ(cv.LumHist, Counts({{0, 1}, {9, 2}, {255, 1}}));
  EXPECT_EQ(cv.BytesPerPixel, -4);
  EXPECT_EQ(cv.ImageMin, 0.25f);
  EXPECT_EQ(cv.ImageMax, 7);
}

}  // namespace
}  // namespace corvane
