#include "widgets/placing.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace corvane {
namespace {

// Room for the frame that the window manager draws around a window; its size is unknown before the first one
// is on screen.
constexpr QSize kFrame(8, 40);

}  // namespace

QPoint InsideArea(QPoint wanted, QSize size, const QRect& area) {
  const int right = std::max(area.left(), area.left() + area.width() - size.width());
  const int bottom = std::max(area.top(), area.top() + area.height() - size.height());
  return {std::clamp(wanted.x(), area.left(), right), std::clamp(wanted.y(), area.top(), bottom)};
}

void PlaceAt(QWidget& window, QPoint wanted) {
  const QScreen* screen = QGuiApplication::screenAt(wanted);
  if (!screen) screen = QGuiApplication::primaryScreen();
  const QRect area = screen->availableGeometry();
  window.ensurePolished();
  if (!window.testAttribute(Qt::WA_Resized)) window.resize(window.sizeHint().boundedTo(area.size() - kFrame));
  window.move(InsideArea(wanted, window.size() + kFrame, area));
}

}  // namespace corvane
