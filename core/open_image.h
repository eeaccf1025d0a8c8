#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

enum class ImageKind { Unknown, Bitmap, Fits };
// The one test of file extensions: all lower or all upper case.
ImageKind KindOf(const std::string& name);

// The Open dialog as every window shows it.
FileRequest OpenRequest(const ModCV& cv, const std::string& title);

// False, after the message, where all slots are taken.
bool RoomForOneMore(const ModCV& cv, Platform& os);

// Asks for a file and opens it as a new slot, which becomes the current one: the Open command without its
// display. Returns the slot, or nothing after a cancel or a message: the slots are then as before, but the
// working state is not, so an open image must be shown again. Sets OpenTitle, OpenPath and DefaultDir.
std::optional<int> OpenImage(ModCV& cv, Platform& os, const FileRequest& request);
// The same for a file already chosen.
std::optional<int> OpenImageFile(ModCV& cv, Platform& os, const std::filesystem::path& path);

// Removes the current slot and moves the later ones down; the last slot becomes the current one (0 where none
// is left). False, after a message, where their picture files can't be moved: the image stays open and every
// slot keeps its own picture. Only where moving them back fails too, the slots are then in another order.
bool CloseImage(ModCV& cv, Platform& os);

}  // namespace corvane
