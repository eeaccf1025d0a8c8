#include "core/fits_writer.h"
#include "core/working_files.h"
#include "luminance/frmDeConv.h"
#include "tests/windows/viewer_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;

constexpr char kItem[] = "mnuToolSel_8";
constexpr int kWidth = 21;
constexpr int kHeight = 18;

struct Unwatched : IterationWatch {
  bool Row(int, int) override { return true; }
  bool Iteration(int, float) override { return true; }
};

class ViewerDeconvolution : public ViewerFixture {
 protected:
  ViewerDeconvolution() {
    Random random(3);
    std::vector<double> values;
    for (int i = 0; i < kWidth * kHeight; ++i) values.push_back(random.Below(30000));
    file = FitsImage(16, kWidth, kHeight, values);
    OpenFile("a.fit", file);
    source = Copy(cv.Display());
    slot = ReadFile(AppFile("0temp.bmp"));
    UserPresses("cmdApply");
  }
  // What the user does in the dialog, which is `dialog` for as long.
  void UserPresses(const char* button) {
    desk.dialogs[Dialog::Deconvolution] = [this, button] {
      EXPECT_TRUE(Checked(kItem));
      EXPECT_EQ(ReadFile(AppFile(kDummyBitmap)), slot);
      frmDeConv shown(cv, os);
      dialog = &shown;
      shown.show();
      Press(shown, button);
      dialog = nullptr;
    };
  }
  std::vector<int> Restored() {
    DisplayBitmap result = Copy(source.View());
    Unwatched watch;
    DeconvolveDisplay(result.View(), 3, Restoration::Standard, watch);
    return Pixels(result.View());
  }
  void ExpectNothingChanged() {
    EXPECT_FALSE(Checked(kItem));
    EXPECT_FALSE(cv.DeconvCancelled);
    EXPECT_EQ(AllBytes(cv.Display()), AllBytes(source.View()));
    ExpectPictureIsWhole();
    EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), slot);
    EXPECT_THAT(List(), ElementsAre("a.fit"));
  }

  std::string file;
  std::string slot;
  DisplayBitmap source;
  frmDeConv* dialog = nullptr;
};

TEST_F(ViewerDeconvolution, LeavesEverythingAsItWasWhenCancelled) {
  Hover(3, 2);
  const std::string readout = Readout();
  UserPresses("cmdCancel");
  Choose(kItem);
  ExpectNothingChanged();
  EXPECT_EQ(Readout(), readout);
  EXPECT_THAT(WorkingFiles(), testing::ElementsAre("0temp.bmp"));
  UserPresses("cmdApply");
  os.onYield = [&] {
    if (os.yields == 25) dialog->close();
  };
  Choose(kItem);
  EXPECT_EQ(os.yields, 25);
  ExpectNothingChanged();
  // Nothing is left to be committed.
  Item("mnuToolSel_18").setEnabled(true);
  Choose("mnuToolSel_18");
  EXPECT_EQ(cv.SlotName[0], "a.fit");
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 2);
  os.onYield = nullptr;
  Choose(kItem);
  EXPECT_EQ(Pixels(cv.Display()), Restored());
}

TEST_F(ViewerDeconvolution, IsTheOnlyThingThatRuns) {
  OpenSlope("b.fit", kWidth, kHeight);
  Find<QComboBox>(*window, "Combo1").setCurrentIndex(0);
  os.onYield = [&] {
    for (QAction* item : window->findChildren<QAction*>())
      if (item->objectName().startsWith("mnu") && item->objectName() != "mnuFileSel_10") item->trigger();
    Find<QComboBox>(*window, "Combo1").setCurrentIndex(1);
    Click(3, 3);
    QTest::keyClick(&Picture(), Qt::Key_Left);
  };
  Choose(kItem);
  os.onYield = nullptr;
  EXPECT_EQ(Pixels(cv.Display()), Restored());
  EXPECT_EQ(desk.shown, std::vector<Dialog>{Dialog::Deconvolution});
  EXPECT_TRUE(desk.replacedBy.empty());
  EXPECT_TRUE(os.helpCalls.empty());
  EXPECT_EQ(Find<QComboBox>(*window, "Combo1").currentIndex(), 0);
  EXPECT_EQ(cv.CurrentSlot, 0);
  EXPECT_FALSE(Item("mnuToolSel_2").isEnabled());  // no marker was placed
  ExpectPictureIsWhole();
}

TEST_F(ViewerDeconvolution, EndsWhenTheViewerIsClosedAndOnlyThenTheViewerCloses) {
  os.onYield = [&] {
    if (os.yields != 10) return;
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), slot);
  };
  Choose(kItem);
  EXPECT_EQ(os.yields, 10);
  EXPECT_TRUE(window->isVisible());
  QCoreApplication::processEvents();
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(WorkingFiles().empty());
}

TEST_F(ViewerDeconvolution, IsAbandonedWhenItsPictureCannotBeWritten) {
  desk.dialogs[Dialog::Deconvolution] = [&, apply = desk.dialogs[Dialog::Deconvolution]] {
    apply();
    std::filesystem::remove(AppFile(kDummyBitmap));
    std::filesystem::create_directory(AppFile(kDummyBitmap));
  };
  os.Expect("FILE OPEN ERROR", testing::HasSubstr("dummy.bmp"));
  Choose(kItem);
  ExpectNothingChanged();
  os.Expect("FILE OPEN ERROR", testing::HasSubstr("dummy.bmp"));
  Choose(kItem);  // and is not even asked for
  ExpectNothingChanged();
  EXPECT_EQ(desk.shown.size(), 1u);
}

TEST_F(ViewerDeconvolution, IsSavedFromTheDataWithSixteenBits) {
  ChooseBits(16);
  for (const bool standard : {true, false}) {
    SCOPED_TRACE(standard);
    cv.DeconvStandard = standard;
    cv.DeconvRadius = 1.5f;
    FloatImage wanted = cv.SlotData[0];
    Unwatched watch;
    Deconv16(wanted.Edit(), 1.5f, standard ? Restoration::Standard : Restoration::DeepSky, watch);
    ModCV encoded;
    encoded.ImageData = wanted;
    encoded.BytesPerPixel = 2;
    EncodeSixteenBit(encoded);
    TakeWrittenData(encoded, 0);

    Choose(kItem);
    int seen = 0;
    os.onYield = [&] {
      for (QWidget* progress : QApplication::topLevelWidgets()) {
        if (progress->windowTitle() != "Saving..." || !progress->isVisible()) continue;
        ++seen;
        progress->close();
        EXPECT_TRUE(progress->isVisible());
      }
      Choose(kItem);
      Choose("mnuFileSel_1");
    };
    SaveTo("b.fit");
    os.onYield = nullptr;
    EXPECT_EQ(offered, 2);
    EXPECT_GE(seen, 2 * kHeight);
    EXPECT_EQ(Reread("b.fit"), Values(encoded.ImageData.View()));
    EXPECT_EQ(Values(cv.SlotData[0].View()), Values(encoded.ImageData.View()));
    ExpectPictureIsWhole();
    for (const QWidget* left : QApplication::topLevelWidgets()) EXPECT_NE(left->windowTitle(), "Saving...");
    Choose("mnuFileSel_2");
    OpenFile("a.fit", file);
  }
}

}  // namespace
}  // namespace corvane
