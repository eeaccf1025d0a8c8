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

// Asks for a file and opens it as a new slot: the whole Open command but its display. The new slot, which is
// the current one then, or nothing after a cancel or a message: all slots are as they were, the working state
// is not (show CurrentSlot again where an image is open). Sets OpenTitle, OpenPath and DefaultDir.
std::optional<int> OpenImage(ModCV& cv, Platform& os, const FileRequest& request);
// The same for a file already chosen.
std::optional<int> OpenImageFile(ModCV& cv, Platform& os, const std::filesystem::path& path);

// Removes the current slot and moves the later ones down; the last slot becomes the current one (0 where none
// is left). False after a message where their pictures can't be moved: the image stays open and no picture is
// found under another's name. Slots are then as before, or, where moving back failed too, in another order.
bool CloseImage(ModCV& cv, Platform& os);

}  // namespace corvane
