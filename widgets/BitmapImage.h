#pragma once

#include <QImage>
#include <filesystem>

namespace corvane {

// A working bitmap of ours as a picture: 8 bits with the file's palette (Format_Indexed8) or 24 bits
// (Format_RGB888), upright. Null where the file is missing, damaged or too large for memory. Qt's own
// bitmap reader is not used: it refuses large pictures.
QImage LoadBitmapImage(const std::filesystem::path& path);

}  // namespace corvane
