#include "app/ApplicationDesk.h"

#include <QLayout>
#include <QShortcut>
#include <utility>

#include "app/Factory.h"
#include "core/working_files.h"
#include "widgets/placing.h"

namespace corvane {

namespace {

bool CanGrow(const ToolWindow& window) { return window.layout()->sizeConstraint() != QLayout::SetFixedSize; }

}  // namespace

void ApplicationDesk::Replace(Window next) {
  std::unique_ptr<ToolWindow> window = MakeWindow(next, cv, os, *this);
  if (shown_ && CanGrow(*shown_)) growth_ = shown_->size() - shown_->sizeHint();
  if (shown_) shown_->Unload();
  std::swap(window, shown_);
  shown_->Open();
  if (CanGrow(*shown_)) shown_->resize(shown_->sizeHint() + growth_);
  PlaceAt(*shown_, {cv.WindowLeft, cv.WindowTop});
  shown_->show();
  shown_->activateWindow();
  os.BusyCursor(false);
  if (!window) return;
  window->hide();
  window.release()->deleteLater();  // its handler is still running
}

void ApplicationDesk::ShowModal(Dialog dialog) {
  const std::unique_ptr<QDialog> window = MakeDialog(dialog, cv, os);
  if (shown_) {
    cv.WindowLeft = shown_->x();
    cv.WindowTop = shown_->y();
    window->setParent(shown_.get(), window->windowFlags());
  }
  window->setWindowModality(Qt::WindowModal);
  const QShortcut f1(QKeySequence(Qt::Key_F1), window.get());
  QObject::connect(&f1, &QShortcut::activated, window.get(), [this, topic = window->objectName()] {
    os.OpenHelp(cv.AppDir / kHelpFile, topic.toStdString());
  });
  PlaceAt(*window, {cv.WindowLeft + kDialogOffset, cv.WindowTop});
  window->exec();
}

void ApplicationDesk::UnloadForGood() {
  cv.KeepTempFiles = false;
  if (shown_) shown_->Unload();
}

}  // namespace corvane
