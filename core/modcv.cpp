#include "core/modcv.h"

#include "core/numeric.h"
#include "core/render.h"
#include "core/working_files.h"

namespace corvane {

int ModCV::Width() const { return RoundEven(ImageWidth); }
int ModCV::Height() const { return RoundEven(ImageHeight); }
GrayView ModCV::Display() { return {DisplayBits.data(), Width(), Height(), RowStride}; }
ConstGrayView ModCV::Display() const { return {DisplayBits.data(), Width(), Height(), RowStride}; }
std::filesystem::path ModCV::SlotBitmap(int slot) const { return AppDir / SlotBitmapName(slot); }

void StoreSlot(ModCV& cv, int slot) {
  if (slot < 0 || slot >= kSlots) return;
  cv.SlotFileSize[slot] = cv.FitsFileSize;
  cv.SlotBytesPerPixel[slot] = cv.BytesPerPixel;
  cv.SlotData[slot] = cv.ImageData;
  cv.SlotHeader[slot] = cv.HeaderCards;
  cv.SlotFullRange[slot] = false;
}

void LoadSlotData(ModCV& cv) {
  if (cv.CurrentSlot < 0 || cv.CurrentSlot >= kSlots) return;
  cv.ImageData = cv.SlotData[cv.CurrentSlot];
  const ValueRange range = FindRange(cv.ImageData.View());
  cv.ImageMin = range.min;
  cv.ImageMax = range.max;
}

std::string HeaderText(const ModCV& cv, int slot) {
  std::string text;
  if (slot < 0 || slot >= kSlots) return text;
  for (const std::string& card : cv.SlotHeader[slot]) {
    for (const char character : card)
      text += static_cast<unsigned char>(character) < ' ' || character == '\x7f' ? '?' : character;
    text += "\r\n";
  }
  return text;
}

}  // namespace corvane
