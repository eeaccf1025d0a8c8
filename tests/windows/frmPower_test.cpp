#include "luminance/frmPower.h"

#include "tests/support/app_dir_fixture.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

class PowerWindow : public AppDirFixture {
 protected:
  PowerWindow() {
    window = std::make_unique<frmPower>(cv, os);
    window->show();
  }
  void Enter(const char* text) {
    Find<QLineEdit>(*window, "txbExp").setText(text);
    Press(*window, "cmdOK");
  }
  std::unique_ptr<frmPower> window;
};

TEST_F(PowerWindow, ShowsTheExponentInForceSelected) {
  cv.ScaleExponent = 2.5f;
  const frmPower other(cv, os);
  const auto& box = Find<QLineEdit>(other, "txbExp");
  EXPECT_EQ(box.text(), "2.5");
  EXPECT_EQ(other.windowTitle(), "Scale Exponent Selection");
  EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
  auto& shown = Find<QLineEdit>(*window, "txbExp");
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown.selectedText() == "1"; }));
}

TEST_F(PowerWindow, TakesMagnitudesFromATenthToTenAndNothingElse) {
  const std::pair<const char*, float> taken[] = {
      {"10", 10.0f}, {"0.1", 0.1f}, {"-2", 2.0f}, {" +3.5 ", 3.5f}, {"1E0", 1.0f}};
  for (const auto& [text, exponent] : taken) {
    window->show();
    Enter(text);
    EXPECT_EQ(cv.ScaleExponent, exponent) << text;
    EXPECT_FALSE(window->isVisible()) << text;
  }
  window->show();
  const auto expectRefused = [&](const char* text, const char* title, const char* message) {
    os.Expect(title, message);
    Enter(text);
    EXPECT_TRUE(window->isVisible()) << text;
    EXPECT_EQ(window->focusWidget(), &Find<QLineEdit>(*window, "txbExp")) << text;
    EXPECT_EQ(Find<QLineEdit>(*window, "txbExp").selectedText(), text);
  };
  for (const char* text : {"10.01", "0.09", "0", "-11", "1e30"})
    expectRefused(text, "EXPONENT ERROR", "The exponent must be between 0.1 and 10.");
  for (const char* text : {"", "two", "1,5", "nan", "0x1"})
    expectRefused(text, "INPUT ERROR", "Non-Numeric Input");
}

TEST_F(PowerWindow, CancelLeavesTheExponentAsItWas) {
  for (const bool escape : {false, true}) {
    window = std::make_unique<frmPower>(cv, os);
    window->show();
    os.Expect("EXPONENT ERROR", "The exponent must be between 0.1 and 10.");
    Enter("20");
    if (escape)
      QTest::keyClick(window.get(), Qt::Key_Escape);
    else
      Press(*window, "cmdCancel");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(cv.ScaleExponent, 1.0f);
  }
}

}  // namespace
}  // namespace corvane
