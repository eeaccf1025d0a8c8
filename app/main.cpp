#include <QApplication>
#include <QStandardPaths>
#include <clocale>
#include <cstdlib>

#include "app/AppDir.h"
#include "app/ApplicationDesk.h"
#include "app/EndSignals.h"
#include "core/frmCVSplash.h"
#include "core/startup.h"
#include "platform/QtPlatform.h"
#include "platform/QtText.h"
#include "platform/SettingsStore.h"
#include "widgets/Emblem.h"

namespace {

using namespace corvane;

// Says why the program can't start; true when it can.
bool MayStart(const AppDir& appDir, Platform& os) {
  switch (appDir.GetState()) {
    case AppDir::State::Ready:
      return true;
    case AppDir::State::AlreadyRunning:
      os.Message("Corvane is already running.", "CORVANE");
      return false;
    case AppDir::State::NotWritable:
      os.Message("Can't write to the folder " + appDir.Path().string() + ".", "CORVANE");
      return false;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  IgnoreWriteSignals();
  QApplication app(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName("Corvane");
  QApplication::setApplicationVersion("3.211");
  QApplication::setDesktopFileName("corvane");
  QApplication::setWindowIcon(ProgramIcon());

  QtPlatform os;
  const AppDir appDir(ToPath(QApplication::applicationDirPath()),
                      ToPath(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)));
  if (!MayStart(appDir, os)) return 1;
  RemoveStaleSettingsLock();

  ModCV cv;
  cv.AppDir = appDir.Path();
  ApplicationDesk desk(cv, os);
  // A command that is under way would write again what has just been deleted, so nothing runs on.
  const EndSignals signals([&desk] {
    desk.UnloadForGood();
    std::_Exit(EXIT_SUCCESS);
  });
  frmCVSplash splash(desk);
  splash.show();
  os.BusyCursor(true);
  StartUp(cv, os);
  return QApplication::exec();
}
