#include "core/working_files.h"

#include <algorithm>

#include "core/bitmap_file.h"
#include "core/files.h"

namespace corvane {

std::string SlotBitmapName(int slot) { return std::to_string(slot) + kTempBitmap; }
std::string SlotHoldName(int slot) { return std::to_string(slot) + "hold.bmp"; }

bool IsProgramFile(const std::string& name) {
  for (int slot = 0; slot < kSlots; ++slot) {
    if (name == SlotBitmapName(slot) || name == SlotHoldName(slot)) return true;
  }
  static const std::string names[] = {kTempBitmap,  kDummyBitmap,  kExpandBitmap,  kHist1,       kHist2,
                                      kColorBitmap, kGrayTemplate, kColorTemplate, kPalettes[0], kPalettes[1],
                                      kPalettes[2], kCancelIcon,   kHelpFile};
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

void DeleteLeftovers(const std::filesystem::path& appDir) {
  for (int slot = 0; slot < kSlots; ++slot) {
    QuietDelete(appDir / SlotBitmapName(slot));
    QuietDelete(appDir / SlotHoldName(slot));
  }
  for (const char* name : {kDummyBitmap, kTempBitmap, kHist1, kHist2}) QuietDelete(appDir / name);
}

void DeleteViewFiles(const std::filesystem::path& appDir) {
  for (const char* name : {kTempBitmap, kColorBitmap, kExpandBitmap, kDummyBitmap})
    QuietDelete(appDir / name);
}

void DeleteToolFiles(const std::filesystem::path& appDir) {
  for (const char* name : {kTempBitmap, kHist1, kHist2}) QuietDelete(appDir / name);
}

void DeleteSlotBitmaps(const ModCV& cv) {
  for (int slot = 0; slot < cv.ImageCount; ++slot) QuietDelete(cv.SlotBitmap(slot));
}

std::optional<Refusal> MoveToSlot(ModCV& cv, const std::filesystem::path& picture, int slot) {
  if (auto damaged = ReadBitmapHeader(cv, picture)) return damaged;
  const std::filesystem::path own = cv.SlotBitmap(slot);
  if (QuietRename(picture, own)) return std::nullopt;
  return Refusal{"FILE OPEN ERROR", "The file \"" + own.filename().string() + "\" can't be written."};
}

bool KeepPicture(ModCV& cv, Platform& os, const std::filesystem::path& picture) {
  if (const auto refusal = MoveToSlot(cv, picture, cv.CurrentSlot)) {
    os.Message(refusal->text, refusal->title);
    return false;
  }
  std::string& name = cv.SlotName[cv.CurrentSlot];
  if (!name.starts_with('~')) name.insert(0, 1, '~');
  cv.SlotBytesPerPixel[cv.CurrentSlot] = 1;
  cv.CurrentName = name;
  return true;
}

bool KeepWorkingImage(ModCV& cv, Platform& os) {
  if (cv.ImageChanged && !KeepPicture(cv, os, cv.AppDir / kTempBitmap)) return false;
  DeleteToolFiles(cv.AppDir);
  cv.CurrentName = cv.SlotName[cv.CurrentSlot];
  return true;
}

}  // namespace corvane
