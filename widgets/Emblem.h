#pragma once

#include <QIcon>
#include <QImage>
#include <QPixmap>

namespace corvane {

// The program's own drawings: a night sky with its name, and the picture of its windows.
QPixmap SplashPicture(QSize size, qreal pixelRatio);
QIcon ProgramIcon();
// The picture of the icon alone, and the same shapes as a scalable drawing.
QImage ProgramPicture(int side);
QString ProgramDrawing();

}  // namespace corvane
