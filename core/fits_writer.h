#pragma once

#include <filesystem>
#include <string>

#include "core/modcv.h"

namespace corvane {

// Fills HeaderCards with the 36 cards and, where BytesPerPixel is 1, FitsOutBuf and FitsFileSize from
// DisplayBits (the file's first row is the top line). ImageWidth, ImageHeight and RowStride describe the
// picture; the header names `source` where OriginalFiles is empty.
void BuildFitsHeader(ModCV& cv, const std::string& source);

// Sets ImageData to the data of a slot, brought into 0..32767 by the rule of `precision`: 2, 4 or -4, the
// slot's bytes per pixel when the save began. Sets BytesPerPixel, ImageMin and ImageMax to match.
void PrepareSixteenBit(ModCV& cv, int slot, int precision);

// Encodes ImageData as 16-bit pixels into FitsOutBuf. Sets FitsFileSize, ImageWidth and ImageHeight.
void EncodeSixteenBit(ModCV& cv);

// Decodes the pixels in FitsOutBuf, of BytesPerPixel each, into ImageData as a reader of the file does. They
// are about to replace the slot's data, so its memory is used again where ImageData shares it. Throws
// std::bad_alloc with all as before.
void TakeWrittenData(ModCV& cv, int slot);

// Writes HeaderCards and FitsOutBuf. Returns 0, or an errno with an old file untouched.
int WriteFits(const ModCV& cv, const std::filesystem::path& path);

}  // namespace corvane
