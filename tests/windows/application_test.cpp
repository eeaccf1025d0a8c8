#include <signal.h>

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QTest>

#include "app/ApplicationDesk.h"
#include "app/Factory.h"
#include "platform/QtText.h"
#include "platform/built_windows.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

class Application : public AppDirFixture {};

constexpr Window kWindows[] = {Window::Examine, Window::Scale,   Window::Mask, Window::Filter,
                               Window::Align,   Window::Combine, Window::Color};
constexpr Dialog kDialogs[] = {Dialog::Info,          Dialog::Histogram, Dialog::Profile,
                               Dialog::Preferences,   Dialog::About,     Dialog::SaveOptions,
                               Dialog::Deconvolution, Dialog::Exponent,  Dialog::AutoAdjust};

TEST_F(Application, HasExactlyTheWindowsThatItsMenusOffer) {
  for (const Window window : kWindows)
    EXPECT_EQ(MakeWindow(window, cv, os, desk) != nullptr, IsBuilt(window)) << static_cast<int>(window);
  for (const Dialog dialog : kDialogs)
    EXPECT_EQ(MakeDialog(dialog, cv, os) != nullptr, IsBuilt(dialog)) << static_cast<int>(dialog);
}

TEST_F(Application, GivesEveryButtonOfADialogANameToSpeak) {
  for (const Dialog dialog : {Dialog::Preferences, Dialog::About, Dialog::SaveOptions}) {
    const auto window = MakeDialog(dialog, cv, os);
    for (const auto* button : window->findChildren<QAbstractButton*>())
      EXPECT_FALSE(button->accessibleName().isEmpty()) << button->objectName().toStdString();
  }
}

TEST_F(Application, PlacesDialogsBesideTheMainWindowAndOnTheScreen) {
  ApplicationDesk real(cv, os);
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  for (const int left : {0, 20, 5000, -5000}) {
    cv.WindowLeft = left;
    cv.WindowTop = left;
    QRect frame;
    WhenShown<QDialog>([&](QDialog& dialog) {
      frame = dialog.frameGeometry();
      EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
      QTest::keyClick(&dialog, Qt::Key_F1);
      dialog.reject();
    });
    real.ShowModal(Dialog::About);
    EXPECT_TRUE(screen.contains(frame)) << left;
    if (left == 20) {
      EXPECT_GT(frame.left(), 200);
      EXPECT_EQ(frame.top(), 20);
    }
  }
  ASSERT_EQ(os.helpCalls.size(), 4u);
  EXPECT_EQ(os.helpCalls[0].first, AppFile("CORVANEIII.HLP"));
  EXPECT_EQ(os.helpCalls[0].second, "frmAbout");
}

TEST_F(Application, MovesAWindowNoFartherThanItMust) {
  const QRect area(0, 30, 1366, 738);
  EXPECT_EQ(InsideArea({200, 100}, {640, 480}, area), QPoint(200, 100));
  EXPECT_EQ(InsideArea({-5, 0}, {640, 480}, area), QPoint(0, 30));
  EXPECT_EQ(InsideArea({1000, 700}, {640, 480}, area), QPoint(726, 288));
  EXPECT_EQ(InsideArea({10, 100}, {2000, 900}, area), QPoint(0, 30));
}

// The program itself, in the fixture's AppDir.
class Program : public AppDirFixture {
 protected:
  Program() {
    std::filesystem::copy_file(AssetFolder() / "corvane", AppFile("corvane"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", ToQt(folder.Path() / "config"));
    process.setProcessEnvironment(environment);
  }
  ~Program() override {
    process.kill();
    process.waitForFinished();
  }
  // Waits for the clean-up after an earlier run, the last step before the event loop.
  bool Start() {
    WriteFile(AppFile("3temp.bmp"), "left by a crash");
    process.start(ToQt(AppFile("corvane")), QStringList());
    return QTest::qWaitFor([this] { return !std::filesystem::exists(AppFile("3temp.bmp")); }, 30000);
  }
  QProcess process;
};

TEST_F(Program, EndsWithStatusZeroWhenItIsAskedToEnd) {
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    SCOPED_TRACE(number);
    ASSERT_TRUE(Start());
    kill(static_cast<pid_t>(process.processId()), number);
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
  }
}

}  // namespace
}  // namespace corvane
