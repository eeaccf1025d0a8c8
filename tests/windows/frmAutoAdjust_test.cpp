#include "align/frmAutoAdjust.h"

#include "tests/support/app_dir_fixture.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

class AutoAdjustWindow : public AppDirFixture {
 protected:
  AutoAdjustWindow() { Start(); }
  void Start() {
    window = std::make_unique<frmAutoAdjust>(cv, os);
    window->show();
  }
  QLineEdit& Box(const char* name) { return Find<QLineEdit>(*window, name); }
  int Arrows(const char* name) { return Find<QSpinBox>(*window, name).value(); }
  void Apply(const char* radius, const char* threshold) {
    Box("txbRad").setText(radius);
    Box("txbThresh").setText(threshold);
    Press(*window, "cmdApply");
  }
  std::unique_ptr<frmAutoAdjust> window;
};

TEST_F(AutoAdjustWindow, ShowsAndStepsTheSettings) {
  cv.AutoRadius = 7;
  cv.AutoThreshold = 0;
  Start();
  EXPECT_EQ(window->windowTitle(), "Auto-Adjust");
  EXPECT_EQ(Box("txbRad").text(), "7");
  EXPECT_EQ(Box("txbThresh").text(), "0");
  EXPECT_EQ(Arrows("UpDown1"), 7);
  EXPECT_EQ(Arrows("UpDown2"), 0);
  Find<QSpinBox>(*window, "UpDown1").setValue(3);
  Find<QSpinBox>(*window, "UpDown2").setValue(50);
  EXPECT_EQ(Box("txbRad").text(), "3");
  EXPECT_EQ(Box("txbThresh").text(), "50");
  EXPECT_EQ(cv.AutoRadius, 7) << "nothing is taken over before Apply";
}

TEST_F(AutoAdjustWindow, AppliesWholeNumbersWithinTheLimits) {
  const std::tuple<const char*, const char*, int, int> cases[] = {
      {"5", "10", 5, 10},    {"-7", "0", 7, 0},       {"10.5", "50.5", 10, 50},
      {"0.6", "-0.5", 1, 0}, {" 2.5 ", "1E1", 2, 10}, {"1.5", "49.5", 2, 50}};
  for (const auto& [radius, threshold, takenRadius, takenThreshold] : cases) {
    SCOPED_TRACE(radius);
    Start();
    cv.AutoAdjustOn = false;
    Apply(radius, threshold);
    EXPECT_EQ(cv.AutoRadius, takenRadius);
    EXPECT_EQ(cv.AutoThreshold, takenThreshold);
    EXPECT_TRUE(cv.AutoAdjustOn);
    EXPECT_FALSE(window->isVisible());
  }
}

TEST_F(AutoAdjustWindow, RefusesEverythingElseAndSetsItToTheLimit) {
  struct Case {
    const char* radius;
    const char* threshold;
    const char* title;
    const char* text;
    const char* focus;
    const char* radiusThen;
    const char* thresholdThen;
  };
  constexpr char kEntry[] = "DATA ENTRY ERROR";
  constexpr char kMost[] = "MAXIMUM VALUE";
  constexpr char kLeast[] = "MINIMUM VALUE";
  const Case cases[] = {
      {"five", "60", kEntry, "Non-Numeric Input!", "txbRad", "five", "60"},
      {"", "10", kEntry, "Non-Numeric Input!", "txbRad", "", "10"},
      {"10.6", "60", kMost, "The maximum radius is 10 pixels!", "txbRad", "10", "60"},
      {"-1e300", "10", kMost, "The maximum radius is 10 pixels!", "txbRad", "10", "10"},
      {"0.5", "10", kLeast, "The minimum radius is 1 pixel.", "txbRad", "1", "10"},
      {"5", "2,5", kEntry, "Non-Numeric Input!", "txbThresh", "5", "2,5"},
      {"5", "50.6", kMost, "The maximum luminance background is 50!", "txbThresh", "5", "50"},
      {"5", "-7", kLeast, "The minimum luminance background is 0.", "txbThresh", "5", "0"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.radius << ", " << c.threshold);
    os.Expect(c.title, c.text);
    Apply(c.radius, c.threshold);
    os.VerifyScript();
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(cv.AutoAdjustOn);
    EXPECT_EQ(window->focusWidget()->objectName(), c.focus);
    EXPECT_EQ(Box("txbRad").text(), c.radiusThen);
    EXPECT_EQ(Box("txbThresh").text(), c.thresholdThen);
  }
  EXPECT_EQ(cv.AutoThreshold, 0);
  EXPECT_EQ(Arrows("UpDown2"), 0);
}

TEST_F(AutoAdjustWindow, IsOffUnlessApplied) {
  for (const char* way : {"button", "escape", "box"}) {
    Start();
    cv.AutoAdjustOn = true;
    os.Expect("MAXIMUM VALUE", "The maximum radius is 10 pixels!");
    Apply("11", "20");
    if (way == std::string("button")) Press(*window, "cmdCancel");
    if (way == std::string("escape")) QTest::keyClick(window.get(), Qt::Key_Escape);
    if (way == std::string("box")) window->close();
    EXPECT_FALSE(window->isVisible()) << way;
    EXPECT_FALSE(cv.AutoAdjustOn) << way;
    EXPECT_EQ(cv.AutoRadius, 10) << "the limit stays stored";
    EXPECT_EQ(cv.AutoThreshold, 10);
  }
}

}  // namespace
}  // namespace corvane
