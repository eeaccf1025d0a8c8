#include "analysis/FTS_Hist.h"
#include "analysis/HistogramPanel.h"
#include "core/open_image.h"
#include "core/working_files.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

using testing::HasSubstr;

QColor GrayColor(int level) { return {level, level, level}; }
const QColor kBar = GrayColor(232);
const QColor kGrid = GrayColor(176);
const QColor kMark = QColor(255, 0, 0);

class HistogramWindow : public AppDirFixture {
 protected:
  void Open(const std::string& name, std::string_view bytes) {
    ASSERT_TRUE(OpenImageFile(cv, os, MakeUserFile(name, bytes)));
  }
  static std::string Description(const QWidget& window) {
    return Find<PictureBox>(window, "picHist").accessibleDescription().toStdString();
  }
};

TEST_F(HistogramWindow, NamesTheRangeOfTheDataByTheirPrecision) {
  struct Case {
    int bitpix;
    std::vector<double> values;
    const char* caption;
    const char* axis;
    std::vector<std::string> cards = {};
  };
  const Case cases[] = {
      {8, {7, 40, 40, 40}, "Image Histogram at 8 Bits Per Pixel", "left 0, right 255, top count 100"},
      {16,
       {0, 40005, 45, 45},
       "  Image Histogram (BITPIX = 16)",
       "left -5, right 40000, top count 100",
       {Card("BZERO", -5)}},
      {32, {-7, 70000, 40, 40}, "  Image Histogram (BITPIX = 32)", "left -7.000E+00, right 7.000E+04"},
      {-32, {0.5, 1234, 1, 1}, "  Image Histogram (BITPIX = -32)", "left 5.000E-01, right 1.234E+03"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.bitpix);
    Open("~a.fit", FitsImage(c.bitpix, 2, 2, c.values, c.cards));
    FTS_Hist window(cv, os);
    EXPECT_EQ(window.windowTitle(), c.caption);
    EXPECT_THAT(Description(window), HasSubstr(c.axis));
    EXPECT_FALSE(os.busy);
    window.show();
    Press(window, "cmdClose");
    EXPECT_FALSE(window.isVisible());
    CloseImage(cv);
  }
}

TEST_F(HistogramWindow, ShowsTheGrayLevelsOfABitmap) {
  const BitmapSpec spec{.width = 5,
                        .height = 3,
                        .pixel =
                            [](int, int) {
                              return Color{90, 90, 90};
                            },
                        .palette = {}};
  Open("a.bmp", BitmapBytes(spec));
  const FTS_Hist window(cv, os);
  EXPECT_EQ(window.windowTitle(), "Image Histogram at 8 Bits Per Pixel");
  EXPECT_EQ(cv.LumHist[90], 15);
  EXPECT_EQ(cv.LumHist[0], 9);  // the padding counts
}

// One unit is one pixel, the colours are the stated ones, nothing is smoothed.
TEST_F(HistogramWindow, PaintsBarsAndGridPixelByPixel) {
  std::vector<double> levels(12, 100);
  levels[0] = 20;             // once: no bar
  levels[1] = levels[2] = 0;  // the leftmost level
  Open("a.fit", FitsImage(8, 12, 1, levels));
  const FTS_Hist window(cv, os);
  const QImage image = Find<PictureBox>(window, "picHist").Flattened();
  ASSERT_EQ(image.size(), QSize(258, 163));
  const auto at = [&](int x, int y) { return image.pixelColor(x + 1, 161 - y); };
  for (const int y : {0, 80, 160})
    for (const int x : {-1, 20, 255, 256}) EXPECT_EQ(at(x, y), kGrid) << x << ' ' << y;
  EXPECT_EQ(at(100, 40), kBar);
  EXPECT_EQ(at(100, 76), kBar);  // 80 log 9
  EXPECT_EQ(at(100, 77), GrayColor(0));
  EXPECT_EQ(at(101, 40), GrayColor(0));
  EXPECT_EQ(at(20, 1), GrayColor(0));
  EXPECT_EQ(at(0, 24), kBar);  // 80 log 2
  EXPECT_EQ(at(0, 25), GrayColor(0));
  EXPECT_EQ(at(0, -1), GrayColor(0));
  EXPECT_EQ(cv.HistDecades, 2);
}

class ToolHistogram : public AppDirFixture {
 protected:
  ToolHistogram() {
    cv.LumHist.fill(0);
    cv.LumHist[100] = 100;
    panel.DrawHistogram(cv);
  }
  QColor At(int x, int y) { return Find<PictureBox>(panel, "picHist").Point(x, y); }
  HistogramPanel panel{HistogramPanel::Form::WithGrayBar};
};

TEST_F(ToolHistogram, KeepsItsGraphBelowTheClipMarkers) {
  panel.Keep(cv, kHist1);
  EXPECT_THAT(WorkingFiles(), testing::ElementsAre("hist1.bmp"));
  panel.MarkClips(30, 100);
  for (const int level : {30, 100}) {
    EXPECT_EQ(At(level, 0), kMark);
    EXPECT_EQ(At(level, 13), kMark);
    EXPECT_NE(At(level, 14), kMark);
  }
  panel.MarkClips(30, 200);
  EXPECT_EQ(At(100, 10), kBar);
  EXPECT_EQ(At(200, 10), kMark);
  panel.ClearMarks();
  EXPECT_EQ(At(200, 10), GrayColor(0));
  EXPECT_EQ(At(100, 60), kBar);
  EXPECT_EQ(At(7, 0), kGrid);
}

TEST_F(ToolHistogram, ShowsTheOtherGraphAgainWithItsScale) {
  panel.Keep(cv, kHist1);
  const HistogramPanel::GraphState before = panel.State();
  cv.LumHist.fill(0);
  cv.LumHist[50] = 99999;
  panel.DrawHistogram(cv);
  panel.Keep(cv, kHist2);
  const HistogramPanel::GraphState after = panel.State();
  EXPECT_EQ(cv.HistDecades, 5);
  EXPECT_EQ(At(50, 100), kBar);
  EXPECT_EQ(At(100, 40), GrayColor(0));

  panel.Restore(cv, kHist1, before);
  EXPECT_EQ(cv.HistDecades, 3);
  EXPECT_EQ(At(100, 100), kBar);
  EXPECT_EQ(At(50, 60), GrayColor(0));
  EXPECT_THAT(Find<PictureBox>(panel, "picHist").accessibleDescription().toStdString(),
              HasSubstr("top count 1,000"));
  // A lost file costs nothing but its reading; markers do not take the graph away with them.
  std::filesystem::remove(AppFile("hist2.bmp"));
  panel.Restore(cv, kHist2, after);
  panel.MarkClips(0, 255);
  EXPECT_EQ(cv.HistDecades, 5);
  EXPECT_EQ(At(50, 100), kBar);
}

TEST_F(ToolHistogram, KeepsTheGraphInMemoryWhereItCannotBeWritten) {
  std::filesystem::create_directory(AppFile("hist1.bmp"));
  panel.Keep(cv, kHist1);
  panel.MarkClips(0, 255);
  EXPECT_EQ(At(100, 60), kBar);
}

TEST_F(ToolHistogram, MarksTheGrayBarUnderTheSameLevels) {
  auto& bar = Find<PictureBox>(panel, "picCBar");
  auto& graph = Find<PictureBox>(panel, "picHist");
  panel.MarkBar(0, 255);
  EXPECT_EQ(bar.Point(0, 13), kMark);
  EXPECT_EQ(bar.Point(255, 0), kMark);
  EXPECT_EQ(bar.Point(128, 5), GrayColor(128));
  EXPECT_NE(At(255, 5), kMark);
  EXPECT_EQ(bar.x() + bar.Pixel(77, 0).x(), graph.x() + graph.Pixel(77, 0).x());
  EXPECT_THAT(bar.accessibleDescription().toStdString(), HasSubstr("0 and 255"));
}

}  // namespace
}  // namespace corvane
