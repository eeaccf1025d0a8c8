#include "core/slot_picture.h"

#include "core/bitmap_file.h"
#include "core/open_image.h"
#include "core/render.h"

namespace corvane {
namespace {

// A tool's result is marked by its name, and a bitmap has no data.
bool IsPlainRendering(const ModCV& cv, int slot) {
  return !cv.SlotData[slot].Empty() && !cv.SlotName[slot].starts_with('~') &&
         KindOf(cv.SlotName[slot]) == ImageKind::Fits;
}

std::optional<Refusal> RenderAgain(ModCV& cv, int slot) {
  cv.ImageData = cv.SlotData[slot];
  cv.BytesPerPixel = cv.SlotBytesPerPixel[slot];
  return RenderInto(cv, slot);
}

}  // namespace

bool LoadSlotPicture(ModCV& cv, Platform& os, int slot) {
  auto refusal = LoadDisplayBits(cv, cv.SlotBitmap(slot));
  if (refusal && IsPlainRendering(cv, slot)) refusal = RenderAgain(cv, slot);
  if (refusal) os.Message(refusal->text, refusal->title);
  return !refusal;
}

bool EnsureSlotPicture(ModCV& cv, Platform& os, int slot) {
  return !ReadBitmapHeader(cv, cv.SlotBitmap(slot)) || LoadSlotPicture(cv, os, slot);
}

}  // namespace corvane
