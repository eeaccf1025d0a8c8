// Working files that vanish or are damaged while the program runs: what can be made again is made again,
// nothing that is on screen is lost, and one message says what happened.

#include <cstdlib>

#include "core/working_files.h"
#include "tests/windows/preview_fixture.h"
#include "tests/windows/viewer_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;

constexpr char kNegative[] = "mnuToolSel_6";
constexpr char kRotate90[] = "mnuToolSel_13";
constexpr char kScaling[] = "mnuToolSel_18";

class LostPictures : public ViewerFixture {
 protected:
  LostPictures() { OpenFile("a.fit", Words(90)); }
  static std::string Words(int step) {
    std::vector<double> values;
    for (int i = 0; i < 35; ++i) values.push_back(i * step);
    return FitsImage(16, 7, 5, values);
  }
  void Lose(const char* name) { std::filesystem::remove(AppFile(name)); }
  void Damage(const char* name) { std::filesystem::resize_file(AppFile(name), 500); }
};

TEST_F(LostPictures, AViewThatCannotBeKeptStaysOnScreen) {
  Choose(kNegative);
  Damage(kDummyBitmap);
  os.Expect("FILE OPEN ERROR", "The file \"dummy.bmp\" is missing or damaged.");
  Choose(kScaling);
  EXPECT_TRUE(desk.replacedBy.empty());
  EXPECT_TRUE(Checked(kNegative));
  EXPECT_EQ(cv.SlotName[0], "a.fit");
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 2);
  Choose(kNegative);
  Choose(kScaling);
  EXPECT_THAT(desk.replacedBy, ElementsAre(Window::Scale));
}

TEST_F(LostPictures, TheSlotsPictureIsMadeAgainForViewsAndSaves) {
  const std::vector<int> levels = ShownLevels();
  for (const char* view : {"mnuToolSel_4", "mnuToolSel_5", kNegative, kRotate90}) {
    Lose("0temp.bmp");
    Choose(view);
    EXPECT_TRUE(Checked(view)) << view;
    ExpectPictureIsWhole();
    Choose(view);
    EXPECT_EQ(ShownLevels(), levels);
  }
  Lose("0temp.bmp");
  SaveTo("saved.bmp");
  EXPECT_EQ(ShownLevels(), levels);
  EXPECT_TRUE(std::filesystem::exists(UserFile("saved.bmp")));
}

TEST_F(LostPictures, APictureThatCannotBeMadeAgainIsReportedOnce) {
  Choose(kNegative);
  cv.SlotRendering[0] = Rendering::None;
  Lose("0temp.bmp");
  os.Expect("FILE OPEN ERROR", "The file \"0temp.bmp\" is missing or damaged.");
  Choose(kRotate90);
  EXPECT_FALSE(Checked(kRotate90));
}

TEST_F(LostPictures, ASavedFileIsTakenWithoutItsView) {
  for (const int bits : {8, 16}) {
    Choose(kNegative);
    const std::vector<int> levels = ShownLevels();
    bits == 8 ? Lose(kDummyBitmap) : Damage(kDummyBitmap);
    ChooseBits(bits);
    SaveTo("saved.fit");
    EXPECT_EQ(cv.SlotName[0], "saved.fit");
    EXPECT_EQ(ShownLevels(), levels);
    ExpectPictureIsWhole();
  }
}

TEST_F(LostPictures, APictureStretchedByASaveComesBackStretched) {
  OpenFile("b.fit", Words(2));
  ChooseBits(16);
  SaveTo("saved.fit");
  const std::vector<int> levels = ShownLevels();
  EXPECT_EQ(*std::max_element(levels.begin(), levels.end()), 255);
  Lose("1temp.bmp");
  Choose(kNegative);
  Choose(kNegative);
  EXPECT_EQ(ShownLevels(), levels);
  // The mark moves and goes with its slot.
  cv.CurrentSlot = 0;
  Find<QComboBox>(*window, "Combo1").setCurrentIndex(0);
  Choose("mnuFileSel_2");
  EXPECT_EQ(cv.SlotRendering[0], Rendering::FullRange);
  EXPECT_EQ(cv.SlotRendering[1], Rendering::None);
}

TEST_F(LostPictures, AMagnifiedImageIsSavedByTheMethodThatIsShown) {
  Choose("mnuToolSel_10");
  const std::vector<int> shown = ShownLevels();
  cv.MagMode = 0;
  ChooseBits(16);
  SaveTo("saved.fit");
  const std::vector<int> saved = ShownLevels();
  for (std::size_t i = 0; i < shown.size(); ++i) EXPECT_LE(std::abs(shown[i] - saved[i]), 1) << i;
}

TEST_F(LostPictures, AFileOfAnUnknownKindLeavesTheViewAlone) {
  Choose(kNegative);
  os.Expect("UNRECOGNISED FILE EXTENSION ", testing::_);
  OpenFile("notes.txt", "nothing");
  EXPECT_TRUE(Checked(kNegative));
}

class LostMask : public PreviewFixture {
 protected:
  LostMask() : PreviewFixture(Window::Mask) {}
};

TEST_F(LostMask, ASaveIsTakenWithoutItsResult) {
  OpenEveryLevel();
  Slider("sldLow").setValue(50);
  Press(*window, "cmdApply");
  std::filesystem::remove(AppFile("temp.bmp"));
  SaveTo("masked.fit");
  EXPECT_EQ(cv.SlotName[0], "masked.fit");
  EXPECT_EQ(LevelNow(40), 0);
  EXPECT_EQ(LevelNow(60), 60);
}

}  // namespace
}  // namespace corvane
