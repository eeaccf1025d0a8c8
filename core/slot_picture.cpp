#include "core/slot_picture.h"

#include "base/files.h"
#include "core/accepted.h"
#include "core/render.h"
#include "core/working_files.h"
#include "formats/bitmap_format.h"

namespace corvane {

std::optional<Refusal> ReadBitmapHeader(ModCV& cv, const std::filesystem::path& path) {
  int width = 0;
  int height = 0;
  auto refusal = ReadDisplaySize(path, width, height);
  if (!refusal) DescribeDisplayBitmap(cv, width, height);
  return refusal;
}

std::optional<Refusal> LoadDisplayBits(ModCV& cv, const std::filesystem::path& path) {
  DisplayBitmap picture;
  picture.bits.Swap(cv.DisplayBits);  // memory of the right size is used again
  auto refusal = ReadDisplayBitmap(path, picture);
  picture.bits.Swap(cv.DisplayBits);
  if (!refusal) DescribeDisplayBitmap(cv, picture.width, picture.height);
  return refusal;
}

bool LoadSlotPicture(ModCV& cv, Platform& os, int slot) {
  auto refusal = LoadDisplayBits(cv, cv.SlotBitmap(slot));
  if (refusal && cv.SlotRendering[slot] != Rendering::None) refusal = RenderAgain(cv, slot);
  return Accepted(os, refusal);
}

bool EnsureSlotPicture(ModCV& cv, Platform& os, int slot) {
  if (!ReadBitmapHeader(cv, cv.SlotBitmap(slot))) return true;
  if (cv.DisplayBits.empty()) return LoadSlotPicture(cv, os, slot);
  return Accepted(os, WriteWorkingBitmap(cv, cv.AppDir / kGrayTemplate, cv.SlotBitmap(slot), cv.Display()));
}

std::optional<Refusal> RenderAgain(ModCV& cv, int slot) {
  cv.ImageData = cv.SlotData[slot];
  cv.BytesPerPixel = cv.SlotBytesPerPixel[slot];
  return RenderInto(cv, slot);
}

std::optional<Refusal> MoveToSlot(ModCV& cv, const std::filesystem::path& picture, int slot) {
  if (auto damaged = ReadBitmapHeader(cv, picture)) return damaged;
  const std::filesystem::path own = cv.SlotBitmap(slot);
  const int error = QuietRename(picture, own);
  if (error == 0) return std::nullopt;
  return Refusal{"FILE OPEN ERROR", "The file \"" + own.filename().string() +
                                        "\" can't be written. Error Number " + std::to_string(error)};
}

bool KeepPicture(ModCV& cv, Platform& os, const std::filesystem::path& picture) {
  const int slot = cv.CurrentSlot;
  if (!Accepted(os, MoveToSlot(cv, picture, slot))) return false;
  if (!cv.SlotName[slot].starts_with('~')) cv.SlotName[slot].insert(0, 1, '~');
  cv.SlotBytesPerPixel[slot] = 1;
  cv.SlotRendering[slot] = Rendering::None;
  cv.CurrentName = cv.SlotName[slot];
  return true;
}

bool KeepWorkingImage(ModCV& cv, Platform& os) {
  if (cv.ImageChanged && !KeepPicture(cv, os, cv.AppDir / kTempBitmap)) return false;
  DeleteToolFiles(cv.AppDir);
  cv.CurrentName = cv.SlotName[cv.CurrentSlot];
  return true;
}

}  // namespace corvane
