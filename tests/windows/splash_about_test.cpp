#include "app/frmAbout.h"
#include "app/frmCVSplash.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

class SmallWindows : public AppDirFixture {};

TEST_F(SmallWindows, TheSplashGivesWayToTheViewerOnce) {
  frmCVSplash splash(desk);
  auto* Timer1 = splash.findChild<QTimer*>("Timer1");
  ASSERT_TRUE(Timer1);
  EXPECT_EQ(Timer1->interval(), 1500);
  EXPECT_FALSE(Timer1->isActive());
  splash.show();
  EXPECT_TRUE(Timer1->isActive());
  EXPECT_TRUE(desk.replacedBy.empty());
  Timer1->start(0);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !splash.isVisible(); }));
  EXPECT_FALSE(Timer1->isActive());
  EXPECT_EQ(desk.replacedBy, std::vector{Window::Examine});
}

TEST_F(SmallWindows, AboutNamesTheVersionAndCloses) {
  frmAbout window(cv, os);
  EXPECT_EQ(window.windowTitle(), "About Corvane");
  const auto& txbAbout = Find<QPlainTextEdit>(window, "txbAbout");
  EXPECT_EQ(txbAbout.toPlainText().section('\n', 0, 0), "Corvane v. 3.211");
  EXPECT_TRUE(txbAbout.isReadOnly());
  window.show();
  Press(window, "cmdOK");
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace corvane
