#include "app/frmPref.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

class Preferences : public AppDirFixture {
 protected:
  std::tuple<int, int, int, int> InForce() const {
    return {cv.RasterCycles, cv.MagMode, cv.FileTypeSetting, cv.PColorSetting};
  }
};

TEST_F(Preferences, ShowWhatIsInForce) {
  cv.MagMode = 0;
  cv.RasterCycles = 12;
  cv.FileTypeSetting = 1;
  cv.PColorSetting = 2;
  const frmPref window(cv, os);
  EXPECT_EQ(Find<QLineEdit>(window, "Text1").text(), "12");
  EXPECT_EQ(Find<QSpinBox>(window, "UpDown1").value(), 12);
  for (const char* chosen : {"optRep", "optBMP", "Option3"})
    EXPECT_TRUE(Find<QAbstractButton>(window, chosen).isChecked()) << chosen;
  for (const char* other : {"optInterp", "optFTS", "Option1", "Option2"})
    EXPECT_FALSE(Find<QAbstractButton>(window, other).isChecked()) << other;
}

void ChooseOtherThings(frmPref& window) {
  window.show();
  Find<QLineEdit>(window, "Text1").setText(" 9 ");
  for (const char* option : {"optRep", "optBMP", "Option2"}) Press(window, option);
  Find<QWidget>(window, "cmdSave").setFocus();
}

TEST_F(Preferences, ApplyChangesTheSessionAndSaveTheFourSettingsToo) {
  const std::map<std::string, std::string> stored = {
      {"Mag", "0"}, {"Raster", "9"}, {"FileType", "1"}, {"PColor", "1"}};
  for (const bool save : {false, true}) {
    std::tie(cv.RasterCycles, cv.MagMode, cv.FileTypeSetting, cv.PColorSetting) = std::tuple(5, 1, 2, 0);
    frmPref window(cv, os);
    ChooseOtherThings(window);
    Press(window, save ? "cmdSave" : "cmdApply");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(InForce(), std::tuple(9, 0, 1, 1));
    EXPECT_EQ(os.settings, save ? stored : decltype(stored){});
  }
}

TEST_F(Preferences, StayWhereTheyCannotBeSaved) {
  frmPref window(cv, os);
  ChooseOtherThings(window);
  os.settingsError = ENOSPC;
  os.Expect("DATA SAVE ERROR", "Error Number 28");
  Press(window, "cmdSave");
  EXPECT_TRUE(window.isVisible());
}

TEST_F(Preferences, CancelAndEscapeChangeNothing) {
  for (const bool escape : {false, true}) {
    frmPref window(cv, os);
    ChooseOtherThings(window);
    if (escape) {
      QTest::keyClick(&window, Qt::Key_Escape);
    } else {
      Press(window, "cmdCancel");
    }
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(InForce(), std::tuple(5, 1, 2, 0));
  }
}

TEST_F(Preferences, TextThatIsNoNumberIsRefused) {
  for (const char* text : {"", "abc", "5,5", "0x10", "nan", "1e999"}) {
    SCOPED_TRACE(text);
    frmPref window(cv, os);
    ChooseOtherThings(window);
    Find<QLineEdit>(window, "Text1").setText(text);
    os.Expect("INPUT ERROR", "Non-Numeric Input");
    Press(window, "cmdSave");
    os.VerifyScript();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.focusWidget()->objectName(), "Text1");
    EXPECT_EQ(InForce(), std::tuple(5, 1, 2, 0));
    EXPECT_TRUE(os.settings.empty());
  }
}

TEST_F(Preferences, ANumberBeyondTheLimitsIsSetToTheLimitFirst) {
  const std::pair<const char*, int> cases[] = {{"0", 1}, {"-3", 1}, {"129", 128}, {"1e300", 128}};
  for (const auto& [typed, limit] : cases) {
    SCOPED_TRACE(typed);
    cv.RasterCycles = 5;
    frmPref window(cv, os);
    ChooseOtherThings(window);
    auto& Text1 = Find<QLineEdit>(window, "Text1");
    Text1.setText(typed);
    Press(window, "cmdApply");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(cv.RasterCycles, 5);
    EXPECT_EQ(Text1.text(), QString::number(limit));
    EXPECT_EQ(Find<QSpinBox>(window, "UpDown1").value(), limit);
    EXPECT_EQ(window.focusWidget(), &Text1);
    EXPECT_EQ(Text1.selectedText(), Text1.text());
    Press(window, "cmdApply");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(cv.RasterCycles, limit);
  }
}

TEST_F(Preferences, ArrowsAndKeysStepTheTypedNumberWithinItsLimits) {
  const frmPref window(cv, os);
  auto& Text1 = Find<QLineEdit>(window, "Text1");
  auto& UpDown1 = Find<QSpinBox>(window, "UpDown1");
  Text1.setText("127");
  UpDown1.stepUp();
  EXPECT_EQ(Text1.text(), "128");
  QTest::keyClick(&Text1, Qt::Key_Up);
  EXPECT_EQ(Text1.text(), "128");
  QTest::keyClick(&Text1, Qt::Key_Down);
  EXPECT_EQ(Text1.text(), "127");
  Text1.setText("x");
  UpDown1.stepDown();
  EXPECT_EQ(Text1.text(), "126");
  Text1.setText("2.7");
  Press(window, "cmdApply");
  EXPECT_EQ(cv.RasterCycles, 3);
}

}  // namespace
}  // namespace corvane
