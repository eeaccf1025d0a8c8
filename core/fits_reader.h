#pragma once

#include <filesystem>

#include "core/files.h"
#include "core/fits_format.h"
#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Reads the cards up to END into HeaderCards and HeaderCount; HeaderOK tells whether they pass.
void ReadFitsHeader(ModCV& cv, Platform& os, const std::filesystem::path& path);

// Reads the data that the cards describe into ImageData with its size, type and FitsFileSize. Sets LoadFailed
// after a message and leaves the store as it was.
void ReadFitsData(ModCV& cv, Platform& os, const std::filesystem::path& path);

// Reads and decodes all pixels of `file` into `values`; false when the file ends before them. Needs one small
// buffer beside the values.
bool ReadPixels(const InputFile& file, const FitsLayout& layout, float* values);

}  // namespace corvane
