#include <signal.h>

#include "app/ApplicationDesk.h"
#include "app/Factory.h"
#include "platform/QtText.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"
#include "tests/support/window_controls.h"
#include "widgets/PictureBox.h"
#include "widgets/placing.h"

namespace corvane {
namespace {

constexpr Window kWindows[] = {Window::Examine, Window::Scale,   Window::Mask, Window::Filter,
                               Window::Align,   Window::Combine, Window::Color};
constexpr Dialog kDialogs[] = {Dialog::Info,          Dialog::Histogram, Dialog::Profile,
                               Dialog::Preferences,   Dialog::About,     Dialog::SaveOptions,
                               Dialog::Deconvolution, Dialog::Exponent,  Dialog::AutoAdjust};

class Application : public AppDirFixture {
 protected:
  std::vector<std::unique_ptr<QWidget>> AllWindows() {
    std::vector<std::unique_ptr<QWidget>> windows;
    for (const Window window : kWindows) windows.push_back(MakeWindow(window, cv, os, desk));
    for (const Dialog dialog : kDialogs) windows.push_back(MakeDialog(dialog, cv, os));
    return windows;
  }
};

TEST_F(Application, HasATopicInTheManualForEveryWindow) {
  const std::string manual = ReadFile(AppFile("CORVANEIII.HLP"));
  for (const auto& window : AllWindows()) {
    const std::string name = window->objectName().toStdString();
    EXPECT_NE(manual.find("name=\"" + name + '"'), std::string::npos) << name;
  }
}

TEST_F(Application, GivesEveryControlANameToSpeak) {
  for (const auto& window : AllWindows())
    for (const auto* control : window->findChildren<QWidget*>()) {
      const bool isControl =
          qobject_cast<const QAbstractButton*>(control) || qobject_cast<const QSlider*>(control) ||
          qobject_cast<const QComboBox*>(control) || dynamic_cast<const PictureBox*>(control);
      if (!isControl || control->objectName().startsWith("qt_")) continue;
      EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
    }
}

TEST_F(Application, HasADefaultButtonInEveryDialog) {
  std::string buttons;
  for (const Dialog kind : kDialogs) {
    const auto dialog = MakeDialog(kind, cv, os);
    for (const auto* button : dialog->findChildren<QPushButton*>())
      if (button->isDefault()) buttons += button->objectName().toStdString() + ' ';
  }
  EXPECT_EQ(buttons, "cmdOK cmdClose cmdClose cmdApply cmdOK cmdClose cmdApply cmdOK cmdApply ");
}

TEST_F(Application, LeavesTheWheelToTheWindowWhereAControlHasNoFocus) {
  OpenUserImage("a.fit", FitsImage(8, 3, 2, std::vector<double>(6)));
  int controls = 0;
  for (const Window kind : kWindows) {
    const auto window = MakeWindow(kind, cv, os, desk);
    window->Open();
    for (auto* control : window->findChildren<QWidget*>()) {
      if (!qobject_cast<QSlider*>(control) && !qobject_cast<QComboBox*>(control)) continue;
      controls += control->isEnabled();
      for (const int turn : {-120, 120}) {
        QWheelEvent event({5, 5}, {5, 5}, {}, {0, turn}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(control, &event);
        EXPECT_FALSE(event.isAccepted()) << window->objectName().toStdString() << turn;
      }
    }
  }
  EXPECT_GT(controls, 8);
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

TEST_F(Application, ShowsOneMainWindowAndUnloadsItsOpenerFirst) {
  ApplicationDesk real(cv, os);
  cv.WindowLeft = 40;
  cv.WindowTop = 50;
  real.Replace(Window::Examine);
  const QPointer<ToolWindow> first = real.Shown();
  ASSERT_TRUE(first);
  EXPECT_TRUE(first->isVisible());
  const QRect frame = first->frameGeometry();
  EXPECT_EQ(frame.top(), 50);
  EXPECT_GE(frame.left(), 0);
  EXPECT_LE(frame.width(), 1366);
  EXPECT_LE(frame.height(), 768 - 50);
  WriteFile(AppFile("temp.bmp"), "of the first");
  real.Replace(Window::Examine);
  ASSERT_TRUE(real.Shown());
  EXPECT_NE(real.Shown(), first);
  EXPECT_TRUE(real.Shown()->isVisible());
  EXPECT_FALSE(std::filesystem::exists(AppFile("temp.bmp")));
  EXPECT_FALSE(first && first->isVisible());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(first);
}

TEST_F(Application, KeepsTheSizeOfWindowsThatGrow) {
  OpenUserImage("a.fit", FitsImage(8, 3, 2, std::vector<double>(6)));
  ApplicationDesk real(cv, os);
  real.Replace(Window::Examine);
  const QSize size = real.Shown()->size();
  real.Shown()->resize(size + QSize(120, 40));
  real.Replace(Window::Scale);
  for (const Window other : {Window::Align, Window::Color}) real.Replace(other);
  real.Replace(Window::Examine);
  EXPECT_EQ(real.Shown()->size(), size + QSize(120, 40));
}

TEST_F(Application, EndsAsExitDoesWhenItIsAskedToFromOutside) {
  ApplicationDesk real(cv, os);
  real.UnloadForGood();
  real.Replace(Window::Examine);
  cv.KeepTempFiles = true;
  cv.ImageCount = 1;
  WriteFile(AppFile("0temp.bmp"), "a picture");
  WriteFile(AppFile("dummy.bmp"), "a view");
  cv.SaveDir = "/saved";
  real.UnloadForGood();
  EXPECT_THAT(WorkingFiles(), testing::IsEmpty());
  EXPECT_EQ(os.settings["SaveDir"], "/saved");
  cv.ImageCount = 0;
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
  // The screenless platform says once that it sets no limits to the size of a window, when it shows one.
  static bool ShowsAWindow(QProcess& program) {
    QByteArray said;
    return QTest::qWaitFor(
        [&] { return (said += program.readAllStandardError()).contains("propagateSizeHints"); }, 30000);
  }
  bool Ignores(int number) {
    const std::string status = ReadFile("/proc/" + std::to_string(process.processId()) + "/status");
    return std::stoull(status.substr(status.find("SigIgn:") + 7), nullptr, 16) >> (number - 1) & 1;
  }
  QProcess process;
};

TEST_F(Program, EndsAsExitDoesWhenItIsAskedToFromOutside) {
  const std::filesystem::path settings = folder.Path() / "config/Corvane/Corvane_2.conf";
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    SCOPED_TRACE(number);
    ASSERT_TRUE(Start());
    ASSERT_TRUE(ShowsAWindow(process));
    EXPECT_TRUE(Ignores(SIGXFSZ) && Ignores(SIGPIPE)) << "a failed write is a message, not the end";
    WriteFile(AppFile("dummy.bmp"), "a view");
    kill(static_cast<pid_t>(process.processId()), number);
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_FALSE(std::filesystem::exists(AppFile("dummy.bmp")));
    EXPECT_TRUE(std::filesystem::remove(settings));
  }
}

TEST_F(Program, KeepsItsFilesWhenItIsStartedASecondTime) {
  ASSERT_TRUE(Start());
  WriteFile(AppFile("0temp.bmp"), "a picture of the first");
  QProcess second;
  second.start(ToQt(AppFile("corvane")), QStringList());
  ASSERT_TRUE(ShowsAWindow(second)) << "the message";
  EXPECT_TRUE(std::filesystem::exists(AppFile("0temp.bmp")));
  second.kill();
  second.waitForFinished();
}

}  // namespace
}  // namespace corvane
