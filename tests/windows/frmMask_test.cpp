#include <QPushButton>

#include "tests/windows/preview_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class MaskWindow : public PreviewFixture {
 protected:
  MaskWindow() : PreviewFixture(Window::Mask) {}

  void Set(int low, int high, int color) {
    Slider("sldLow").setValue(low);
    Slider("sldHigh").setValue(high);
    Slider("sldClr").setValue(color);
  }
  std::string State() {
    return Enabled({"cmdApply", "cmdCancel", "cmdRedo", "cmdSave", "sldLow", "sldHigh", "sldClr",
                    "mnuOptSel_0", "mnuOptSel_1"});
  }
  std::string SliderLabels() {
    return LabelText("lblLow") + ' ' + LabelText("lblHigh") + ' ' + LabelText("lblClr");
  }
  const std::string kUnmasked = "cmdApply sldLow sldHigh sldClr mnuOptSel_0 mnuOptSel_1 ";
  const std::string kUndone = "cmdApply cmdRedo sldLow sldHigh sldClr mnuOptSel_0 mnuOptSel_1 ";
  const std::string kMasked = "cmdCancel cmdSave ";
};

TEST_F(MaskWindow, DoesNothingAtItsDefaults) {
  OpenEveryLevel();
  EXPECT_EQ(Title(), "  Corvane Image Mask:  levels.fit");
  EXPECT_EQ(SliderLabels(), "0 255 0");
  EXPECT_EQ(Picture("picStretch").Point(255, 128), QColor(Qt::black)) << "opens with the identity";
  Slider("sldClr").setValue(90);
  const std::vector<int> picture = ShownLevels();
  Press(*window, "cmdApply");
  EXPECT_EQ(State(), kUnmasked);
  EXPECT_FALSE(cv.ImageChanged);
  EXPECT_EQ(ShownLevels(), picture);
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "hist1.bmp"));
}

TEST_F(MaskWindow, ReplacesTheLevelsOutsideItsBounds) {
  OpenEveryLevel();
  const struct {
    int low, high, color;
    std::vector<int> masked, kept;
  } cases[] = {
      {1, 254, 128, {0, 1, 254, 255}, {2, 100, 253}},
      {0, 200, 7, {0, 200, 230, 255}, {1, 100, 199}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.low);
    Set(c.low, c.high, c.color);
    Press(*window, "cmdApply");
    EXPECT_EQ(State(), kMasked);
    for (const int level : c.masked) EXPECT_EQ(LevelNow(level), c.color) << level;
    for (const int level : c.kept) EXPECT_EQ(LevelNow(level), level);
    EXPECT_EQ(ShownLevels(), FileLevels("temp.bmp"));
    Press(*window, "cmdCancel");
  }
}

TEST_F(MaskWindow, KeepsItsBoundsApartAndTheColorFree) {
  OpenEveryLevel();
  Slider("sldLow").setValue(250);
  EXPECT_EQ(SliderLabels(), "239 255 0");
  Set(100, 90, 255);
  EXPECT_EQ(SliderLabels(), "100 116 255");
  for (const int level : {100, 116}) {
    EXPECT_TRUE(HasMarker("picHist", level)) << level;
    EXPECT_TRUE(HasMarker("picCBar", level)) << level;
  }
  EXPECT_EQ(Picture("picStretch").Point(50, 255), QColor(Qt::white));
  EXPECT_EQ(Picture("picStretch").Point(108, 108), QColor(Qt::white));
  EXPECT_EQ(Picture("picStretch").Point(200, 255), QColor(Qt::white));
}

TEST_F(MaskWindow, DisablesRedoWhenASliderMoves) {
  OpenEveryLevel();
  for (const char* slider : {"sldLow", "sldHigh", "sldClr"}) {
    Set(20, 220, 50);
    Press(*window, "cmdApply");
    Press(*window, "cmdCancel");
    EXPECT_EQ(State(), kUndone);
    Slider(slider).setValue(Slider(slider).value() + 1);
    EXPECT_EQ(State(), kUnmasked) << slider;
  }
}

TEST_F(MaskWindow, SavesEightBitsOnlyUnderTheNewName) {
  OpenHundreds();
  Set(60, 200, 128);
  Press(*window, "cmdApply");
  const std::vector<int> masked = FileLevels("temp.bmp");
  SaveTo("masked.fts", 16);
  EXPECT_EQ(offered, 1);
  EXPECT_THAT(ReadFile(UserFile("masked.fts")), HasSubstr("COMMENT = 'Original File = masked.fts'"));
  // Levels 0, 26, 51, 76 ... 255 of the values 0, 100, 200, 300 ... 1000.
  const std::vector<float> values = ReadValues("masked.fts");
  EXPECT_THAT(std::vector<float>(values.begin(), values.begin() + 11),
              ElementsAre(128, 128, 128, 76, 102, 128, 153, 178, 128, 128, 128));
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 1);
  EXPECT_EQ(cv.SlotName[0], "masked.fts");
  EXPECT_EQ(FileLevels("0temp.bmp"), masked);
  EXPECT_EQ(ShownLevels(), masked);
  EXPECT_EQ(State(), kUnmasked);
  EXPECT_EQ(SliderLabels(), "0 255 0");
  EXPECT_EQ(Title(), "  Corvane Image Mask:  masked.fts");
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "hist1.bmp"));
}

TEST_F(MaskWindow, KeepsNameAndDataWhenASaveFails) {
  OpenHundreds();
  Set(60, 200, 128);
  Press(*window, "cmdApply");
  os.Expect("DATA SAVE ERROR", "Error Number 2");
  SaveTo("no such folder/masked.fts");
  EXPECT_EQ(cv.SlotName[0], "hundreds.fit");
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 2);
  EXPECT_EQ(State(), kMasked);
  Press(*window, "cmdCancel");
  SaveTo("unmasked.fts", 16);
  EXPECT_EQ(offered, 2) << "the unchanged image still has its data";
  EXPECT_EQ(ReadValues("unmasked.fts")[10], 1000.0f);
  EXPECT_EQ(Title(), "  Corvane Image Mask:  unmasked.fts");
  EXPECT_EQ(SliderLabels(), "60 200 128") << "nothing was applied, so nothing is reset";
}

}  // namespace
}  // namespace corvane
