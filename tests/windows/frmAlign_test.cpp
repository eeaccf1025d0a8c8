#include "align/frmAlign.h"

#include <QPushButton>

#include "formats/bitmap_format.h"
#include "tests/support/failing_calls.h"
#include "tests/windows/viewer_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kMosaic[] = "mnuModeSel_1";
constexpr char kAutoAdjust[] = "mnuModeSel_3";

class AlignWindow : public ViewerFixture {
 protected:
  AlignWindow() : ViewerFixture(Window::Align) {}

  std::string Readout() { return Box("txbXX") + " " + Box("txbYY") + " " + Box("txbLum"); }
  // A 16-bit image whose values tell every pixel from all others of the set.
  void OpenWords(const std::string& name, int width, int height, int first = 0) {
    std::vector<double> values;
    for (int i = 0; i < width * height; ++i) values.push_back((first + i * 37) % 30011);
    OpenFile(name, FitsImage(16, width, height, values));
  }
  void OpenBitmap(const std::string& name, int width, int height) {
    OpenFile(name, GrayBitmap(8, width, height, [](int x, int y) { return (x * 5 + y * 11) % 256; }));
  }
  void Show(int slot) { Find<QComboBox>(*window, "Combo1").setCurrentIndex(slot); }
  void MarkAt(int slot, int x, int y) {
    Show(slot);
    Click(x, y);
  }
  void Align() { Press(*window, "cmdAlign"); }
  void Undo() { Press(*window, "cmdCancel"); }
  // Each name is what the user chooses in one dialog; "" cancels it.
  void Save(std::initializer_list<const char*> names) {
    for (const char* name : names) *name ? os.ChooseToSave(UserFile(name)) : os.CancelSave();
    Press(*window, "cmdSave");
  }
  DisplayBitmap SlotPicture(int slot) {
    DisplayBitmap picture;
    EXPECT_FALSE(ReadDisplayBitmap(cv.SlotBitmap(slot), picture)) << slot;
    return picture;
  }
  bool Enabled(const char* control) { return Find<QWidget>(*window, control).isEnabled(); }
  void ExpectLocked(bool locked) {
    for (const char* item : {"mnuFileSel_0", "mnuFileSel_1", "mnuFileSel_3", "mnuToolSel_0", "mnuToolSel_1",
                             "mnuModeSel_0", "mnuModeSel_1", "mnuModeSel_3"})
      EXPECT_EQ(Item(item).isEnabled(), !locked) << item;
    EXPECT_TRUE(Item("mnuFileSel_7").isEnabled());
    EXPECT_EQ(Enabled("Toolbar1"), !locked);
    EXPECT_EQ(Enabled("cmdAlign"), !locked);
    EXPECT_EQ(Enabled("cmdCancel"), locked);
    EXPECT_EQ(Enabled("cmdSave"), locked);
  }
  // The picture on screen is that of the slot.
  void ExpectShown(int slot) {
    EXPECT_EQ(Find<QComboBox>(*window, "Combo1").currentIndex(), slot);
    EXPECT_EQ(cv.CurrentSlot, slot);
    EXPECT_EQ(ShownLevels(), Pixels(SlotPicture(slot).View()));
    EXPECT_EQ(Box("txbX") + " " + Box("txbY"),
              std::to_string(Picture().width()) + " " + std::to_string(Picture().height()));
    EXPECT_EQ(Readout(), "  ");
  }
};

// The part of a picture from (left, bottom) on; and of values, whose rows count from the top.
std::vector<int> Part(ConstGrayView picture, int left, int bottom, int width, int height) {
  std::vector<int> levels;
  for (int y = bottom; y < bottom + height; ++y)
    for (int x = left; x < left + width; ++x) levels.push_back(picture.At(x, y));
  return levels;
}
std::vector<float> Part(const FloatImage& image, int left, int bottom, int width, int height) {
  std::vector<float> values;
  for (int y = bottom + height - 1; y >= bottom; --y)
    for (int x = left; x < left + width; ++x) values.push_back(image.View().At(x, image.Height() - 1 - y));
  return values;
}

TEST_F(AlignWindow, MarksByMouseAndKeysAndKeepsTheMarkOfEachImage) {
  OpenSlope("a.fit", 20, 10);
  OpenSlope("b.fit", 30, 12);
  Hover(2, 3);
  EXPECT_EQ(Readout(), "3 4 " + std::to_string(SlotPicture(1).View().At(2, 3)));
  Click(4, 5);
  Hover(0, 0);
  EXPECT_EQ(Readout(), "5 6 " + std::to_string(SlotPicture(1).View().At(4, 5)));
  QTest::keyClick(&Picture(), Qt::Key_Up);
  QTest::keyClick(&Picture(), Qt::Key_Left);
  EXPECT_THAT(Readout(), HasSubstr("4 7 "));
  EXPECT_THAT(Status(), HasSubstr("1 of 2"));
  MarkAt(0, 25, -3);
  EXPECT_THAT(Readout(), HasSubstr("20 1 "));
  EXPECT_EQ(Picture().Point(18, 0.5), QColor(0, 255, 0));
  Show(1);
  EXPECT_THAT(Readout(), HasSubstr("4 7 "));
  EXPECT_EQ(Picture().Point(3, 6.5), QColor(0, 255, 0));
  EXPECT_EQ(Picture().Point(18, 0.5), Picture().Point(18, 0.2)) << "the cross of the other image is gone";
  Hover(9, 9);
  EXPECT_THAT(Readout(), HasSubstr("10 10 "));
  Click(0, 0, Qt::RightButton);
  EXPECT_EQ(Readout(), "  ");
  EXPECT_THAT(Status(), HasSubstr("1 of 2"));
  Align();
  ExpectLocked(false);
  EXPECT_THAT(List(), ElementsAre("a.fit", "b.fit"));
}

TEST_F(AlignWindow, CropsAllToWhatTheyShareAndUndoesIt) {
  struct Case {
    QSize a, b;
    QPoint markA, markB;
    QSize size;
    QPoint fromA, fromB;  // the lower left pixel of each crop
  };
  const Case cases[] = {
      {{100, 80}, {120, 90}, {10, 20}, {15, 22}, {100, 80}, {0, 0}, {5, 2}},
      {{40, 30}, {40, 30}, {0, 7}, {5, 7}, {35, 30}, {0, 0}, {5, 0}},
      {{9, 7}, {12, 5}, {8, 6}, {11, 4}, {9, 5}, {0, 2}, {3, 0}},
      {{9, 7}, {12, 5}, {0, 0}, {11, 4}, {1, 1}, {0, 0}, {11, 4}},
      {{101, 3}, {101, 3}, {50, 1}, {50, 1}, {101, 3}, {0, 0}, {0, 0}},
  };
  OpenBitmap("unmarked.bmp", 5, 5);
  for (const Case& c : cases) {
    OpenWords("a.fit", c.a.width(), c.a.height());
    OpenBitmap("b.bmp", c.b.width(), c.b.height());
    const std::string before = LastingState();
    const DisplayBitmap a = SlotPicture(1);
    const DisplayBitmap b = SlotPicture(2);
    MarkAt(1, c.markA.x(), c.markA.y());
    MarkAt(2, c.markB.x(), c.markB.y());
    Align();
    EXPECT_THAT(List(), ElementsAre("unmarked.bmp", "~a.fit", "~b.bmp"));
    ExpectLocked(true);
    ExpectShown(2);
    const int width = c.size.width();
    const int height = c.size.height();
    EXPECT_EQ(Picture().size(), c.size);
    EXPECT_EQ(ShownLevels(), Part(b.View(), c.fromB.x(), c.fromB.y(), width, height));
    Click(0, 0);
    EXPECT_EQ(Readout(), "  ") << "no marks before the result is saved or undone";
    Show(1);
    ExpectShown(1);
    EXPECT_EQ(ShownLevels(), Part(a.View(), c.fromA.x(), c.fromA.y(), width, height));
    Undo();
    EXPECT_EQ(LastingState(), before);
    ExpectLocked(false);
    ExpectShown(2);
    Align();
    ExpectLocked(false);
    Choose("mnuFileSel_1");
    Choose("mnuFileSel_1");
  }
}

TEST_F(AlignWindow, SavesEachCropAndKeepsTheOneWhoseSaveIsCancelled) {
  OpenWords("a.fit", 9, 8);
  OpenWords("b.fit", 10, 9, 5000);
  OpenWords("c.fit", 9, 9, 9000);
  const FloatImage a = cv.SlotData[0];
  const FloatImage b = cv.SlotData[1];
  const DisplayBitmap c = SlotPicture(2);
  MarkAt(0, 3, 3);
  MarkAt(1, 5, 4);
  MarkAt(2, 3, 2);
  Align();  // 3 to the left, 4 to the right, 2 below, 4 above
  ChooseBits(16);
  Save({"a16.fts", "", "c.bmp"});
  EXPECT_EQ(os.saveRequests.at(0).title, "Save Displayed Image As ...");
  EXPECT_EQ(offered, 2);
  EXPECT_THAT(List(), ElementsAre("a16.fts", "~b.fit", "c.bmp"));
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "1temp.bmp", "2temp.bmp"));
  ExpectLocked(false);
  ExpectShown(2);
  EXPECT_EQ(Reread("a16.fts"), Part(a, 0, 1, 8, 7));
  EXPECT_EQ(Values(cv.SlotData[0].View()), Part(a, 0, 1, 8, 7));
  EXPECT_THAT(ReadFile(UserFile("a16.fts")), HasSubstr("Original File = ~a.fit"));
  EXPECT_EQ(ShownLevels(), Part(c.View(), 0, 0, 8, 7));
  EXPECT_EQ(cv.SlotBytesPerPixel[2], 1);
  EXPECT_EQ(Values(cv.SlotData[1].View()), Part(b, 2, 2, 8, 7));
  EXPECT_EQ(cv.SlotBytesPerPixel[1], 2);
  MarkAt(0, 1, 1);
  MarkAt(1, 1, 1);
  Align();
  EXPECT_THAT(List(), ElementsAre("~a16.fts", "~b.fit", "c.bmp"));
  offered = 0;
  Save({"", "b16.fts"});
  EXPECT_EQ(offered, 2);
  EXPECT_EQ(Reread("b16.fts"), Part(b, 2, 2, 8, 7));
}

TEST_F(AlignWindow, AFailedSaveLeavesItAndTheRestToBeSavedOrUndone) {
  OpenWords("a.fit", 9, 8);
  OpenWords("b.fit", 10, 9, 5000);
  OpenBitmap("c.bmp", 9, 9);
  const std::string b = ReadFile(AppFile("1temp.bmp"));
  const std::string c = ReadFile(AppFile("2temp.bmp"));
  for (int slot = 0; slot < 3; ++slot) MarkAt(slot, 3 + slot, 3);
  Align();
  std::filesystem::create_directory(UserFile("folder.fit"));
  ChooseBits(8);
  os.Expect("DATA SAVE ERROR", HasSubstr("Error Number "));
  Save({"a8.fit", "folder.fit"});
  ExpectLocked(true);
  ExpectShown(1);
  EXPECT_THAT(List(), ElementsAre("a8.fit", "~b.fit", "~c.bmp"));
  os.Expect("SAVE ERROR", "Unrecognized file extension! File save cancelled.");
  Save({"b.txt"});
  ExpectLocked(true);
  Undo();
  ExpectLocked(false);
  EXPECT_THAT(List(), ElementsAre("a8.fit", "b.fit", "c.bmp"));
  EXPECT_EQ(ReadFile(AppFile("1temp.bmp")), b);
  EXPECT_EQ(ReadFile(AppFile("2temp.bmp")), c);
  EXPECT_EQ(cv.SlotData[0].Width(), 7);
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "1temp.bmp", "2temp.bmp"));
}

TEST_F(AlignWindow, UndoesTheImagesPassedOverBeforeASaveThatFails) {
  OpenWords("a.fit", 9, 8);
  OpenBitmap("b.bmp", 9, 9);
  const std::string before = LastingState();
  MarkAt(0, 3, 3);
  MarkAt(1, 4, 3);
  Align();
  std::filesystem::create_directory(UserFile("folder.bmp"));
  os.Expect("DATA SAVE ERROR", HasSubstr("Error Number "));
  Save({"", "folder.bmp"});
  ExpectLocked(true);
  Undo();
  EXPECT_EQ(LastingState(), before);
}

TEST_F(AlignWindow, SavesTheOthersWhereThePictureOfOneIsLost) {
  OpenBitmap("a.bmp", 9, 9);
  OpenBitmap("b.bmp", 9, 9);
  const std::string a = ReadFile(AppFile("0temp.bmp"));
  MarkAt(0, 3, 3);
  MarkAt(1, 4, 3);
  Align();
  std::filesystem::remove(AppFile("0temp.bmp"));
  os.Expect("FILE OPEN ERROR", "The file \"0temp.bmp\" is missing or damaged.");
  Save({"saved.bmp"});
  EXPECT_TRUE(Enabled("cmdCancel"));
  Undo();
  EXPECT_THAT(List(), ElementsAre("a.bmp", "saved.bmp"));
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), a);
  EXPECT_EQ(ReadFile(AppFile("1temp.bmp")), ReadFile(UserFile("saved.bmp")));
}

TEST_F(AlignWindow, CropsNothingWhereOneImageCannotBe) {
  OpenWords("a.fit", 9, 8);
  OpenWords("b.fit", 9, 8);
  OpenBitmap("c.bmp", 9, 8);
  for (int slot = 0; slot < 3; ++slot) MarkAt(slot, 3 + slot, 3);
  const std::string before = LastingState();
  for (int call = 1; call <= 6; ++call) {  // two renames for each
    SCOPED_TRACE(call);
    const FailingCalls failing(call);
    os.Expect("FILE OPEN ERROR", HasSubstr("Error Number"));
    Align();
    EXPECT_EQ(LastingState(), before);
    ExpectLocked(false);
    EXPECT_THAT(Status(), HasSubstr("3 of 3"));
  }
  std::filesystem::resize_file(AppFile("2temp.bmp"), 1100);
  const std::string damaged = LastingState();
  for (int shown : {2, 0}) {
    if (shown == 0) Show(0);
    os.Expect("FILE OPEN ERROR", "The file \"2temp.bmp\" is missing or damaged.");
    Align();
    os.VerifyScript();
    EXPECT_EQ(Picture().HasPicture(), shown == 0);
    EXPECT_EQ(LastingState(), damaged);
    EXPECT_TRUE(Enabled("cmdAlign"));
  }
}

TEST_F(AlignWindow, KeepsTheMarkInHandThroughWhatShowsNoOtherImage) {
  OpenBitmap("a.bmp", 9, 8);
  OpenWords("b.fit", 9, 8);
  Click(4, 5);
  const auto expectInHand = [&](const char* readout) {
    EXPECT_THAT(Readout(), testing::StartsWith(readout));
    EXPECT_THAT(Status(), HasSubstr("Arrow keys"));
    QTest::keyClick(&Picture(), Qt::Key_Right);
  };
  desk.dialogs[Dialog::Histogram] = [this] { cv.DisplayBits[0] ^= 0xff; };
  Choose("mnuToolSel_1");
  expectInHand("5 6 ");
  os.Expect("FILE ERROR", testing::_);
  OpenFile("short.fit", FitsImage(16, 9, 8, {}).substr(0, 3000));
  expectInHand("6 6 ");
  os.CancelOpen();
  Choose("mnuFileSel_0");
  expectInHand("7 6 ");
  EXPECT_THAT(Readout(), testing::StartsWith("8 6 "));
  EXPECT_EQ(Readout(), "8 6 " + std::to_string(SlotPicture(1).View().At(7, 5)));
}

TEST_F(AlignWindow, UndoMakesPicturesAgainWhoseHoldFilesVanished) {
  OpenWords("a.fit", 9, 8);
  OpenSlope("b.fit", 9, 8);
  OpenBitmap("c.bmp", 9, 8);
  const std::string before = LastingState();
  for (int slot = 0; slot < 3; ++slot) MarkAt(slot, 3 + slot, 3);
  Align();
  for (const char* name : {"0hold.bmp", "1hold.bmp"}) std::filesystem::remove(AppFile(name));
  Undo();
  EXPECT_EQ(LastingState(), before);
  for (int slot = 0; slot < 3; ++slot) MarkAt(slot, 3 + slot, 3);
  Align();
  const std::string crop = ReadFile(AppFile("2temp.bmp"));
  std::filesystem::remove(AppFile("2hold.bmp"));
  os.Expect("FILE OPEN ERROR", "The file \"2hold.bmp\" is missing or damaged.");
  Undo();
  EXPECT_THAT(List(), ElementsAre("a.fit", "b.fit", "~c.bmp"));
  EXPECT_EQ(ReadFile(AppFile("2temp.bmp")), crop);
  ExpectLocked(false);
  ExpectShown(2);
}

TEST_F(AlignWindow, BuildsAMosaicAndUndoesIt) {
  OpenWords("a.fit", 100, 80);
  OpenWords("b.fit", 120, 90, 7000);
  OpenWords("c.fit", 4, 4, 9000);
  const std::string before = LastingState();
  const DisplayBitmap a = SlotPicture(0);
  const DisplayBitmap b = SlotPicture(1);
  MarkAt(0, 10, 20);
  MarkAt(1, 15, 22);
  Choose(kMosaic);
  EXPECT_FALSE(Checked("mnuModeSel_0"));
  EXPECT_TRUE(Checked(kMosaic));
  Align();
  ExpectLocked(true);
  ExpectShown(3);
  EXPECT_THAT(List(), ElementsAre("a.fit", "b.fit", "c.fit", "Mosaic..."));
  EXPECT_EQ(ShownLevels(), Pixels(b.View())) << "the later image lies over the earlier one";
  EXPECT_EQ(Values(cv.SlotData[3].View()), Values(cv.SlotData[1].View()));
  Undo();
  EXPECT_EQ(LastingState(), before);
  ExpectLocked(false);
  ExpectShown(2);

  MarkAt(0, 0, 0);
  MarkAt(1, 119, 89);
  Align();
  EXPECT_EQ(Picture().size(), QSize(219, 169));
  const DisplayBitmap mosaic = SlotPicture(3);
  EXPECT_EQ(Part(mosaic.View(), 0, 0, 120, 90), Pixels(b.View()));
  EXPECT_EQ(Part(mosaic.View(), 120, 90, 99, 79), Part(a.View(), 1, 1, 99, 79));
  for (const std::vector<int>& corner :
       {Part(mosaic.View(), 0, 90, 119, 79), Part(mosaic.View(), 120, 0, 99, 89)})
    EXPECT_THAT(corner, testing::Each(0));
  Show(1);
  Save({""});
  ExpectLocked(true);
  ExpectShown(3);
  const FloatImage data = cv.SlotData[3];
  ChooseBits(16);
  Save({"mosaic.fts"});
  EXPECT_EQ(offered, 2);
  EXPECT_EQ(Reread("mosaic.fts"), Values(data.View()));
  EXPECT_EQ(Part(data, 120, 90, 99, 79), Part(cv.SlotData[0], 1, 1, 99, 79));
  EXPECT_EQ(Part(data, 0, 0, 120, 90), Values(cv.SlotData[1].View()));
  EXPECT_EQ(data.View().At(0, 0), 0);
  EXPECT_THAT(ReadFile(UserFile("mosaic.fts")), HasSubstr("Original Files: a.fit, b.fit"));
  EXPECT_THAT(List(), ElementsAre("a.fit", "b.fit", "c.fit", "mosaic.fts"));
  ExpectLocked(false);
  ExpectShown(3);
}

TEST_F(AlignWindow, AMosaicOfDifferentPrecisionsHasEightBits) {
  OpenWords("a.fit", 4, 3);
  Choose(kMosaic);
  for (const int bitpix : {8, 32, -32}) {
    OpenFile("b.fit", FitsImage(bitpix, 4, 3, std::vector<double>(12, 200)));
    MarkAt(0, 0, 0);
    MarkAt(1, 3, 2);
    Align();
    EXPECT_TRUE(cv.SlotData[2].Empty()) << bitpix;
    ChooseBits(8);
    Save({"mosaic.fit"});
    EXPECT_EQ(offered, 1) << bitpix;
    Reread("mosaic.fit");
    EXPECT_EQ(size, QSize(7, 5));
    EXPECT_EQ(cv.SlotBytesPerPixel[2], 1);
    Choose("mnuFileSel_1");
    Choose("mnuFileSel_1");
  }
}

TEST_F(AlignWindow, RefusesWhatHasNoRoom) {
  OpenFile("wide.fit", FitsImage(8, 60000, 1, std::vector<double>(60000)));
  OpenFile("tall.fit", FitsImage(8, 1, 60000, std::vector<double>(60000)));
  Choose(kMosaic);
  MarkAt(0, 0, 0);
  MarkAt(1, 0, 0);
  const std::string before = LastingState();
  os.Expect("SIZE ERROR", "The mosaic would be larger than a bitmap file can be.");
  Align();
  EXPECT_EQ(LastingState(), before);
  for (int i = 2; i < 10; ++i) OpenSlope("a" + std::to_string(i) + ".fit", 5 + i, 4);
  const std::string full = LastingState();
  os.Expect("FILE LIMIT", "Only 10 files may be open at once.");
  Align();
  ExpectLocked(false);
  Choose("mnuModeSel_0");
  for (int i = 2; i < 10; ++i) MarkAt(i, 0, 0);
  Align();
  ExpectLocked(true);
  EXPECT_EQ(Picture().size(), QSize(1, 1));
  os.Expect("FILE LIMIT", "Only 10 files may be open at once.");
  Save({});
  Undo();
  EXPECT_EQ(LastingState(), full);
}

TEST_F(AlignWindow, ClosingAnImageMovesTheMarksWithTheirImages) {
  OpenSlope("a.fit", 20, 10);
  OpenSlope("b.fit", 30, 12);
  OpenSlope("c.fit", 25, 11);
  MarkAt(0, 1, 2);
  MarkAt(2, 5, 6);
  MarkAt(1, 3, 4);
  Choose("mnuFileSel_1");
  EXPECT_THAT(List(), ElementsAre("a.fit", "c.fit"));
  EXPECT_THAT(Readout(), HasSubstr("6 7 "));
  Show(0);
  EXPECT_THAT(Readout(), HasSubstr("2 3 "));
  Choose("mnuFileSel_1");
  EXPECT_THAT(Readout(), HasSubstr("6 7 "));
  EXPECT_THAT(Status(), HasSubstr("1 of 1"));
  Choose("mnuFileSel_1");
  EXPECT_EQ(Box("txbX") + Readout() + Status(), "  ");
  EXPECT_FALSE(Item("mnuFileSel_1").isEnabled());
  EXPECT_FALSE(Item("mnuToolSel_0").isEnabled());
  OpenSlope("d.fit", 3, 3);
  EXPECT_THAT(Status(), HasSubstr("0 of 1"));
}

TEST_F(AlignWindow, AutoAdjustMovesAClickToTheStar) {
  Choose(kAutoAdjust);
  EXPECT_FALSE(Checked(kAutoAdjust)) << "there is nothing to mark";
  std::vector<double> levels(30 * 20);
  levels[8 * 30 + 12] = 200;  // at (12, 11)
  OpenLevels("a.fit", 30, 20, levels);
  bool apply = false;
  desk.dialogs[Dialog::AutoAdjust] = [&] { cv.AutoAdjustOn = apply; };
  Choose(kAutoAdjust);
  EXPECT_FALSE(Checked(kAutoAdjust));
  Click(10, 12);
  EXPECT_EQ(Readout(), "11 13 0");
  apply = true;
  Choose(kAutoAdjust);
  EXPECT_TRUE(Checked(kAutoAdjust));
  Click(10, 12);
  EXPECT_EQ(Readout(), "13 12 200");
  QTest::keyClick(&Picture(), Qt::Key_Down);
  EXPECT_EQ(Readout(), "13 11 0");
  Choose(kAutoAdjust);
  EXPECT_FALSE(cv.AutoAdjustOn);
  EXPECT_EQ(desk.shown.size(), 2u);
}

TEST_F(AlignWindow, AsksBeforeUnsavedImagesAreLost) {
  OpenWords("a.fit", 9, 8);
  OpenWords("b.fit", 9, 8);
  MarkAt(0, 3, 3);
  MarkAt(1, 4, 3);
  Align();
  const std::string text =
      "The aligned images have not been saved and will be lost by exiting!\nDo you still want to quit?";
  os.Expect("UNSAVED FILES", text, Answer::No);
  Choose("mnuFileSel_7");
  EXPECT_TRUE(window->isVisible());
  os.Expect("UNSAVED FILES", text, Answer::Yes);
  Choose("mnuFileSel_7");
  EXPECT_FALSE(window->isVisible());
  EXPECT_THAT(WorkingFiles(), ElementsAre());
}

}  // namespace
}  // namespace corvane
