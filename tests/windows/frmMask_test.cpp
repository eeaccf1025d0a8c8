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
  std::string SliderLabels() {
    return LabelText("lblLow") + ' ' + LabelText("lblHigh") + ' ' + LabelText("lblClr");
  }
  bool MapHas(int x, int y) { return Picture("picStretch").Point(x, y) == QColor(Qt::white); }
};

TEST_F(MaskWindow, DoesNothingAtItsDefaults) {
  OpenEveryLevel();
  EXPECT_EQ(SliderLabels(), "0 255 0");
  EXPECT_TRUE(MapHas(100, 100) && !MapHas(255, 128)) << "opens with the identity";
  Slider("sldClr").setValue(90);
  Press(*window, "cmdApply");
  EXPECT_TRUE(Find<QWidget>(*window, "cmdApply").isEnabled());
  EXPECT_FALSE(cv.ImageChanged);
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
    for (const int level : c.masked) EXPECT_EQ(LevelNow(level), c.color) << level;
    for (const int level : c.kept) EXPECT_EQ(LevelNow(level), level);
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
  EXPECT_FALSE(HasMarker("picCBar", 239));
  EXPECT_TRUE(MapHas(50, 255) && MapHas(108, 108) && MapHas(200, 255));
  Slider("sldClr").setValue(30);
  EXPECT_TRUE(MapHas(50, 30) && !MapHas(50, 255));
  Slider("sldHigh").setValue(140);
  EXPECT_TRUE(MapHas(130, 130));
}

TEST_F(MaskWindow, SavesEightBitsOnlyUnderTheNewName) {
  OpenHundreds();
  Set(60, 200, 128);
  Press(*window, "cmdApply");
  SaveTo("masked.fts", 16);
  EXPECT_THAT(ReadFile(UserFile("masked.fts")), HasSubstr("COMMENT = 'Original File = masked.fts'"));
  // Levels 0, 26, 51, 76 ... 255 of the values 0, 100, 200, 300 ... 1000.
  const std::vector<float> values = ReadValues("masked.fts");
  EXPECT_THAT(std::vector<float>(values.begin(), values.begin() + 11),
              ElementsAre(128, 128, 128, 76, 102, 128, 153, 178, 128, 128, 128));
  EXPECT_EQ(SliderLabels(), "0 255 0");
  EXPECT_TRUE(MapHas(100, 100) && !MapHas(255, 128)) << "the identity again";
}

}  // namespace
}  // namespace corvane
