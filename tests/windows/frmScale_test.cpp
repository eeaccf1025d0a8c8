#include <QComboBox>
#include <QPushButton>
#include <QTest>

#include "app/ApplicationDesk.h"
#include "tests/windows/preview_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ScaleWindow : public PreviewFixture {
 protected:
  ScaleWindow() : PreviewFixture(Window::Scale) {}

  QComboBox& Curve() { return Find<QComboBox>(*window, "Combo1"); }
  void Set(int mode, int low, int high) {
    Curve().setCurrentIndex(mode);
    Slider("sldLow").setValue(low);
    Slider("sldHigh").setValue(high);
  }
  // A result that differs from the picture.
  void ApplyLogarithm() {
    Curve().setCurrentIndex(1);
    Press(*window, "cmdApply");
  }
  void AnswerExponent(float exponent) {
    desk.dialogs[Dialog::Exponent] = [this, exponent] { cv.ScaleExponent = exponent; };
  }
  // A save leaves an unscaled window on the new file.
  void ExpectSavedAs(const std::string& name) {
    EXPECT_EQ(State(), kUnscaled);
    EXPECT_FALSE(cv.ImageChanged);
    EXPECT_EQ(Title(), "  Corvane Luminance Scaling:  " + name);
    EXPECT_EQ(cv.CurrentName, name);
    EXPECT_EQ(ShownLevels(), Pixels(cv.Display()));
    EXPECT_EQ(FileLevels("0temp.bmp"), Pixels(cv.Display()));
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "hist1.bmp"));
    EXPECT_EQ(LabelText("lblLVal") + ' ' + LabelText("lblHVal"), "0 255");
  }
  std::string State() {
    return Enabled({"cmdApply", "cmdCancel", "cmdRedo", "cmdSave", "Combo1", "sldLow", "sldHigh",
                    "mnuOptSel_0", "mnuOptSel_1"});
  }
  const std::string kUnscaled = "cmdApply Combo1 sldLow sldHigh mnuOptSel_0 mnuOptSel_1 ";
  const std::string kUndone = "cmdApply cmdRedo Combo1 sldLow sldHigh mnuOptSel_0 mnuOptSel_1 ";
  const std::string kScaled = "cmdCancel cmdSave ";
  const QColor kBar = QColor(232, 232, 232);
};

TEST_F(ScaleWindow, OpensUnscaled) {
  cv.ImageChanged = true;
  OpenEveryLevel();
  EXPECT_EQ(Title(), "  Corvane Luminance Scaling:  levels.fit");
  EXPECT_EQ(State(), kUnscaled);
  EXPECT_FALSE(cv.ImageChanged);
  EXPECT_EQ(LabelText("lblLVal") + ' ' + LabelText("lblHVal"), "0 255");
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "hist1.bmp"));
  EXPECT_EQ(ShownLevels(), FileLevels("0temp.bmp"));
  EXPECT_TRUE(HasMarker("picCBar", 0));
  EXPECT_TRUE(HasMarker("picCBar", 255));
  EXPECT_FALSE(HasMarker("picHist", 0));
  for (const int level : {0, 128, 255})
    EXPECT_EQ(Picture("picStretch").Point(level, level), QColor(Qt::white)) << level;
  EXPECT_EQ(Picture("picStretch").Point(128, 130), QColor(Qt::black));
  std::vector<std::string> captions;
  for (int i = 0; i < Curve().count(); ++i) captions.push_back(Curve().itemText(i).toStdString());
  EXPECT_THAT(captions, ElementsAre("Linear Scale", "Logarithmic Scale", "Scale Exponent = 0.33",
                                    "Scale Exponent = 0.50", "Scale Exponent = 2.00", "Scale Exponent = 3.00",
                                    "Select Exponent...", "Brightness and Contrast"));
}

TEST_F(ScaleWindow, AppliesUndoesAndRedoes) {
  OpenEveryLevel();
  const std::vector<int> before = FileLevels("0temp.bmp");
  // Levels above 100 become 255, which shows in the histogram.
  Set(0, 0, 100);
  Press(*window, "cmdApply");
  EXPECT_EQ(LevelNow(40), 102);
  EXPECT_EQ(FileLevels("0temp.bmp"), before);
  const std::vector<int> scaled = FileLevels("temp.bmp");
  const QString histogram = Picture("picHist").accessibleDescription();
  const auto expectShown = [&](bool isScaled) {
    EXPECT_EQ(State(), isScaled ? kScaled : kUndone);
    EXPECT_EQ(cv.ImageChanged, isScaled);
    EXPECT_EQ(ShownLevels(), isScaled ? scaled : before);
    EXPECT_EQ(Pixels(cv.Display()), isScaled ? scaled : before);
    EXPECT_EQ(Picture("picHist").Point(255, 100) == kBar, isScaled);
    EXPECT_EQ(Picture("picHist").accessibleDescription() == histogram, isScaled);
    EXPECT_EQ(HasMarker("picHist", 100), !isScaled) << "the result has no clips";
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "hist1.bmp", "hist2.bmp", "temp.bmp"));
    EXPECT_FALSE(os.busy);
  };
  expectShown(true);
  // The last round starts from the picture, not from the first result.
  for (const char* again : {"cmdRedo", "cmdApply"}) {
    Press(*window, "cmdCancel");
    expectShown(false);
    Press(*window, again);
    expectShown(true);
  }
}

TEST_F(ScaleWindow, KeepsItsSlidersSixteenLevelsApart) {
  OpenEveryLevel();
  Set(0, 100, 110);
  EXPECT_EQ(LabelText("lblLVal") + ' ' + LabelText("lblHVal"), "100 116");
  for (const char* picture : {"picCBar", "picHist"}) {
    EXPECT_TRUE(HasMarker(picture, 100)) << picture;
    EXPECT_TRUE(HasMarker(picture, 116)) << picture;
    EXPECT_FALSE(HasMarker(picture, 239)) << picture;
  }
  EXPECT_EQ(Picture("picStretch").Point(100, 0), QColor(Qt::white));
  EXPECT_EQ(Picture("picStretch").Point(116, 255), QColor(Qt::white));
}

TEST_F(ScaleWindow, DisablesRedoWhenASliderOrTheCurveChanges) {
  OpenEveryLevel();
  for (const bool slider : {true, false}) {
    Curve().setCurrentIndex(1);
    Press(*window, "cmdApply");
    Press(*window, "cmdCancel");
    EXPECT_EQ(State(), kUndone);
    if (slider)
      Slider("sldHigh").setValue(254);
    else
      Curve().setCurrentIndex(3);
    EXPECT_EQ(State(), kUnscaled);
  }
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
  Press(*window, "cmdApply");
  EXPECT_EQ(LevelNow(128), 64);
  Press(*window, "cmdCancel");
  EXPECT_EQ(desk.shown.size(), 2u);
  EXPECT_EQ(State(), kUndone);

  Press(*window, "cmdRedo");
  AnswerExponent(0.5f);
  Press(*window, "cmdCancel");
  EXPECT_EQ(State(), kUnscaled) << "the result is that of another exponent";
  Press(*window, "cmdApply");
  EXPECT_EQ(LevelNow(64), 128);

  AnswerExponent(1.0f);
  Press(*window, "cmdCancel");
  EXPECT_EQ(State(), kUnscaled);
  EXPECT_EQ(Curve().currentIndex(), 0);
}

TEST_F(ScaleWindow, SavesTheResultAsAnEightBitFile) {
  OpenEveryLevel();
  Set(0, 0, 100);
  Press(*window, "cmdApply");
  const std::vector<int> scaled = FileLevels("temp.bmp");
  SaveTo("scaled.fts");
  EXPECT_EQ(offered, 1);
  ExpectSavedAs("scaled.fts");
  EXPECT_EQ(ShownLevels(), scaled);
  EXPECT_EQ(ReadValues("scaled.fts"), Values(cv.SlotData[0].View()));
  EXPECT_EQ(ReadValues("scaled.fts")[40], 102.0f);
  EXPECT_EQ(Picture("picHist").Point(255, 100), kBar);

  Slider("sldLow").setValue(20);
  Press(*window, "cmdApply");
  EXPECT_EQ(cv.Display().At(40 % kWidth, kHeight - 1 - 40 / kWidth), 89) << "102 is 82 above 20, of 235";
  Press(*window, "cmdCancel");
  EXPECT_EQ(ShownLevels(), scaled);
}

// L16 = 200 and H16 = 800: the square of a value's height above 200, times 600 / 600^2, at most 600.
TEST_F(ScaleWindow, SavesTheDataThroughTheCurveAtSixteenBits) {
  OpenHundreds();
  Set(4, 51, 204);
  Press(*window, "cmdApply");
  SaveTo("squared.fts", 16);
  EXPECT_EQ(offered, 2);
  const std::vector<float> values = ReadValues("squared.fts");
  ASSERT_EQ(values.size(), 110u);
  EXPECT_THAT(std::vector<float>(values.begin(), values.begin() + 11),
              ElementsAre(0, 0, 0, 17, 67, 150, 267, 417, 600, 600, 600));
  EXPECT_EQ(values, Values(cv.SlotData[0].View()));
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 2);
  ExpectSavedAs("squared.fts");
  // The picture is that of the new data: 150 of 600 is level 64.
  EXPECT_EQ(cv.Display().At(5, 0), 64);
}

TEST_F(ScaleWindow, SavesABitmapOfWhatItShows) {
  OpenHundreds();
  const std::string plain = ReadFile(AppFile("0temp.bmp"));
  SaveTo("plain.bmp");
  EXPECT_EQ(ReadFile(UserFile("plain.bmp")), plain);
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 1);
  ApplyLogarithm();
  const std::string scaled = ReadFile(AppFile("temp.bmp"));
  SaveTo("scaled.bmp");
  EXPECT_EQ(ReadFile(UserFile("scaled.bmp")), scaled);
  EXPECT_NE(scaled, plain);
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), scaled);
  ExpectSavedAs("scaled.bmp");
}

TEST_F(ScaleWindow, KeepsItsStateWhenNothingIsSaved) {
  OpenHundreds();
  ApplyLogarithm();
  const std::vector<int> scaled = Pixels(cv.Display());
  const auto expectUnsaved = [&] {
    EXPECT_EQ(State(), kScaled);
    EXPECT_TRUE(cv.ImageChanged);
    EXPECT_EQ(Title(), "  Corvane Luminance Scaling:  hundreds.fit");
    EXPECT_EQ(cv.SlotBytesPerPixel[0], 2);
    EXPECT_EQ(Pixels(cv.Display()), scaled);
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "hist1.bmp", "hist2.bmp", "temp.bmp"));
  };
  os.CancelSave();
  Press(*window, "cmdSave");
  expectUnsaved();
  os.FailSave(13);
  os.Expect("DATA SAVE ERROR", "Error Number 13");
  Press(*window, "cmdSave");
  expectUnsaved();
  os.Expect("SAVE ERROR", "Unrecognized file extension! File save cancelled.");
  SaveTo("scaled.tif", 16);
  expectUnsaved();
  for (const auto& [name, bits] : {std::pair("scaled.fts", 8), {"scaled.fts", 16}, {"scaled.bmp", 8}}) {
    os.Expect("DATA SAVE ERROR", "Error Number 2");
    SaveTo(std::string("no such folder/") + name, bits);
    expectUnsaved();
  }
  ASSERT_EQ(os.saveRequests.size(), 6u);
  EXPECT_EQ(os.saveRequests[0].title, "Save Image As...");
  SaveTo("scaled.fts", 16);
  EXPECT_EQ(ReadValues("scaled.fts").size(), 110u);
}

TEST_F(ScaleWindow, HandsItsResultOverOnceMarked) {
  OpenHundreds();
  for (int round = 0; round < 2; ++round) {
    ApplyLogarithm();
    const std::vector<int> scaled = FileLevels("temp.bmp");
    Choose(round == 0 ? "mnuOptSel_3" : "mnuFileSel_2");
    EXPECT_EQ(cv.SlotName[0], "~hundreds.fit");
    EXPECT_EQ(cv.CurrentName, "~hundreds.fit");
    EXPECT_EQ(cv.SlotBytesPerPixel[0], 1);
    EXPECT_EQ(FileLevels("0temp.bmp"), scaled);
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
    Start();
    EXPECT_EQ(Title(), "  Corvane Luminance Scaling:  ~hundreds.fit");
  }
  EXPECT_THAT(desk.replacedBy, ElementsAre(Window::Mask, Window::Examine));
  SaveTo("kept.fts", 8);
  EXPECT_EQ(offered, 1) << "the data are not those of the picture any more";
}

TEST_F(ScaleWindow, LeavesNothingBehindWhenNothingIsChanged) {
  OpenHundreds();
  const std::string picture = ReadFile(AppFile("0temp.bmp"));
  ApplyLogarithm();
  Press(*window, "cmdCancel");
  Choose("mnuFileSel_2");
  EXPECT_EQ(cv.SlotName[0], "hundreds.fit");
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 2);
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), picture);
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
  Start();
  Choose("mnuFileSel_8");
  EXPECT_FALSE(window->isVisible());
  EXPECT_THAT(WorkingFiles(), IsEmpty());
}

TEST_F(ScaleWindow, ReportsALostResultAndStaysUsable) {
  OpenHundreds();
  ApplyLogarithm();
  std::filesystem::remove(AppFile("temp.bmp"));
  os.Expect("FILE OPEN ERROR", HasSubstr("temp.bmp"));
  Choose("mnuFileSel_2");
  EXPECT_THAT(desk.replacedBy, IsEmpty());
  EXPECT_EQ(cv.SlotName[0], "hundreds.fit");
  EXPECT_EQ(State(), kScaled);
  Press(*window, "cmdCancel");
  EXPECT_EQ(State(), kUndone);
  os.Expect("FILE OPEN ERROR", HasSubstr("temp.bmp"));
  Press(*window, "cmdRedo");
  EXPECT_EQ(State(), kUnscaled);
  EXPECT_FALSE(cv.ImageChanged);
  // The picture itself is rendered again.
  const std::string picture = ReadFile(AppFile("0temp.bmp"));
  std::filesystem::remove(AppFile("0temp.bmp"));
  Press(*window, "cmdApply");
  EXPECT_EQ(State(), kScaled);
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), picture);
}

TEST_F(ScaleWindow, CanOnlyBeLeftWithoutAPicture) {
  BitmapSpec spec{.bits = 24, .width = 6, .height = 5, .pixel = [](int, int) { return kRed; }, .palette = {}};
  OpenUserImage("red.bmp", BitmapBytes(spec));
  std::filesystem::remove(AppFile("0temp.bmp"));
  os.Expect("FILE OPEN ERROR", HasSubstr("0temp.bmp"));
  Start();
  EXPECT_EQ(State(), "");
  EXPECT_EQ(Enabled({"mnuFileSel_0", "mnuFileSel_2", "mnuFileSel_8"}), "mnuFileSel_2 mnuFileSel_8 ");
  Choose("mnuFileSel_2");
  EXPECT_THAT(desk.replacedBy, ElementsAre(Window::Examine));
}

TEST_F(ScaleWindow, IsAsBeforeWhereTheResultCannotBeWritten) {
  std::vector<double> noise;
  for (int i = 0; i < 320 * 240; ++i) noise.push_back(i * 7 % 251);
  OpenWith("noise.fit", FitsImage(8, 320, 240, noise));
  const std::vector<int> picture = Pixels(cv.Display());
  {
    const FileSizeLimit full(50000);
    os.Expect("FILE OPEN ERROR", HasSubstr("temp.bmp"));
    ApplyLogarithm();
  }
  EXPECT_EQ(State(), kUnscaled);
  EXPECT_EQ(Pixels(cv.Display()), picture);
  EXPECT_EQ(ShownLevels(), picture);
  Press(*window, "cmdApply");
  EXPECT_EQ(State(), kScaled);
}

TEST_F(ScaleWindow, ShowsALargePictureReduced) {
  std::vector<double> stripes;
  for (int i = 0; i < 700 * 350; ++i) stripes.push_back(i % 2 == 0 ? 0 : 200);
  OpenWith("stripes.fit", FitsImage(8, 700, 350, stripes));
  EXPECT_EQ(Preview().size(), QSize(320, 160));
  std::vector<int> shown = ShownLevels();
  EXPECT_EQ(*std::min_element(shown.begin(), shown.end()), 67) << "the mean of three, none is left out";
  EXPECT_EQ(*std::max_element(shown.begin(), shown.end()), 133);
}

TEST_F(ScaleWindow, OpensFromTheViewerAndLeadsBackToIt) {
  OpenUserImage("hundreds.fit", FitsImage(16, 11, 10, Hundreds()));
  ApplicationDesk real(cv, os);
  real.Replace(Window::Examine);
  const auto choose = [&](const char* item) { real.Shown()->findChild<QAction*>(item)->trigger(); };
  choose("mnuToolSel_18");
  ASSERT_EQ(real.Shown()->objectName(), "frmScale");
  EXPECT_LE(real.Shown()->frameGeometry().width(), 1366);
  EXPECT_LE(real.Shown()->frameGeometry().height(), 768 - 40);
  Find<QComboBox>(*real.Shown(), "Combo1").setCurrentIndex(1);
  Press(*real.Shown(), "cmdApply");
  Press(*real.Shown(), "Toolbar1_mask");
  ASSERT_EQ(real.Shown()->objectName(), "frmMask");
  EXPECT_EQ(real.Shown()->windowTitle(), "  Corvane Image Mask:  ~hundreds.fit");
  Find<QSlider>(*real.Shown(), "sldHigh").setValue(200);
  Press(*real.Shown(), "cmdApply");
  Press(*real.Shown(), "Toolbar1_scale");
  ASSERT_EQ(real.Shown()->objectName(), "frmScale");
  Press(*real.Shown(), "Toolbar1_corvane");
  ASSERT_EQ(real.Shown()->objectName(), "frmExamine");
  EXPECT_EQ(Find<QComboBox>(*real.Shown(), "Combo1").currentText(), "~hundreds.fit");
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
}

}  // namespace
}  // namespace corvane
