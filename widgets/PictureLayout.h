#pragma once

#include <QLabel>
#include <QLayout>
#include <QMainWindow>

#include "widgets/PictureArea.h"

namespace corvane {

// Fills a window: the list above the picture, which takes the room that there is, `side` beside it, and a
// line of status text under it.
void LayOutAroundPicture(QMainWindow& window, QWidget* list, PictureArea* picture, QLayout* side,
                         QLabel* status);

}  // namespace corvane
