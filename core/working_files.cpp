#include "core/working_files.h"

#include <algorithm>

#include "base/files.h"
#include "formats/bitmap_format.h"

namespace corvane {
namespace {

// `write`, once more where the first time failed and the folder could be made again.
template <class Write>
std::optional<Refusal> WithFolder(const ModCV& cv, Write write) {
  auto refusal = write();
  if (!refusal || !cv.RefillAppDir) return refusal;
  cv.RefillAppDir();
  return write();
}

}  // namespace

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

std::optional<Refusal> WriteWorkingBitmap(const ModCV& cv, const std::filesystem::path& headerFile,
                                          const std::filesystem::path& target, ConstGrayView pixels) {
  return WithFolder(cv, [&] { return WriteDisplayBitmap(headerFile, target, pixels); });
}

std::optional<Refusal> WriteWorkingBitmap(const ModCV& cv, const std::filesystem::path& target,
                                          const ColorBitmap& picture) {
  return WithFolder(cv, [&] {
    return WriteColorBitmap(cv.AppDir / kColorTemplate, target, picture.width, picture.height,
                            {picture.bits.data(), picture.bits.size()});
  });
}

}  // namespace corvane
