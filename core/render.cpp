#include "core/render.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "core/bitmap_file.h"
#include "core/level_count.h"
#include "core/level_kernels.h"
#include "core/working_files.h"

namespace corvane {
namespace {

// Room in DisplayBits for the picture of ImageData.
GrayView MakeDisplay(ModCV& cv) {
  const int width = cv.ImageData.Width();
  const int height = cv.ImageData.Height();
  const int stride = RowStrideFor(width);
  ReplaceSize(cv.DisplayBits, static_cast<std::size_t>(stride) * height);
  return {cv.DisplayBits.data(), width, height, stride};
}

// ImageMin, ImageMax and DisplayScale so that any range wider than 1 is stretched to all levels.
void FindFullRange(ModCV& cv) {
  const ValueRange range = FindRange(cv.ImageData.View());
  cv.ImageMin = range.min;
  cv.ImageMax = range.max;
  cv.DisplayScale = range.min + 1.0f < range.max ? 255.0f / (range.max - range.min) : 1.0f;
}

std::optional<Refusal> WriteSlotBitmap(ModCV& cv, int slot, ConstGrayView levels) {
  auto refusal = WriteDisplayBitmap(cv.AppDir / kGrayTemplate, cv.SlotBitmap(slot), levels);
  if (!refusal) DescribeDisplayBitmap(cv, levels.width, levels.height);
  return refusal;
}

}  // namespace

std::optional<Refusal> RenderInto(ModCV& cv, int slot) try {
  const GrayView levels = MakeDisplay(cv);
  const ConstFloatView values = cv.ImageData.View();
  switch (cv.BytesPerPixel) {
    case 1:
      MapLevels(values, 0.0f, 1.0f, levels);
      break;
    case 2:
    case 4:
    case -4:
      cv.SlotFullRange[slot] ? FindFullRange(cv) : FindMinMax(cv);
      MapLevels(values, cv.ImageMin, cv.DisplayScale, levels);
      break;
    default:
      std::fill_n(levels.bits, levels.Size(), std::uint8_t{0});
  }
  return WriteSlotBitmap(cv, slot, levels);
} catch (const std::bad_alloc&) {
  return NotEnoughMemory();
}

namespace {

std::optional<Refusal> RenderCurrentSlot(ModCV& cv) try {
  const GrayView levels = MakeDisplay(cv);
  FindFullRange(cv);
  MapLevels(cv.ImageData.View(), cv.ImageMin, cv.DisplayScale, levels);
  const LevelCounts counts = CountLevels(levels);
  std::copy(counts.begin(), counts.end(), cv.LumHist.begin());
  cv.LumHistLog.fill(0.0f);
  return WriteSlotBitmap(cv, cv.CurrentSlot, levels);
} catch (const std::bad_alloc&) {
  return NotEnoughMemory();
}

}  // namespace

ValueRange FindRange(ConstFloatView values) {
  ValueRange range;
  ChosenLevelKernels().findRange(values.values, values.Count(), &range.min, &range.max);
  return range;
}

void MapLevels(ConstFloatView values, float minimum, float scale, GrayView levels) {
  const auto mapRow = ChosenLevelKernels().mapRow;
  for (int y = 0; y < values.height; ++y) {
    std::uint8_t* row = levels.Row(levels.height - 1 - y);
    mapRow(values.Row(y), minimum, scale, row, values.width);
    std::fill(row + levels.width, row + levels.stride, std::uint8_t{0});
  }
}

void FindMinMax(ModCV& cv) {
  const ValueRange range = FindRange(cv.ImageData.View());
  cv.ImageMin = range.min;
  cv.ImageMax = range.max;
  const float width = range.max - range.min;
  const bool isFloat = cv.BytesPerPixel == -4;
  const bool isInteger = cv.BytesPerPixel == 2 || cv.BytesPerPixel == 4;
  const bool stretched = (isInteger && width >= 255.0f) || (isFloat && range.max > range.min);
  cv.DisplayScale = stretched ? 255.0f / width : 1.0f;
}

void RenderFits(ModCV& cv, Platform& os) {
  if (const auto refusal = RenderInto(cv, cv.ImageCount)) {
    os.Message(refusal->text, refusal->title);
    cv.LoadFailed = true;
  }
}

bool RenderSlotData(ModCV& cv, Platform& os) {
  cv.SlotFullRange[cv.CurrentSlot] = true;
  const auto refusal = RenderCurrentSlot(cv);
  if (refusal) os.Message(refusal->text, refusal->title);
  return !refusal;
}

}  // namespace corvane
