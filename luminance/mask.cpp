#include "luminance/mask.h"

#include <algorithm>

namespace corvane {

std::uint8_t MaskPixel(const Mask& mask, std::uint8_t level) {
  return level <= mask.low || level >= mask.high ? static_cast<std::uint8_t>(mask.color) : level;
}

std::array<std::uint8_t, 256> MaskTable(const Mask& mask) {
  std::array<std::uint8_t, 256> table;
  for (int level = 0; level < 256; ++level) {
    table[level] = MaskPixel(mask, static_cast<std::uint8_t>(level));
  }
  return table;
}

std::vector<Stroke> MaskMap(const Mask& mask) {
  const float low = static_cast<float>(mask.low);
  const float high = static_cast<float>(mask.high);
  const float top = std::min(high, 255.0f);
  const float color = static_cast<float>(mask.color);
  std::vector<Stroke> lines;
  if (mask.low < 1) {
    lines = {{0, 0, top, top, kWhite}};
  } else {
    lines = {{0, color, low, color, kWhite}, {low, color, low, low, kWhite}, {low, low, top, top, kWhite}};
  }
  lines.push_back({top, top, high, color, kWhite});
  lines.push_back({high, color, 255, color, kWhite});
  return lines;
}

}  // namespace corvane
