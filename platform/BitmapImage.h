#pragma once

#include <QImage>

#include "formats/bitmap_file.h"

namespace corvane {

// Parts of a working bitmap as pictures ready for the screen (Format_RGB32); null where they cannot be read
// or held in memory. Qt's own bitmap reader is not used: it refuses large pictures.

// `part` lies inside the picture.
QImage LoadPart(const BitmapFile& picture, const QRect& part);
// The picture, reduced where `size` is smaller.
QImage LoadReduced(const BitmapFile& picture, QSize size);
// The whole picture of a file; null too where that is missing or damaged.
QImage LoadBitmapImage(const std::filesystem::path& path);

inline QSize SizeOf(const BitmapFile& picture) { return {picture.Width(), picture.Height()}; }

}  // namespace corvane
