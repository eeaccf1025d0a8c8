#include <set>

#include "luminance/frmDeConv.h"
#include "luminance/frmSave16.h"
#include "tests/windows/viewer_fixture.h"
#include "viewer/magnify.h"
#include "viewer/view_table.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class ViewerViews : public ViewerFixture {
 protected:
  static std::string ItemOf(const ViewEntry& view) { return "mnuToolSel_" + std::to_string(view.menuIndex); }
  // The user's Apply in the deconvolution dialog.
  ViewerViews() {
    desk.dialogs[Dialog::Deconvolution] = [this] {
      frmDeConv dialog(cv, os);
      Press(dialog, "cmdApply");
    };
  }
  // The tool windows come later; their items are what a user would press.
  void ChooseTool(const char* item) {
    Item(item).setEnabled(true);
    Choose(item);
  }
};

TEST_F(ViewerViews, ShowEveryTransformOfTheSlotAndTheSlotAgain) {
  OpenSlope("a.fit", 7, 5);
  const std::string slot = ReadFile(AppFile("0temp.bmp"));
  const std::vector<int> plain = ShownLevels();
  const DisplayBitmap source = Copy(cv.Display());
  for (const ViewEntry& view : ViewTable()) {
    const std::string item = ItemOf(view);
    SCOPED_TRACE(item);
    Hover(2, 2);
    Choose(item.c_str());
    EXPECT_TRUE(Checked(item.c_str()));
    EXPECT_EQ(Readout(), "  ");
    DisplayBitmap wanted(view.transposes ? 5 : 7, view.transposes ? 7 : 5);
    if (view.deconvolves) {
      wanted = Copy(source.View());
      frmSave16 nobody(os, nullptr);
      DeconvolveDisplay(wanted.View(), 3, Restoration::Standard, nobody);
    } else {
      view.display(cv, source.View(), wanted.View());
    }
    EXPECT_EQ(Pixels(cv.Display()), Pixels(wanted.View()));
    EXPECT_EQ(Picture().size(), QSize(wanted.width, wanted.height));
    if (!view.isColor) ExpectPictureIsWhole();
    EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), slot);

    Choose(item.c_str());
    EXPECT_FALSE(Checked(item.c_str()));
    EXPECT_EQ(ShownLevels(), plain);
    ExpectPictureIsWhole();
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
  }
}

TEST_F(ViewerViews, ReplaceOneAnotherAndNeverAddUp) {
  OpenSlope("a.fit", 7, 5);
  for (const ViewEntry& first : ViewTable())
    for (const ViewEntry& second : ViewTable()) {
      if (&first == &second) continue;
      Choose(ItemOf(second).c_str());
      const std::vector<int> alone = ShownLevels();
      Choose(ItemOf(first).c_str());
      Choose(ItemOf(second).c_str());
      EXPECT_EQ(ShownLevels(), alone);
      EXPECT_FALSE(Checked(ItemOf(first).c_str()));
      Choose(ItemOf(second).c_str());
    }
}

TEST_F(ViewerViews, ShowPseudoColorInTheChosenPalette) {
  OpenLevels("a.fit", 2, 1, {0, 128});
  std::vector<QRgb> middle;
  for (int palette = 0; palette < 3; ++palette) {
    cv.PColorSetting = palette;
    Choose("mnuToolSel_7");
    middle.push_back(Picture().Point(1, 0).rgb());
    Hover(1, 0);
    EXPECT_EQ(Readout(), "2 1 128");
    Choose("mnuToolSel_7");
  }
  EXPECT_EQ(std::set<QRgb>(middle.begin(), middle.end()).size(), 3u);
}

TEST_F(ViewerViews, KeepTheColorsOfAKeptPictureUnlessTheyMoveItsPixels) {
  OpenSlope("a.fit", 7, 5);
  Choose("mnuToolSel_7");
  ChooseTool("mnuToolSel_18");
  window->Unload();
  Start();
  for (const ViewEntry& view : ViewTable()) {
    Choose(ItemOf(view).c_str());
    EXPECT_EQ(Picture().Flattened().allGray(), view.menuIndex >= kRotate90) << view.menuIndex;
  }
}

TEST_F(ViewerViews, ReadOutTheDataOfTheirOwnPixels) {
  OpenFile("a.fit", FitsImage(16, 3, 2, {0, 1000, 2000, 3000, 4000, 5000}));
  Choose("mnuToolSel_13");  // the right column of the image is the top row now
  Hover(0, 2);
  EXPECT_EQ(Status(), "Value 2000, FITS row 1");
  Choose("mnuToolSel_10");
  Hover(5, 1);
  EXPECT_EQ(Status(), "Value 5000, FITS row 2");
}

TEST_F(ViewerViews, EndWithAnotherImage) {
  OpenSlope("a.fit", 7, 5);
  OpenSlope("b.fit", 4, 5);
  Choose("mnuToolSel_13");
  QTest::keyClick(&Find<QComboBox>(*window, "Combo1"), Qt::Key_Up);
  EXPECT_EQ(cv.CurrentSlot, 0);
  EXPECT_EQ(cv.CurrentName, "a.fit");
  EXPECT_FALSE(Checked("mnuToolSel_13"));
  ExpectPictureIsWhole();
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "1temp.bmp"));
  Choose("mnuToolSel_10");
  OpenSlope("c.fit", 3, 3);
  EXPECT_EQ(cv.Width(), 3);
  EXPECT_FALSE(Item("mnuToolSel_11").isEnabled());
  ExpectPictureIsWhole();
}

TEST_F(ViewerViews, MagnifyFromTheSlotStepByStep) {
  OpenSlope("a.fit", 7, 5);
  const DisplayBitmap source = Copy(cv.Display());
  for (const int mode : {0, 1}) {
    cv.MagMode = mode;
    for (const int factor : {2, 3, 4, 5, 6, 6, 5, 4, 3, 2}) {
      if (factor * 7 == cv.Width()) {  // six is the most
        EXPECT_FALSE(Item("mnuToolSel_10").isEnabled());
        continue;
      }
      Choose(factor * 7 > cv.Width() ? "mnuToolSel_10" : "mnuToolSel_11");
      DisplayBitmap wanted(7 * factor, 5 * factor);
      mode == 0 ? Replicate(source.View(), factor, wanted.View())
                : Interpolate(source.View(), factor, wanted.View());
      EXPECT_EQ(Pixels(cv.Display()), Pixels(wanted.View())) << factor;
      ExpectPictureIsWhole();
    }
    Choose("mnuToolSel_11");
    EXPECT_EQ(cv.Width(), 7);
    EXPECT_FALSE(Item("mnuToolSel_11").isEnabled());
  }
  Choose("mnuToolSel_10");
  Choose("mnuToolSel_6");  // a view is of the picture's own size
  EXPECT_EQ(cv.Width(), 7);
  Choose("mnuToolSel_10");
  EXPECT_FALSE(Checked("mnuToolSel_6"));
  EXPECT_EQ(cv.Width(), 14);
}

TEST_F(ViewerViews, RefuseToMagnifyBeyondTenMillionPixels) {
  OpenSlope("a.fit", 1600, 1100);
  Choose("mnuToolSel_10");
  const std::vector<int> twice = Pixels(cv.Display());
  os.Expect("MAXIMUM SIZE LIMIT", "The enlarged image must be less than 10 MB.");
  Choose("mnuToolSel_10");
  EXPECT_EQ(Pixels(cv.Display()), twice);
  EXPECT_EQ(Picture().size(), QSize(3200, 2200));
  Choose("mnuToolSel_11");
  EXPECT_EQ(cv.Width(), 1600);
}

TEST_F(ViewerViews, AreCommittedWhenAToolOpens) {
  OpenFile("a.fit", FitsImage(16, 3, 2, {0, 1000, 2000, 3000, 4000, 5000}));
  Choose("mnuToolSel_15");
  const std::vector<int> flipped = ShownLevels();
  window->move(40, 30);
  ChooseTool("mnuToolSel_18");
  EXPECT_THAT(desk.replacedBy, ElementsAre(Window::Scale));
  EXPECT_EQ(cv.SlotName[0], "~a.fit");
  EXPECT_EQ(cv.CurrentName, "~a.fit");
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 1);
  EXPECT_EQ(cv.WindowLeft, 40);
  EXPECT_EQ(cv.WindowTop, 30);
  window->Unload();
  Start();
  EXPECT_EQ(ShownLevels(), flipped);

  cv.MagMode = 0;
  Choose("mnuToolSel_10");
  ChooseTool("mnuFileSel_4");
  EXPECT_EQ(cv.SlotName[0], "~a.fit");
  window->Unload();
  Start();
  EXPECT_EQ(cv.Width(), 6);
  ExpectPictureIsWhole();
  EXPECT_EQ(Find<QComboBox>(*window, "Combo1").currentText(), "~a.fit");
}

TEST_F(ViewerViews, LeaveThePlainPictureAloneWhenAToolOpens) {
  OpenSlope("a.fit", 3, 2);
  const std::string slot = ReadFile(AppFile("0temp.bmp"));
  for (const char* item :
       {"mnuToolSel_18", "mnuToolSel_19", "mnuToolSel_20", "mnuFileSel_4", "mnuFileSel_5", "mnuFileSel_6"})
    ChooseTool(item);
  EXPECT_THAT(desk.replacedBy, ElementsAre(Window::Scale, Window::Filter, Window::Mask, Window::Align,
                                           Window::Combine, Window::Color));
  EXPECT_EQ(cv.SlotName[0], "a.fit");
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), slot);
}

}  // namespace
}  // namespace corvane
