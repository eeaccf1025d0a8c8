#include "analysis/frmProfile.h"
#include "analysis/profile.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

const QColor kBlackBar(0, 0, 0);
const QColor kPaper(255, 255, 255);
const QColor kBase(255, 0, 0);
const QColor kGridLine(128, 128, 128);

class ProfileWindow : public AppDirFixture {
 protected:
  // Level 200 everywhere but 40 left of and below the marker.
  void Mark(int width, int height, int x, int y) {
    std::vector<double> levels;
    for (int row = height - 1; row >= 0; --row)
      for (int column = 0; column < width; ++column) levels.push_back(column < x || row < y ? 40 : 200);
    OpenUserImage("a.fit", FitsImage(8, width, height, levels));
    cv.MarkX = static_cast<float>(x);
    cv.MarkY = static_cast<float>(y);
    Profile(cv);
  }
  // A color of a graph as it is painted, by its units.
  static QColor At(frmProfile& window, const char* graph, int x, int y) {
    return Find<PictureBox>(window, graph).grab().toImage().pixelColor(x + 1, 256 - y);
  }
};

TEST_F(ProfileWindow, DrawsTheLevelsAroundTheMarker) {
  Mark(300, 200, 150, 100);
  frmProfile window(cv, os);
  EXPECT_EQ(Find<PictureBox>(window, "picXP").size(), QSize(202, 259));
  // 49 positions left of the marker, two units each
  EXPECT_EQ(At(window, "picXP", 2 * 49 - 1, 40), kBlackBar);
  EXPECT_EQ(At(window, "picXP", 2 * 49 - 1, 41), kPaper);
  EXPECT_EQ(At(window, "picXP", 2 * 49, 200), kBlackBar);
  EXPECT_EQ(At(window, "picXP", 199, 200), kBlackBar);
  EXPECT_EQ(At(window, "picXP", 199, 201), kPaper);
  // above the marker to the right of it
  EXPECT_EQ(At(window, "picYP", 199, 200), kBlackBar);
  EXPECT_EQ(At(window, "picYP", 199 - 2 * 49, 200), kBlackBar);
  EXPECT_EQ(At(window, "picYP", 199 - 2 * 50, 41), kPaper);
  EXPECT_EQ(At(window, "picYP", 0, 40), kBlackBar);
  EXPECT_THAT(Find<PictureBox>(window, "picXP").accessibleDescription().toStdString(),
              testing::StartsWith("X profile through row 101, columns 102 to 201"));
  EXPECT_THAT(Find<PictureBox>(window, "picYP").accessibleDescription().toStdString(),
              testing::StartsWith("Y profile through column 151, rows 150 to 51"));
}

// Both graphs bring the grid with every repaint of the whole window, never with one of a button.
TEST_F(ProfileWindow, TakesTheGridAwayUntilItIsRepainted) {
  Mark(300, 200, 150, 100);
  frmProfile window(cv, os);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  QTest::qWait(0);
  const auto hasGrid = [&](const char* graph) { return At(window, graph, 190, 240) == kGridLine; };
  const auto both = [&] {
    EXPECT_EQ(hasGrid("picXP"), hasGrid("picYP"));
    EXPECT_EQ(At(window, "picXP", 55, 250) == kGridLine, hasGrid("picXP"));
    return hasGrid("picXP");
  };
  EXPECT_TRUE(both());
  Press(window, "cmdRefresh");
  QApplication::processEvents();
  EXPECT_FALSE(both());
  QTest::mouseMove(&Find<QWidget>(window, "cmdRefresh"));
  Find<QWidget>(window, "cmdRefresh").repaint();
  QApplication::processEvents();
  EXPECT_FALSE(both());
  Press(window, "cmdGrid");
  EXPECT_TRUE(both());
  Press(window, "cmdRefresh");
  window.repaint();
  EXPECT_TRUE(both());
  Press(window, "cmdClose");
  EXPECT_FALSE(window.isVisible());
}

// Whatever the size of the texts: numbers beside the axes, the word beside the numbers.
TEST_F(ProfileWindow, PaintsItsLabelsClearOfTheGraphsAndOfEachOther) {
  Mark(300, 200, 150, 100);
  for (const double size : {1.0, 1.25, 1.5}) {
    const LargerText text(size);
    frmProfile window(cv, os);
    const QImage shown = window.grab().toImage();
    const int line = window.fontMetrics().height();
    for (const char* name : {"picXP", "picYP"}) {
      SCOPED_TRACE(testing::Message() << name << " at " << size);
      const auto& graph = Find<PictureBox>(window, name);
      const QRect place(graph.mapTo(&window, QPoint(0, 0)), graph.size());
      const int room = qRound(46 * size);
      const QRect beside(place.left() - room, place.top() + line, room, place.height() - 2 * line);
      const auto letters = InkRuns(shown, beside, true);
      EXPECT_EQ(letters.size(), 10u) << "nine letters and a dot";
      const QRect top(place.left() - room, place.top() - line / 2, room, line);
      for (const QRect& band : {top, top.translated(0, 252)}) {
        const auto digits = InkRuns(shown, band);
        ASSERT_FALSE(digits.empty());
        EXPECT_GT(digits.front().left(), InkRuns(shown, beside).back().right());
        EXPECT_LT(digits.back().right(), place.left() - 1);
      }
      const QRect below(place.left() - line, place.bottom() + 2, place.width() + 2 * line, line);
      EXPECT_GE(InkRuns(shown, below).size(), 3u);
    }
  }
}

}  // namespace
}  // namespace corvane
