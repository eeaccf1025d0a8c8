#pragma once

#include <QImage>
#include <QList>
#include <cstdint>
#include <filesystem>

#include "core/files.h"

namespace corvane {

// A working bitmap of ours as a picture: 8 bits with the file's palette (Format_Indexed8) or 24 bits
// (Format_RGB888), upright. Null where the file is missing, damaged or too large for memory. Qt's own
// bitmap reader is not used: it refuses large pictures.
QImage LoadBitmapImage(const std::filesystem::path& path);

// A working bitmap kept open, of which any part can be had without the rest in memory. It goes on showing
// the file it opened, also after that was deleted or another was renamed over it.
class BitmapFile {
 public:
  // Not open where the file is missing or damaged.
  explicit BitmapFile(const std::filesystem::path& path);
  bool IsOpen() const { return bits_ != 0; }
  QSize Size() const { return {width_, height_}; }
  // The pixels of `part`, which lies inside the picture, ready for the screen (Format_RGB32). Null where they
  // cannot be read any more.
  QImage Part(const QRect& part) const;
  // All pixels in the formats of LoadBitmapImage.
  QImage Whole() const;

 private:
  bool ReadHeader();
  bool ReadRows(const QRect& part, QImage& image) const;
  void CopyRow(const unsigned char* source, QImage& image, int y) const;

  InputFile file_;
  QList<QRgb> palette_;
  int bits_ = 0;
  int width_ = 0;
  int height_ = 0;
  std::int64_t stride_ = 0;
  std::int64_t offset_ = 0;
};

}  // namespace corvane
