#include "core/render.h"

#include <algorithm>
#include <new>

#include "base/level_count.h"
#include "base/levels.h"
#include "core/accepted.h"
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

void MapByType(ModCV& cv, GrayView levels) {
  const ConstFloatView values = cv.ImageData.View();
  switch (cv.BytesPerPixel) {
    case 1:
      return MapLevels(values, 0.0f, 1.0f, levels);
    case 2:
    case 4:
    case -4:
      FindMinMax(cv);
      return MapLevels(values, cv.ImageMin, cv.DisplayScale, levels);
    default:
      std::fill_n(levels.bits, levels.Size(), std::uint8_t{0});
  }
}

}  // namespace

std::optional<Refusal> RenderInto(ModCV& cv, int slot) try {
  const GrayView levels = MakeDisplay(cv);
  if (cv.SlotRendering[slot] == Rendering::FullRange) {
    FindFullRange(cv);
    MapLevels(cv.ImageData.View(), cv.ImageMin, cv.DisplayScale, levels);
  } else {
    MapByType(cv, levels);
  }
  DescribeDisplayBitmap(cv, levels.width, levels.height);
  return WriteWorkingBitmap(cv, cv.AppDir / kGrayTemplate, cv.SlotBitmap(slot), levels);
} catch (const std::bad_alloc&) {
  return NotEnoughMemory();
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
  if (!Accepted(os, RenderInto(cv, cv.ImageCount))) cv.LoadFailed = true;
}

std::optional<Refusal> RenderSlotData(ModCV& cv) {
  cv.SlotRendering[cv.CurrentSlot] = Rendering::FullRange;
  auto refusal = RenderInto(cv, cv.CurrentSlot);
  const LevelCounts counts = CountLevels(cv.Display());
  std::copy(counts.begin(), counts.end(), cv.LumHist.begin());
  cv.LumHistLog.fill(0.0f);
  return refusal;
}

}  // namespace corvane
