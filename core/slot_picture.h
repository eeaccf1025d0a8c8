#pragma once

#include <filesystem>
#include <optional>

#include "base/refusal.h"
#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Sets the size fields for the display bitmap at `path`. On a refusal the store stays as it was.
std::optional<Refusal> ReadBitmapHeader(ModCV& cv, const std::filesystem::path& path);
// The same, and its pixel bytes into DisplayBits. On a refusal the store stays as it was, except that a disk
// that fails during the read leaves some pixel bytes changed.
std::optional<Refusal> LoadDisplayBits(ModCV& cv, const std::filesystem::path& path);

// Loads the display bitmap of a slot into DisplayBits, with its sizes. One that has vanished or is damaged is
// made again where it is the rendering of the slot's data. False after a message otherwise: the working state
// is then unspecified, the slots are as before.
bool LoadSlotPicture(ModCV& cv, Platform& os, int slot);
// Ensures that the slot's picture file exists. DisplayBits hold that picture: a file that has vanished or is
// damaged is written again from them. False after a message.
bool EnsureSlotPicture(ModCV& cv, Platform& os, int slot);

// Makes the picture of a slot again as its Rendering asks, which is not None, from the slot's data, also in
// DisplayBits. On a refusal the file holds what it held.
std::optional<Refusal> RenderAgain(ModCV& cv, int slot);

// Checks `picture`, a display bitmap of AppDir, and renames it to the picture of `slot`, which the size
// fields then describe. After a refusal all is as before.
std::optional<Refusal> MoveToSlot(ModCV& cv, const std::filesystem::path& picture, int slot);

// `picture` becomes that of the current slot: an 8-bit image whose name begins with "~". False after a
// message, with slot and files as before, where it is damaged or can't be moved.
bool KeepPicture(ModCV& cv, Platform& os, const std::filesystem::path& picture);

// What a tool does before another window takes its place: a result that is neither saved nor undone
// (ImageChanged) becomes the current slot's picture, an 8-bit one whose name begins with "~"; the tool's
// files go. False after a message, with slot and files as before, where the result cannot be kept.
bool KeepWorkingImage(ModCV& cv, Platform& os);

}  // namespace corvane
