#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/drawing.h"

namespace corvane {

// An 80-character card: keyword, "= ", the value right-adjusted to column 30.
std::string Card(std::string_view keyword, std::string_view value);
std::string Card(std::string_view keyword, long value);
// Any text, filled to 80 characters with blanks.
std::string RawCard(std::string_view text);

// A FITS file from cards (END is added) and data bytes; header and data are filled up to whole blocks.
std::string FitsBytes(const std::vector<std::string>& cards, std::string_view data);

// SIMPLE, BITPIX, NAXIS, NAXIS1, NAXIS2, then `more`.
std::vector<std::string> ImageCards(int bitpix, int width, int height,
                                    const std::vector<std::string>& more = {});
// Raw values as big-endian pixels of type `bitpix` (8, 16, 32, -32, -64); integers are cut to their low bits,
// so 16-bit pixels may be given as -32768..65535.
std::string FitsPixels(int bitpix, const std::vector<double>& raw);
// Cards and pixels together; `more` takes BSCALE, BZERO and whatever else.
std::string FitsImage(int bitpix, int width, int height, const std::vector<double>& raw,
                      const std::vector<std::string>& more = {});

// An uncompressed Windows bitmap of 8, 24 or 32 bits. `pixel(x, y)` counts y from the top line of the picture
// whatever the order of the stored rows; in 8 bits its red byte is the palette index.
struct BitmapSpec {
  int bits = 24;
  int width = 0;
  int height = 0;
  bool topDown = false;
  std::function<Color(int x, int y)> pixel;
  std::vector<Color> palette;  // 8 bits; empty = the gray ramp
};
std::string BitmapBytes(const BitmapSpec& spec);
// A gray picture; `level(x, y)` counts y from the top line.
std::string GrayBitmap(int bits, int width, int height, const std::function<int(int x, int y)>& level);

// Little-endian fields of a file in memory, for looking at them and for spoiling them.
std::uint32_t FieldAt(std::string_view bytes, std::size_t offset);
void SetField(std::string& bytes, std::size_t offset, std::uint32_t value, int size = 4);

}  // namespace corvane
