#include "align/alignment.h"

#include <algorithm>
#include <new>
#include <utility>

#include "base/files.h"
#include "core/accepted.h"
#include "core/slot_picture.h"
#include "core/working_files.h"
#include "formats/bitmap_format.h"
#include "formats/sixteen_range.h"
#include "platform/busy.h"

namespace corvane {
namespace {

constexpr char kMosaicName[] = "Mosaic...";

std::filesystem::path HoldFile(const ModCV& cv, int slot) { return cv.AppDir / SlotHoldName(slot); }

std::vector<MarkedPicture> Pictures(std::span<const MarkedSlot> marked) {
  std::vector<MarkedPicture> pictures;
  for (const MarkedSlot& one : marked) pictures.push_back(one.picture);
  return pictures;
}

bool HasDataOf(const ModCV& cv, const MarkedSlot& marked) {
  const FloatImage& data = cv.SlotData[marked.slot];
  return !data.Empty() && data.Width() == marked.picture.width && data.Height() == marked.picture.height;
}

// The marked picture in DisplayBits. False after a message.
bool LoadMarked(ModCV& cv, Platform& os, const MarkedSlot& marked) {
  if (!LoadSlotPicture(cv, os, marked.slot)) return false;
  if (cv.Width() == marked.picture.width && cv.Height() == marked.picture.height) return true;
  Refuse(os, Damaged(cv.SlotBitmap(marked.slot)));
  return false;
}

// The picture of the slot becomes its hold file, "temp.bmp" its picture; or nothing is moved.
std::optional<Refusal> ExchangePicture(ModCV& cv, int slot) {
  const std::filesystem::path own = cv.SlotBitmap(slot);
  const std::filesystem::path hold = HoldFile(cv, slot);
  if (const int error = QuietRename(own, hold)) return Damaged(own, error);
  auto refusal = MoveToSlot(cv, cv.AppDir / kTempBitmap, slot);
  if (refusal) QuietRename(hold, own);
  return refusal;
}

// Crops one slot by way of `OutPixels`, a picture of the frame's size. False after a message.
bool AlignImage(ModCV& cv, Platform& os, const MarkedSlot& marked, const AlignFrame& frame,
                DisplayBitmap& OutPixels, std::vector<CroppedSlot>& done) {
  const auto& [slot, picture] = marked;
  if (!LoadMarked(cv, os, marked)) return false;
  Crop(cv.Display(), picture.mark, frame, OutPixels.View());
  CroppedSlot cropped{slot, {}, cv.SlotName[slot], cv.SlotRendering[slot]};
  if (HasDataOf(cv, marked)) cropped.data = Crop(cv.SlotData[slot].View(), picture.mark, frame);
  auto refusal = WriteWorkingBitmap(cv, cv.AppDir / kGrayTemplate, cv.AppDir / kTempBitmap, OutPixels.View());
  if (!refusal) refusal = ExchangePicture(cv, slot);
  if (!Accepted(os, refusal)) return false;
  if (!cv.SlotName[slot].starts_with('~')) cv.SlotName[slot].insert(0, 1, '~');
  cv.SlotRendering[slot] = Rendering::None;
  done.push_back(std::move(cropped));
  return true;
}

bool AlignImages(ModCV& cv, Platform& os, std::span<const MarkedSlot> marked,
                 std::vector<CroppedSlot>& done) try {
  const AlignFrame frame = CropFrame(Pictures(marked));
  DisplayBitmap OutPixels(frame.Width(), frame.Height());
  return std::all_of(marked.begin(), marked.end(),
                     [&](const MarkedSlot& one) { return AlignImage(cv, os, one, frame, OutPixels, done); });
} catch (const std::bad_alloc&) {
  Refuse(os, NotEnoughMemory());
  return false;
}

bool AllSixteenBit(const ModCV& cv, std::span<const MarkedSlot> marked) {
  return std::all_of(marked.begin(), marked.end(), [&cv](const MarkedSlot& one) {
    return cv.SlotBytesPerPixel[one.slot] == 2 && HasDataOf(cv, one);
  });
}

struct Mosaic {
  DisplayBitmap OutPixels;
  FloatImage data;  // empty for a mosaic of levels
};

Mosaic BlackMosaic(const AlignFrame& frame, bool SixteenBitMosaic) {
  Mosaic mosaic{DisplayBitmap(frame.Width(), frame.Height()), {}};
  if (SixteenBitMosaic) {
    mosaic.data = FloatImage(frame.Width(), frame.Height());
    const FloatView values = mosaic.data.Overwrite();
    std::fill_n(values.values, values.Count(), 0.0f);
  }
  return mosaic;
}

bool ImageMosaic(ModCV& cv, Platform& os, const MarkedSlot& marked, const AlignFrame& frame, Mosaic& mosaic) {
  if (!LoadMarked(cv, os, marked)) return false;
  Paste(cv.Display(), marked.picture.mark, frame, mosaic.OutPixels.View());
  if (!mosaic.data.Empty())
    Paste(cv.SlotData[marked.slot].View(), marked.picture.mark, frame, mosaic.data.Overwrite());
  return true;
}

void StoreMosaic(ModCV& cv, FloatImage data) {
  const int slot = cv.ImageCount++;
  cv.BytesPerPixel = data.Empty() ? 1 : 2;
  cv.ImageData = std::move(data);
  cv.HeaderCards.clear();
  cv.HeaderCount = 0;
  cv.FitsFileSize = '0';
  StoreSlot(cv, slot);
  cv.SlotRendering[slot] = Rendering::None;
  cv.SlotName[slot] = kMosaicName;
  cv.CurrentSlot = slot;
  cv.CurrentName = kMosaicName;
}

std::string ListSources(const ModCV& cv, std::span<const MarkedSlot> marked) {
  std::string names;
  for (const MarkedSlot& one : marked) names += (names.empty() ? "" : ", ") + cv.SlotName[one.slot];
  return names;
}

}  // namespace

std::vector<CroppedSlot> CropSlots(ModCV& cv, Platform& os, std::span<const MarkedSlot> marked) {
  const Busy busy(os);
  std::vector<CroppedSlot> done;
  if (AlignImages(cv, os, marked, done)) return done;
  for (CroppedSlot& cropped : done) UndoCrop(cv, os, std::move(cropped));
  QuietDelete(cv.AppDir / kTempBitmap);
  return {};
}

void UndoCrop(ModCV& cv, Platform& os, CroppedSlot cropped) {
  const int slot = cropped.slot;
  auto refusal = MoveToSlot(cv, HoldFile(cv, slot), slot);
  if (refusal && cropped.rendering != Rendering::None) {
    cv.SlotRendering[slot] = cropped.rendering;
    refusal = RenderAgain(cv, slot);
  }
  if (!Accepted(os, refusal)) return KeepCrop(cv, std::move(cropped));
  cv.SlotName[slot] = cropped.name;
  cv.SlotRendering[slot] = cropped.rendering;
  QuietDelete(HoldFile(cv, slot));
}

void KeepCrop(ModCV& cv, CroppedSlot cropped) {
  const int slot = cropped.slot;
  // The levels of an 8-bit image are its data; those of others are stretched by the range of the whole image.
  const bool isRendered = cv.SlotBytesPerPixel[slot] == 1 && !cropped.data.Empty();
  cv.SlotRendering[slot] = isRendered ? cropped.rendering : Rendering::None;
  if (!cropped.data.Empty()) cv.SlotData[slot] = std::move(cropped.data);
  QuietDelete(HoldFile(cv, slot));
}

bool SaveCrop(ModCV& cv, Platform& os, Desk& desk, const CroppedSlot& cropped, const SaveTarget& target) {
  const int slot = cropped.slot;
  const ImageSave save{.path = target.path,
                       .slot = slot,
                       .picture = cv.SlotBitmap(slot),
                       .precision = cropped.data.Empty() ? 1 : cv.SlotBytesPerPixel[slot]};
  const bool saved =
      target.kind == ImageKind::Bitmap ? SaveBitmap(cv, os, save) : SaveFitsData(cv, os, desk, save, [&] {
        return IntoSixteenBitRange(cropped.data, save.precision).values;
      });
  if (saved) QuietDelete(HoldFile(cv, slot));
  return saved;
}

bool AddMosaic(ModCV& cv, Platform& os, std::span<const MarkedSlot> marked) try {
  if (!RoomForOneMore(cv, os)) return false;
  const AlignFrame frame = MosaicFrame(Pictures(marked));
  if (!FitsBitmapFile(frame)) {
    os.Message("The mosaic would be larger than a bitmap file can be.", "SIZE ERROR");
    return false;
  }
  const Busy busy(os);
  Mosaic mosaic = BlackMosaic(frame, AllSixteenBit(cv, marked));
  const bool pasted = std::all_of(marked.begin(), marked.end(), [&](const MarkedSlot& one) {
    return ImageMosaic(cv, os, one, frame, mosaic);
  });
  if (!pasted) return false;
  const std::filesystem::path file = cv.SlotBitmap(cv.ImageCount);
  if (!Accepted(os, WriteWorkingBitmap(cv, cv.AppDir / kGrayTemplate, file, mosaic.OutPixels.View()))) {
    QuietDelete(file);
    return false;
  }
  StoreMosaic(cv, std::move(mosaic.data));
  return true;
} catch (const std::bad_alloc&) {
  Refuse(os, NotEnoughMemory());
  return false;
}

void RemoveMosaic(ModCV& cv) {
  const int slot = --cv.ImageCount;
  QuietDelete(cv.SlotBitmap(slot));
  ClearSlot(cv, slot);
}

bool SaveMosaic(ModCV& cv, Platform& os, Desk& desk, std::span<const MarkedSlot> marked,
                const SaveTarget& target) {
  const int slot = cv.ImageCount - 1;
  const ImageSave save{.path = target.path,
                       .slot = slot,
                       .picture = cv.SlotBitmap(slot),
                       .precision = cv.SlotBytesPerPixel[slot]};
  if (target.kind == ImageKind::Bitmap) return SaveBitmap(cv, os, save);
  cv.OriginalFiles = ListSources(cv, marked);
  return SaveFitsData(cv, os, desk, save, [&] { return cv.SlotData[slot]; });
}

}  // namespace corvane
