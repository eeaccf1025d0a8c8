#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/color_bitmap.h"
#include "base/display_bitmap.h"
#include "base/refusal.h"
#include "core/modcv.h"

namespace corvane {

// Files in AppDir that the program writes.
inline constexpr char kTempBitmap[] = "temp.bmp";      // a tool's result
inline constexpr char kDummyBitmap[] = "dummy.bmp";    // a view's result
inline constexpr char kExpandBitmap[] = "expand.bmp";  // the magnified picture
inline constexpr char kHist1[] = "hist1.bmp";          // histogram graph before a tool's change
inline constexpr char kHist2[] = "hist2.bmp";          // and after it
inline constexpr char kColorBitmap[] = "f_color.bmp";  // the color composite
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

// WriteDisplayBitmap for a working file. Where AppDir or its shipped files have vanished they are made again.
std::optional<Refusal> WriteWorkingBitmap(const ModCV& cv, const std::filesystem::path& headerFile,
                                          const std::filesystem::path& target, ConstGrayView pixels);
// The same for a picture in color, by the template of its own.
std::optional<Refusal> WriteWorkingBitmap(const ModCV& cv, const std::filesystem::path& target,
                                          const ColorBitmap& picture);

}  // namespace corvane
