#pragma once

#include <QWidget>
#include <span>

#include "base/drawing.h"

class QPainter;

namespace corvane {

// How much larger the texts of a window are than those that the distances of graph labels were made for; at
// least 1.
float TextScale(const QWidget& window);

// Prints labels and lines on a window, in its pixels and in the color that its texts have, so that they are
// readable on every palette.
void PaintLabels(const QWidget& window, QPainter& painter, std::span<const Label> labels);
void PaintTicks(const QWidget& window, QPainter& painter, std::span<const Stroke> ticks);

}  // namespace corvane
