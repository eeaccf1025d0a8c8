#include "widgets/PaintLabels.h"

#include <QPainter>
#include <algorithm>

namespace corvane {

float TextScale(const QWidget& window) {
  constexpr float kRoom = 23;  // between the label "250" of a profile and its graph
  return std::max(1.0f, static_cast<float>(window.fontMetrics().horizontalAdvance("250")) / kRoom);
}

void PaintLabels(const QWidget& window, QPainter& painter, std::span<const Label> labels) {
  painter.setPen(window.palette().color(QPalette::WindowText));
  const int ascent = painter.fontMetrics().ascent();
  for (const Label& label : labels)
    painter.drawText(QPointF(label.x, label.y + static_cast<float>(ascent)),
                     QString::fromStdString(label.text));
}

void PaintTicks(const QWidget& window, QPainter& painter, std::span<const Stroke> ticks) {
  const QColor color = window.palette().color(QPalette::WindowText);
  for (const Stroke& tick : ticks)
    painter.fillRect(QRect(QPointF(tick.x1, tick.y1).toPoint(), QPointF(tick.x2, tick.y2).toPoint()), color);
}

}  // namespace corvane
