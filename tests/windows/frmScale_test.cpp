#include "tests/windows/preview_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class ScaleWindow : public PreviewFixture {
 protected:
  ScaleWindow() : PreviewFixture(Window::Scale) {}

  QComboBox& Curve() { return Find<QComboBox>(*window, "Combo1"); }
  void Set(int mode, int low, int high) {
    Curve().setCurrentIndex(mode);
    Slider("sldLow").setValue(low);
    Slider("sldHigh").setValue(high);
  }
  std::string Clips() { return LabelText("lblLVal") + ' ' + LabelText("lblHVal"); }
  void AnswerExponent(float exponent) {
    desk.dialogs[Dialog::Exponent] = [this, exponent] { cv.ScaleExponent = exponent; };
  }
  bool MapHas(int x, int y) { return Picture("picStretch").Point(x, y) == QColor(Qt::white); }
  bool RedoIsEnabled() { return Find<QWidget>(*window, "cmdRedo").isEnabled(); }
};

TEST_F(ScaleWindow, OpensOnTheIdentity) {
  OpenEveryLevel();
  EXPECT_EQ(Clips(), "0 255");
  for (const int level : {0, 255}) {
    EXPECT_TRUE(HasMarker("picCBar", level));
    EXPECT_FALSE(HasMarker("picHist", level));
  }
  for (const int level : {0, 128, 255}) EXPECT_TRUE(MapHas(level, level)) << level;
  EXPECT_FALSE(MapHas(128, 130));
  const QRect map = Picture("picStretch").geometry();
  const QImage around = Picture("picStretch").parentWidget()->grab().toImage();
  EXPECT_EQ(InkRuns(around, {0, map.top(), map.left(), map.height()}, true).size(), 5u) << "FINAL";
  for (const int y : {0, map.bottom() + 1})
    EXPECT_FALSE(InkRuns(around, {0, y, around.width(), 18}).empty()) << y;
  std::vector<std::string> captions;
  for (int i = 0; i < Curve().count(); ++i) captions.push_back(Curve().itemText(i).toStdString());
  EXPECT_THAT(captions, ElementsAre("Linear Scale", "Logarithmic Scale", "Scale Exponent = 0.33",
                                    "Scale Exponent = 0.50", "Scale Exponent = 2.00", "Scale Exponent = 3.00",
                                    "Select Exponent...", "Brightness and Contrast"));
}

TEST_F(ScaleWindow, KeepsItsClipsSixteenLevelsApart) {
  OpenEveryLevel();
  Set(0, 100, 110);
  EXPECT_EQ(Clips(), "100 116");
  Slider("sldLow").setValue(101);
  Slider("sldHigh").setValue(115);
  EXPECT_EQ(Clips(), "100 116") << "by single steps too";
  Slider("sldLow").setValue(250);
  EXPECT_EQ(Clips(), "100 116");
  Slider("sldHigh").setValue(130);
  QTest::keyClick(&Slider("sldLow"), Qt::Key_Right);
  EXPECT_EQ(Clips(), "101 130");
  for (const char* picture : {"picCBar", "picHist"}) {
    for (const int level : {101, 130}) EXPECT_TRUE(HasMarker(picture, level)) << picture << level;
    for (const int level : {100, 116, 250}) EXPECT_FALSE(HasMarker(picture, level)) << picture << level;
  }
  EXPECT_TRUE(MapHas(101, 0) && MapHas(130, 255));
}

TEST_F(ScaleWindow, CallsTheLowLevelBrightnessWithThatCurveAlone) {
  OpenEveryLevel();
  Curve().setCurrentIndex(7);
  EXPECT_EQ(LabelText("lblL"), "Brightness");
  EXPECT_EQ(Slider("sldLow").accessibleName(), "Brightness");
  AnswerExponent(1.0f);  // none: back to the linear scale
  Curve().setCurrentIndex(6);
  EXPECT_EQ(Curve().currentIndex(), 0);
  EXPECT_EQ(LabelText("lblL"), "Low Clip");
  EXPECT_EQ(Picture("picStretch").accessibleDescription(), "Linear Scale from level 0 to level 255");
}

TEST_F(ScaleWindow, AsksForTheExponentAgainAfterUndo) {
  OpenEveryLevel();
  AnswerExponent(2.0f);
  Curve().setCurrentIndex(6);
  EXPECT_EQ(Curve().currentIndex(), 6);
  EXPECT_TRUE(MapHas(128, 64));
  Press(*window, "cmdApply");
  EXPECT_EQ(LevelNow(128), 64);
  Press(*window, "cmdCancel");
  EXPECT_EQ(desk.shown.size(), 2u);
  EXPECT_TRUE(RedoIsEnabled());

  Press(*window, "cmdRedo");
  AnswerExponent(0.5f);
  Press(*window, "cmdCancel");
  EXPECT_FALSE(RedoIsEnabled()) << "the result is that of another exponent";
  EXPECT_TRUE(MapHas(64, 127) && !MapHas(128, 64));
  Press(*window, "cmdApply");
  EXPECT_EQ(LevelNow(64), 128);

  AnswerExponent(1.0f);
  Press(*window, "cmdCancel");
  EXPECT_FALSE(RedoIsEnabled());
  EXPECT_EQ(Curve().currentIndex(), 0);
}

TEST_F(ScaleWindow, SavesLevelsThroughTheCurveAndStartsAfresh) {
  for (const char* name : {"scaled.fts", "scaled.bmp"}) {
    cv.ImageCount = 0;
    OpenEveryLevel();
    Set(0, 0, 100);
    Press(*window, "cmdApply");
    EXPECT_EQ(LevelNow(40), 102);
    EXPECT_EQ(LevelNow(101), 255);
    SaveTo(name);
    EXPECT_EQ(LevelNow(40), 102);
    EXPECT_EQ(Clips(), "0 255");
    EXPECT_TRUE(MapHas(128, 128) && MapHas(255, 255));
    EXPECT_TRUE(HasMarker("picCBar", 255) && !HasMarker("picCBar", 100));
    Slider("sldLow").setValue(20);
    Press(*window, "cmdApply");
    EXPECT_EQ(LevelNow(40), 89) << "102 is 82 above 20, of 235";
  }
}

// L16 = 200 and H16 = 800: the square of a value's height above 200, times 600 / 600^2, at most 600.
TEST_F(ScaleWindow, SavesTheDataThroughTheCurveAtSixteenBits) {
  OpenHundreds();
  Set(4, 51, 204);
  Press(*window, "cmdApply");
  SaveTo("squared.fts", 16);
  const std::vector<float> values = ReadValues("squared.fts");
  ASSERT_EQ(values.size(), 110u);
  EXPECT_THAT(std::vector<float>(values.begin(), values.begin() + 11),
              ElementsAre(0, 0, 0, 17, 67, 150, 267, 417, 600, 600, 600));
  // The picture is that of the new data: 150 of 600 is level 64.
  EXPECT_EQ(cv.Display().At(5, 0), 64);
  EXPECT_EQ(Clips(), "0 255");
}

TEST_F(ScaleWindow, ShowsALargePictureReduced) {
  const struct {
    int width, height;
    QSize size;
    int darkest, brightest;
  } cases[] = {
      {700, 350, {320, 160}, 67, 133},  // the mean of three columns: none is left out
      {9000, 2, {320, 1}, 97, 103},
      {2, 9000, {1, 240}, 100, 100},
      {320, 240, {320, 240}, 0, 200},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.width);
    std::vector<double> stripes;
    for (int i = 0; i < c.width * c.height; ++i) stripes.push_back(i % 2 == 0 ? 0 : 200);
    cv.ImageCount = 0;
    OpenWith("stripes.fit", FitsImage(8, c.width, c.height, stripes));
    EXPECT_EQ(Preview().size(), c.size);
    const std::vector<int> shown = ShownLevels();
    EXPECT_EQ(*std::min_element(shown.begin(), shown.end()), c.darkest);
    EXPECT_EQ(*std::max_element(shown.begin(), shown.end()), c.brightest);
  }
}

}  // namespace
}  // namespace corvane
