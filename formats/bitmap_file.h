#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "base/files.h"
#include "formats/bitmap_format.h"

namespace corvane {

// A part of a picture; its lines are counted from the top.
struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

// A working bitmap of 8 bits, with its palette, or of 24, kept open: any part of it can be read without the
// rest in memory. It keeps reading the file it opened, even after that was deleted or another one renamed
// over it.
class BitmapFile {
 public:
  // Not open where the file is missing or damaged. Memory is taken here and not while parts are read.
  explicit BitmapFile(const std::filesystem::path& path);
  bool IsOpen() const { return layout_.width > 0; }
  int Width() const { return layout_.width; }
  int Height() const { return layout_.height; }
  // The pixels of `part`, which lies inside the picture, as 0xffRRGGBB, line after line. False where they
  // cannot be read any more.
  bool Read(const PixelRect& part, std::uint32_t* pixels) const;
  // Whether pixels are levels from black to white: eight bits and a palette that shows each as it is.
  bool IsGray() const { return isGray_; }
  // Adds the levels of `rows` lines of a gray picture from line `top` on, column by column, to `sums`, one
  // for each column. False where they cannot be read any more.
  bool AddLevels(int top, int rows, std::vector<std::uint32_t>& sums) const;

 private:
  template <class TakeRow>
  bool ReadRows(const PixelRect& part, TakeRow takeRow) const;
  bool ReadHeader();
  void ConvertRow(const unsigned char* source, std::uint32_t* pixels, int width) const;

  InputFile file_;
  PixelLayout layout_;
  std::array<std::uint32_t, 256> palette_{};
  bool isGray_ = false;
  mutable std::vector<unsigned char> block_;
};

// The picture reduced to `width` x `height`, neither larger than its own: each new pixel is the mean of those
// it covers, channel by channel. False where the file cannot be read any more.
bool ReadReduced(const BitmapFile& picture, int width, int height, std::uint32_t* pixels);

}  // namespace corvane
