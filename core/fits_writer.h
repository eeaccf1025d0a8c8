#pragma once

#include <filesystem>
#include <string>

#include "core/modcv.h"

namespace corvane {

// The 36 cards into HeaderCards; for BytesPerPixel = 1 also FitsOutBuf from DisplayBits (the file's first row
// is the top line), with FitsFileSize. ImageWidth, ImageHeight and RowStride describe the picture; `source`
// is the file that the header names where OriginalFiles is empty.
void BuildFitsHeader(ModCV& cv, const std::string& source);

// The data of a slot into ImageData, brought into 0..32767 by the rule of `precision` (2, 4 or -4, what the
// slot had when the save began), which BytesPerPixel becomes. ImageMin and ImageMax follow.
void PrepareSixteenBit(ModCV& cv, int slot, int precision);

// ImageData into FitsOutBuf as 16-bit pixels, with FitsFileSize; ImageWidth and ImageHeight become its size.
void EncodeSixteenBit(ModCV& cv);

// The pixels in FitsOutBuf, of BytesPerPixel each, become ImageData as a reader of the file decodes them. The
// memory of the slot's data, which they are about to replace, is used again where ImageData shares it. Throws
// std::bad_alloc with all as before.
void TakeWrittenData(ModCV& cv, int slot);

// HeaderCards and FitsOutBuf as a file. 0 or an errno with an old file untouched.
int WriteFits(const ModCV& cv, const std::filesystem::path& path);

}  // namespace corvane
