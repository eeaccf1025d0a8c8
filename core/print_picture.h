#pragma once

#include <filesystem>
#include <string>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Prints the picture on screen, `picture`, a bitmap of AppDir whose size the size fields give: at its own
// size or reduced to the page, in its middle. A slot's picture that is lost is made again first. The place is
// left in PrintScale, PrintLeft and PrintTop.
void PrintPicture(ModCV& cv, Platform& os, const std::filesystem::path& picture,
                  const std::string& documentName);

}  // namespace corvane
