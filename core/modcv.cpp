#include "core/modcv.h"

#include <utility>

#include "base/levels.h"
#include "base/numeric.h"
#include "core/working_files.h"
#include "formats/bitmap_format.h"

namespace corvane {
namespace {

// The one list of what a slot consists of.
template <class Visit>
void ForEachSlotField(ModCV& cv, Visit visit) {
  visit(cv.SlotName);
  visit(cv.SlotBytesPerPixel);
  visit(cv.SlotFileSize);
  visit(cv.SlotHeader);
  visit(cv.SlotData);
  visit(cv.SlotRendering);
}

}  // namespace

int ModCV::Width() const { return RoundEven(ImageWidth); }
int ModCV::Height() const { return RoundEven(ImageHeight); }
GrayView ModCV::Display() { return {DisplayBits.data(), Width(), Height(), RowStride}; }
ConstGrayView ModCV::Display() const { return {DisplayBits.data(), Width(), Height(), RowStride}; }
std::filesystem::path ModCV::SlotBitmap(int slot) const { return AppDir / SlotBitmapName(slot); }

void DescribeDisplayBitmap(ModCV& cv, int width, int height) {
  cv.RowStride = RowStrideFor(width);
  const double bytes = static_cast<double>(cv.RowStride) * height;
  cv.ImageWidth = static_cast<float>(width);
  cv.ImageHeight = static_cast<float>(height);
  cv.ImageAspect = height > 0 ? cv.ImageWidth / cv.ImageHeight : 1.0f;
  cv.BitmapDataSize = static_cast<float>(bytes);
  cv.BitmapFileSize = static_cast<float>(bytes + kBitmapHeaderSize);
  cv.DataOffset = kBitmapHeaderSize;
}

void StoreSlot(ModCV& cv, int slot) {
  if (slot < 0 || slot >= kSlots) return;
  cv.SlotFileSize[slot] = cv.FitsFileSize;
  cv.SlotBytesPerPixel[slot] = cv.BytesPerPixel;
  cv.SlotData[slot] = cv.ImageData;
  cv.SlotHeader[slot] = cv.HeaderCards;
  cv.SlotRendering[slot] = cv.ImageData.Empty() ? Rendering::None : Rendering::AsOpened;
}

void SwapSlots(ModCV& cv, int a, int b) {
  ForEachSlotField(cv, [a, b](auto& field) { std::swap(field[a], field[b]); });
}

void ClearSlot(ModCV& cv, int slot) {
  ForEachSlotField(cv, [slot](auto& field) { field[slot] = {}; });
  cv.SlotFileSize[slot] = "0";
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
