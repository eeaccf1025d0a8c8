#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "base/display_bitmap.h"
#include "base/refusal.h"
#include "formats/bitmap_format.h"

namespace corvane {

// What keeps a file from being a Windows bitmap with a 40-byte information header and no compression: one
// refusal for each fault, in the order they are shown.
std::vector<Refusal> FindBitmapFaults(const std::filesystem::path& path);

// The upright picture of an uncompressed bitmap of 8, 24 or 32 bits as gray levels, and the fields of its
// file. On a refusal both stay as they were.
std::optional<Refusal> ReadGrayPicture(const std::filesystem::path& path, DisplayBitmap& picture,
                                       BitmapFields& fields);

}  // namespace corvane
