#include "widgets/BarProgress.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPixmap>

#include "platform/QtText.h"

namespace corvane {

void ShowPercent(QProgressBar& bar, int percent) {
  if (percent == bar.value()) return;
  bar.setUpdatesEnabled(false);
  bar.setValue(percent);
  bar.setUpdatesEnabled(true);
}

BarProgress::BarProgress(Platform& platform) : os(platform) {
  setRange(0, 100);
  setValue(0);
  setTextVisible(false);
}

void BarProgress::AllowCancel(const std::filesystem::path& pointer) {
  const QPixmap picture(ToQt(pointer));
  setCursor(picture.isNull() ? QCursor(Qt::PointingHandCursor) : QCursor(picture, 0, 0));
  qApp->installEventFilter(this);
}

void BarProgress::Reset() {
  qApp->removeEventFilter(this);
  unsetCursor();
  setValue(0);
  cancelled_ = false;
}

bool BarProgress::Row(int done, int total) {
  ShowPercent(*this, Percent(done, total));
  os.Yield();
  return !cancelled_;
}

bool BarProgress::eventFilter(QObject* watched, QEvent* event) {
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || widget->window() != window()) return false;
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape || key == Qt::Key_Pause) Cancel();
  } else if (event->type() == QEvent::MouseButtonPress && widget == this) {
    Cancel();
  }
  return false;
}

}  // namespace corvane
