#pragma once

#include <filesystem>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// True when the file is a Windows bitmap with a 40-byte information header and no compression; says why not
// in one message for each fault.
bool CheckBitmap(ModCV& cv, Platform& os, const std::filesystem::path& path);

// Reads an uncompressed bitmap of 8, 24 or 32 bits, upright, as gray levels into DisplayBits and writes the
// display bitmap of slot ImageCount. Sets LoadFailed after a message.
void ReadBitmap(ModCV& cv, Platform& os, const std::filesystem::path& path);

}  // namespace corvane
