#pragma once

#include <filesystem>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Reads the cards up to END into HeaderCards and HeaderCount; HeaderOK tells whether they pass.
void ReadFitsHeader(ModCV& cv, Platform& os, const std::filesystem::path& path);

// Reads the data that the cards describe into ImageData with its size, type and FitsFileSize. Sets LoadFailed
// after a message and leaves the store as it was.
void ReadFitsData(ModCV& cv, Platform& os, const std::filesystem::path& path);

}  // namespace corvane
