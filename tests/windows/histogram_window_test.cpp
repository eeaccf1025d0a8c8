#include "analysis/FTS_Hist.h"
#include "analysis/HistogramPanel.h"
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
  static std::string Description(const QWidget& window) {
    return Find<PictureBox>(window, "picHist").accessibleDescription().toStdString();
  }
};

TEST_F(HistogramWindow, NamesTheRangeOfTheDataByTheirPrecision) {
  OpenUserImage("~a.fit", FitsImage(16, 2, 2, {0, 40005, 45, 45}, {Card("BZERO", -5)}));
  FTS_Hist window(cv, os);
  EXPECT_EQ(window.windowTitle(), "  Image Histogram (BITPIX = 16)");
  EXPECT_THAT(Description(window), HasSubstr("left -5, right 40000, top count 100"));
  EXPECT_FALSE(os.busy);
  window.show();
  Press(window, "cmdClose");
  EXPECT_FALSE(window.isVisible());
}

TEST_F(HistogramWindow, ShowsTheGrayLevelsOfABitmap) {
  OpenUserImage("a.bmp", GrayBitmap(24, 5, 3, [](int, int) { return 90; }));
  const FTS_Hist window(cv, os);
  EXPECT_EQ(window.windowTitle(), "Image Histogram at 8 Bits Per Pixel");
  EXPECT_EQ(cv.LumHist[90], 15);
  EXPECT_EQ(cv.LumHist[0], 9);  // the padding counts
}

// One unit is one pixel, the colors are the stated ones, nothing is smoothed.
TEST_F(HistogramWindow, PaintsBarsAndGridPixelByPixel) {
  std::vector<double> levels(12, 100);
  levels[0] = 20;             // once: no bar
  levels[1] = levels[2] = 0;  // the leftmost level
  OpenUserImage("a.fit", FitsImage(8, 12, 1, levels));
  const FTS_Hist window(cv, os);
  const QImage image = Find<PictureBox>(window, "picHist").Flattened();
  ASSERT_EQ(image.size(), QSize(258, 163));
  const auto at = [&](int x, int y) { return image.pixelColor(x + 1, 161 - y); };
  for (const int y : {0, 80, 160})
    for (const int x : {-1, 20, 255, 256}) EXPECT_EQ(at(x, y), kGrid) << x << ' ' << y;
  const int barTops[][2] = {{100, 76}, {0, 24}};  // 80 log 9, 80 log 2
  for (const auto& [x, top] : barTops) {
    EXPECT_EQ(at(x, top), kBar) << x;
    EXPECT_EQ(at(x, top + 1), GrayColor(0)) << x;
  }
  for (const auto& [x, y] : {std::pair(101, 40), {20, 1}, {0, -1}})
    EXPECT_EQ(at(x, y), GrayColor(0)) << x << ' ' << y;
  EXPECT_EQ(cv.HistDecades, 2);
}

TEST_F(HistogramWindow, PaintsItsLabelsClearOfEachOtherAtEveryTextSize) {
  std::vector<double> values(20, -123456789.0);
  values[0] = values[1] = 3e8;
  OpenUserImage("a.fit", FitsImage(-32, 20, 1, values));
  for (const double size : {1.0, 1.25, 1.5}) {
    SCOPED_TRACE(size);
    const LargerText text(size);
    FTS_Hist window(cv, os);
    const QImage shown = window.grab().toImage();
    const auto& graph = Find<PictureBox>(window, "picHist");
    const QRect place(graph.mapTo(&window, QPoint(0, 0)), graph.size());
    const int line = window.fontMetrics().height();
    const QRect ticks(place.right() + 4, place.top() - line / 2, 9, place.height() + line / 2);
    EXPECT_EQ(InkRuns(shown, ticks, true).size(), 3u);
    const QRect right(place.right() + 14, 0, shown.width() - place.right() - 14, place.bottom() + 2 * line);
    EXPECT_EQ(InkRuns(shown, right, true).size(), 4u) << "three counts and the end of the level axis";
    const QRect below(0, place.bottom() + 4, place.center().x(), line);
    EXPECT_GT(InkRuns(shown, below).size(), 5u);
    EXPECT_LT(InkRuns(shown, below).back().right(), place.center().x() - line);
    EXPECT_EQ(InkRuns(shown, {0, 0, 17, place.bottom()}, true).size(), 6u) << "PIXELS";
  }
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

TEST_F(ToolHistogram, NamesGraphAndBar) {
  const QImage shown = panel.grab().toImage();
  EXPECT_FALSE(InkRuns(shown, {0, 0, 258, panel.Graph()->y() - 2}).empty());
  const int end = Find<PictureBox>(panel, "picCBar").geometry().bottom() + 1;
  EXPECT_FALSE(InkRuns(shown, {0, end, 258, panel.height() - end}).empty());
}

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
