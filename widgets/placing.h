#pragma once

#include <QWidget>

namespace corvane {

// Dialogs stand this far to the right of the main window's top left corner.
inline constexpr int kDialogOffset = 320;

// `wanted` moved, and no farther than it must be, so that a window of `size` lies inside `area`. A window
// that is larger keeps its top left corner inside.
QPoint InsideArea(QPoint wanted, QSize size, const QRect& area);

// Moves a window that is not shown yet to `wanted`, wholly on the screen there.
void PlaceAt(QWidget& window, QPoint wanted);

}  // namespace corvane
