#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/modcv.h"
#include "core/refusal.h"
#include "platform/platform.h"

namespace corvane {

// Files in AppDir that the program writes.
inline constexpr char kTempBitmap[] = "temp.bmp";      // a tool's result
inline constexpr char kDummyBitmap[] = "dummy.bmp";    // a view's result
inline constexpr char kExpandBitmap[] = "expand.bmp";  // the magnified picture
inline constexpr char kHist1[] = "hist1.bmp";          // histogram graph before a tool's change
inline constexpr char kHist2[] = "hist2.bmp";          // and after it
inline constexpr char kColorBitmap[] = "f_color.bmp";  // the colour composite
// Files that are shipped.
inline constexpr char kGrayTemplate[] = "gr_8.bm_";
inline constexpr char kColorTemplate[] = "gr_24.bm_";
inline constexpr const char* kPalettes[] = {"btgw_fc.bm_", "royw_fc.bm_", "brw_fc.bm_"};
inline constexpr char kCancelIcon[] = "cancel32.ico";
inline constexpr char kHelpFile[] = "CORVANEIII.HLP";

std::string SlotBitmapName(int slot);  // "3temp.bmp"
std::string SlotHoldName(int slot);    // "3hold.bmp"

// True for the name of any working or shipped file: nothing a user may save over in AppDir.
bool IsProgramFile(const std::string& name);

// Deletion sets: exactly these names, nothing that a link points to and no directories; absent ones are no
// error.
void DeleteLeftovers(const std::filesystem::path& appDir);  // at start-up
void DeleteViewFiles(const std::filesystem::path& appDir);  // at the viewer's unload
void DeleteToolFiles(const std::filesystem::path& appDir);  // when a tool is left
void DeleteSlotBitmaps(const ModCV& cv);                    // at exit

// Moves `picture`, a display bitmap of AppDir, once it is known to be sound, to that of `slot`. The size
// fields describe it then. After a refusal all is as before.
std::optional<Refusal> MoveToSlot(ModCV& cv, const std::filesystem::path& picture, int slot);

// `picture` becomes that of the current slot: an 8-bit image whose name begins with "~". False after a
// message, with slot and files as before, where it is damaged or can't be moved.
bool KeepPicture(ModCV& cv, Platform& os, const std::filesystem::path& picture);

// What a tool does before another window takes its place: a result that is neither saved nor undone
// (ImageChanged) becomes the current slot's picture, an 8-bit one whose name begins with "~"; the tool's
// files go. False after a message, with slot and files as before, where the result cannot be kept.
bool KeepWorkingImage(ModCV& cv, Platform& os);

}  // namespace corvane
