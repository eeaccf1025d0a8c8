#include <QStandardPaths>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "app/AppDir.h"
#include "app/Application.h"
#include "app/ApplicationDesk.h"
#include "app/EndSignals.h"
#include "app/Process.h"
#include "app/frmCVSplash.h"
#include "core/startup.h"
#include "platform/QtPlatform.h"
#include "platform/QtText.h"
#include "widgets/Emblem.h"

using namespace corvane;

int main(int argc, char** argv) {
  if (!PrepareProcess()) {
    std::fputs("There is not enough memory to start Corvane.\n", stderr);
    return 1;
  }
  Application app(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName("Corvane");
  QApplication::setApplicationVersion("3.211");
  QApplication::setDesktopFileName("corvane");
  QApplication::setWindowIcon(ProgramIcon());

  QtPlatform os;
  app.ReportTo(&os);
  AppDir appDir(ToPath(QApplication::applicationDirPath()),
                ToPath(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)));
  if (!appDir.MayStart(os)) return 1;

  ModCV cv;
  cv.AppDir = appDir.Path();
  cv.RefillAppDir = [&appDir] { appDir.Refill(); };
  cv.DefaultDir = appDir.Samples();
  ApplicationDesk desk(cv, os);
  const EndSignals signals([&desk] { desk.UnloadForGood(); });
  frmCVSplash splash(desk);
  splash.show();
  os.BusyCursor(true);
  StartUp(cv, os);
  return QApplication::exec();
}
