#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/modcv.h"

namespace corvane {

// The 36 cards of a written file, 80 characters each. Names are cut to what their card holds; characters
// outside printable ASCII become "?", quotes are doubled.
struct WrittenHeader {
  int bitsPerPixel = 8;
  int width = 0;
  int height = 0;
  std::string source{};         // name of the image's own file
  std::string originalFiles{};  // names of the files it was made from; "" for a single source
  std::string comment{};        // 70 characters, quotes included (see CommentValue)
};
std::vector<std::string> WrittenCards(const WrittenHeader& header);

// The 70 characters of the comment card's value for a typed text.
std::string CommentValue(const std::string& typed);

// Values to big-endian 16-bit pixels, rounded to the nearest (ties to even), limited to 0..65535;
// not-a-number is 0.
void EncodeSixteen(const float* values, unsigned char* raw, std::size_t count);

// The 36 cards into HeaderCards; for BytesPerPixel = 1 also FitsOutBuf from DisplayBits (the file's first row
// is the top line), with FitsFileSize. ImageWidth, ImageHeight and RowStride describe the picture.
void BuildFitsHeader(ModCV& cv);

// The current slot's data into ImageData, brought into 0..32767 by the rule of `code` (the slot's bytes per
// pixel when the save began: 2, 4 or -4), which BytesPerPixel becomes. ImageMin and ImageMax follow.
void PrepareSixteenBit(ModCV& cv, int code);
// The same rule for the present ImageData, whose range is found first.
void FitRange(ModCV& cv, int code);
// ImageData into FitsOutBuf as 16-bit pixels, with FitsFileSize; ImageData becomes the encoded values,
// ImageWidth and ImageHeight its size.
void EncodeSixteenBit(ModCV& cv);
// Prepare, the window's own operation on ImageData, encode. False from the operation ends it there.
bool SixteenBitSave(ModCV& cv, int code, const std::function<bool()>& operation);

// HeaderCards and FitsOutBuf as a file. 0 or an errno with an old file untouched.
int WriteFits(const ModCV& cv, const std::filesystem::path& path);

}  // namespace corvane
