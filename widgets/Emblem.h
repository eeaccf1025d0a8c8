#pragma once

#include <QIcon>
#include <QPixmap>

namespace corvane {

// The program's own drawings: a night sky with its name, and the picture of its windows.
QPixmap SplashPicture(QSize size, qreal pixelRatio);
QIcon ProgramIcon();

}  // namespace corvane
