#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "core/modcv.h"
#include "core/open_image.h"
#include "platform/desk.h"
#include "platform/platform.h"

namespace corvane {

struct SaveTarget {
  std::filesystem::path path;
  ImageKind kind = ImageKind::Unknown;
};

// The Save dialog. Sets SaveDir; nothing after a cancel, or after the message for an extension that is not
// ours or a name that the program itself uses.
std::optional<SaveTarget> AskSaveFile(ModCV& cv, Platform& os);

// Asks for bits and comment, writes the FITS file and stores it in the current slot (header of 10 cards, data
// as the file holds them, code, size); the slot keeps its name. DisplayBits and the size fields describe the
// picture; BytesPerPixel is its code, 1 where no data of full precision fit it. `fillSixteen` fills
// FitsOutBuf for 16 bits; false from it abandons the save. False after a message: slot and store are as
// before.
bool SaveFits(ModCV& cv, Platform& os, Desk& desk, const std::filesystem::path& path,
              const std::function<bool()>& fillSixteen);

// Copies a display bitmap to the file. The current slot becomes 8-bit. False after a message.
bool SaveBitmap(ModCV& cv, Platform& os, const std::filesystem::path& picture,
                const std::filesystem::path& path);

}  // namespace corvane
