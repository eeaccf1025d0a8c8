#include "preview/PreviewWindow.h"
#include "tests/windows/preview_fixture.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

using testing::ElementsAre;

constexpr MenuItem kOptions[] = {{.text = "&Image Information", .opens = Dialog::Info},
                                 {.text = "&Histogram", .opens = Dialog::Histogram}};

// A tool that inverts levels and halves data, row by row.
class SlowTool : public PreviewWindow {
 public:
  SlowTool(ModCV& store, Platform& platform, Desk& windows)
      : PreviewWindow({"frmSlow", "Slow: ", "&Apply", "", "&Save"}, store, platform, windows),
        list(Named(new QComboBox, "Combo1")),
        bar(Named(new BarProgress(platform), "ProgressBar1")) {
    AddMenus(kOptions, {});
    list->addItems({"one", "two"});
    LayOut(list, bar, {list});
    ShowRunsOn(bar);
  }
  bool RunPreview(ConstGrayView source, GrayView result, Progress& progress) override {
    std::memset(result.bits, 0, result.Size());
    for (int y = 0; y < source.height; ++y) {
      for (int x = 0; x < source.width; ++x)
        result.At(x, y) = static_cast<std::uint8_t>(255 - source.At(x, y));
      if (!progress.Row(y + 1, source.height) && heedsCancel) return false;
    }
    if (memoryIsFull) throw std::bad_alloc();
    return true;
  }
  void RunOnData(Progress& progress) override {
    const FloatView values = cv.ImageData.Edit();
    for (int y = 0; y < values.height; ++y) {
      for (int x = 0; x < values.width; ++x) values.At(x, y) /= 2;
      wentOn = progress.Row(y + 1, values.height);
    }
  }
  void ResetControls() override {}
  void EnableControls(bool enabled) override { list->setEnabled(enabled); }

  QComboBox* list;
  BarProgress* bar;
  bool heedsCancel = true;
  bool memoryIsFull = false;
  bool wentOn = false;
};

class PreviewRun : public PreviewFixture {
 protected:
  PreviewRun() : PreviewFixture(Window::Filter) {
    OpenUserImage("hundreds.fit", FitsImage(16, 11, 10, Hundreds()));
    window = std::make_unique<SlowTool>(cv, os, desk);
    window->Open();
    window->show();
    before = Everything();
  }

  SlowTool& Tool() { return static_cast<SlowTool&>(*window); }
  std::string State() {
    return Enabled({"cmdApply", "cmdCancel", "cmdRedo", "cmdSave", "Combo1", "mnuOptSel_0"});
  }
  std::string Everything() {
    std::ostringstream all;
    all << LastingState() << State() << testing::PrintToString(Pixels(cv.Display()))
        << testing::PrintToString(ShownLevels()) << testing::PrintToString(cv.LumHist) << cv.ImageChanged
        << Picture("picHist").accessibleDescription().toStdString() << Tool().bar->value()
        << Tool().bar->cursor().shape() << window->cursor().shape();
    return all.str();
  }
  void ApplyAndDo(int yield, std::function<void()> user) {
    os.onYield = [this, yield, user, first = os.yields] {
      if (os.yields - first == yield) user();
    };
    Press(*window, "cmdApply");
    os.onYield = nullptr;
  }

  std::string before;
};

TEST_F(PreviewRun, ShowsItsProgressAndTakesNoOtherCommand) {
  std::vector<int> percents;
  os.onYield = [&] {
    percents.push_back(Tool().bar->value());
    EXPECT_FALSE(os.busy) << "its busy cursor is the window's own";
    EXPECT_EQ(window->cursor().shape(), Qt::BusyCursor);
    EXPECT_EQ(Tool().bar->cursor().shape(), Qt::BitmapCursor);
    EXPECT_EQ(State(), "Combo1 mnuOptSel_0 ");
    Press(*window, "cmdApply");
    QTest::keyClick(Tool().list, Qt::Key_Down);
    QTest::mouseClick(Tool().list, Qt::LeftButton);
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
    Choose("mnuFileSel_2");
  };
  Press(*window, "cmdApply");
  EXPECT_THAT(percents, ElementsAre(10, 20, 30, 40, 50, 60, 70, 80, 90, 100));
  EXPECT_EQ(State(), "cmdCancel cmdSave ");
  EXPECT_EQ(Tool().list->currentIndex(), 0);
  EXPECT_EQ(Tool().bar->value(), 0);
  EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(FileLevels("temp.bmp"), Pixels(cv.Display()));
  EXPECT_EQ(cv.Display().At(0, 0), 255);
  EXPECT_TRUE(desk.replacedBy.empty());
}

TEST_F(PreviewRun, IsCancelledByEscapePauseAndAPressOnTheBarAlone) {
  for (const bool heeds : {true, false}) {
    Tool().heedsCancel = heeds;
    for (const auto& cancel :
         std::vector<std::function<void()>>{[&] { QTest::keyClick(window.get(), Qt::Key_Escape); },
                                            [&] { QTest::keyClick(Tool().list, Qt::Key_Pause); },
                                            [&] { QTest::mousePress(Tool().bar, Qt::RightButton); }}) {
      Find<QPushButton>(*window, "cmdApply").setFocus();
      os.Expect("CANCEL CONFIRMATION", "Calculation cancelled !");
      const int yields = os.yields;
      ApplyAndDo(3, cancel);
      EXPECT_EQ(os.yields - yields, heeds ? 3 : 10);
      std::filesystem::remove(AppFile("temp.bmp"));
      EXPECT_TRUE(Everything() == before);
      EXPECT_EQ(window->focusWidget()->objectName(), "cmdApply");
    }
  }
  // What cancels a run does nothing between runs, and nothing else cancels.
  QTest::keyClick(window.get(), Qt::Key_Escape);
  ApplyAndDo(3, [&] { QTest::mousePress(&Preview(), Qt::LeftButton); });
  EXPECT_EQ(State(), "cmdCancel cmdSave ");
}

TEST_F(PreviewRun, EndsRedoEvenWhenCancelled) {
  Press(*window, "cmdApply");
  Press(*window, "cmdCancel");
  EXPECT_TRUE(Find<QPushButton>(*window, "cmdRedo").isEnabled());
  os.Expect("CANCEL CONFIRMATION", "Calculation cancelled !");
  ApplyAndDo(1, [&] {
    EXPECT_FALSE(Find<QPushButton>(*window, "cmdRedo").isEnabled());
    QTest::keyClick(window.get(), Qt::Key_Escape);
  });
  EXPECT_EQ(State(), "cmdApply Combo1 mnuOptSel_0 ");
}

TEST_F(PreviewRun, LeavesAllAsItWasWhereMemoryIsFull) {
  Tool().memoryIsFull = true;
  os.Expect("FILE OPEN ERROR", "Not enough memory for this image.");
  Press(*window, "cmdApply");
  EXPECT_TRUE(Everything() == before);
}

TEST_F(PreviewRun, EndsBeforeTheWindowCloses) {
  int yields = 0;
  ApplyAndDo(2, [&] {
    yields = os.yields;
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());
  });
  EXPECT_EQ(os.yields, yields) << "the next row is the last";
  EXPECT_FALSE(cv.ImageChanged);
  EXPECT_TRUE(window->isVisible());
  QCoreApplication::processEvents();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(PreviewRun, OnDataShowsItsProgressAndIsNotCancelled) {
  Press(*window, "cmdApply");
  std::vector<int> percents;
  os.onYield = [&] {
    percents.push_back(Tool().bar->value());
    QTest::keyClick(window.get(), Qt::Key_Escape);
    QTest::mousePress(Tool().bar, Qt::LeftButton);
    Press(*window, "cmdSave");
  };
  SaveTo("half.fts", 16);
  EXPECT_THAT(percents, ElementsAre(10, 20, 30, 40, 50, 60, 70, 80, 90, 100));
  EXPECT_TRUE(Tool().wentOn);
  EXPECT_EQ(ReadValues("half.fts")[10], 500);
  EXPECT_EQ(Tool().bar->value(), 0);
}

}  // namespace
}  // namespace corvane
