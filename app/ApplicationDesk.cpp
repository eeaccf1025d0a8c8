#include "app/ApplicationDesk.h"

#include <QGuiApplication>
#include <QScreen>
#include <QShortcut>
#include <algorithm>
#include <utility>

#include "app/Factory.h"
#include "core/working_files.h"

namespace corvane {
namespace {

constexpr int kDialogOffset = 320;
// Room for the frame that the window manager draws around a window; its size is unknown before the first one
// is on screen.
constexpr QSize kFrame(8, 40);

void PlaceAt(QWidget& window, QPoint wanted) {
  const QScreen* screen = QGuiApplication::screenAt(wanted);
  if (!screen) screen = QGuiApplication::primaryScreen();
  const QRect area = screen->availableGeometry();
  window.ensurePolished();
  if (!window.testAttribute(Qt::WA_Resized)) window.resize(window.sizeHint().boundedTo(area.size() - kFrame));
  window.move(InsideArea(wanted, window.size() + kFrame, area));
}

}  // namespace

QPoint InsideArea(QPoint wanted, QSize size, const QRect& area) {
  const int right = std::max(area.left(), area.left() + area.width() - size.width());
  const int bottom = std::max(area.top(), area.top() + area.height() - size.height());
  return {std::clamp(wanted.x(), area.left(), right), std::clamp(wanted.y(), area.top(), bottom)};
}

void ApplicationDesk::Replace(Window next) {
  std::unique_ptr<ToolWindow> window = MakeWindow(next, cv_, os_, *this);
  if (!window) return;
  if (shown_) shown_->Unload();
  std::swap(window, shown_);
  shown_->Open();
  PlaceAt(*shown_, {cv_.WindowLeft, cv_.WindowTop});
  shown_->show();
  shown_->activateWindow();
  os_.BusyCursor(false);
  if (!window) return;
  window->hide();
  window.release()->deleteLater();  // its handler is still running
}

void ApplicationDesk::ShowModal(Dialog dialog) {
  const std::unique_ptr<QDialog> window = MakeDialog(dialog, cv_, os_);
  if (!window) return;
  if (shown_) {
    cv_.WindowLeft = shown_->x();
    cv_.WindowTop = shown_->y();
    window->setParent(shown_.get(), window->windowFlags());
  }
  window->setWindowModality(Qt::WindowModal);
  const QShortcut f1(QKeySequence(Qt::Key_F1), window.get());
  QObject::connect(&f1, &QShortcut::activated, window.get(), [this, topic = window->objectName()] {
    os_.OpenHelp(cv_.AppDir / kHelpFile, topic.toStdString());
  });
  PlaceAt(*window, {cv_.WindowLeft + kDialogOffset, cv_.WindowTop});
  window->exec();
}

void ApplicationDesk::UnloadForGood() {
  cv_.KeepTempFiles = false;
  if (shown_) shown_->Unload();
}

}  // namespace corvane
