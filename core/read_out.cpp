#include "core/read_out.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/text.h"

namespace corvane {
namespace {

constexpr std::uint8_t kDarkest = 25;  // the last level of the darkest tenth
constexpr double kNearlyAll = 0.95;
constexpr int kRowsToJudge = 512;

// The data no longer describe the picture once a tool or a view has made it an 8-bit one.
bool DataDescribe(const ModCV& cv, int slot, int width, int height) {
  const FloatImage& data = cv.SlotData[slot];
  if (data.Empty() || data.Width() != width || data.Height() != height) return false;
  return cv.SlotBytesPerPixel[slot] != 1 || cv.SlotRendering[slot] != Rendering::None;
}

}  // namespace

bool IsMostlyDark(ConstGrayView picture) {
  const int step = std::max(1, picture.height / kRowsToJudge);
  std::int64_t dark = 0;
  std::int64_t judged = 0;
  for (int y = 0; y < picture.height; y += step) {
    const std::uint8_t* row = picture.Row(y);
    dark += std::count_if(row, row + picture.width, [](std::uint8_t level) { return level <= kDarkest; });
    judged += picture.width;
  }
  return judged > 0 && static_cast<double>(dark) >= kNearlyAll * static_cast<double>(judged);
}

std::string DescribeData(const ModCV& cv, int slot, int width, int height, Mark pixel) {
  if (!DataDescribe(cv, slot, width, height)) return {};
  const int row = height - 1 - pixel.y;
  const float value = cv.SlotData[slot].View().At(pixel.x, row);
  return "Value " + (std::isnan(value) ? "blank" : ShortestDecimal(value)) + ", FITS row " +
         std::to_string(row + 1);
}

}  // namespace corvane
