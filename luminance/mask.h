#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/drawing.h"

namespace corvane {

// Levels at or below `low` and at or above `high` become `color`; all are 0..255.
struct Mask {
  int low = 0;
  int high = 255;
  int color = 0;
  // At its defaults the mask is off, although levels 0 and 255 lie on its bounds.
  bool Off() const { return low == 0 && high == 255; }
};

std::uint8_t MaskPixel(const Mask& mask, std::uint8_t level);
// MaskPixel of every level, for MapBytes.
std::array<std::uint8_t, 256> MaskTable(const Mask& mask);
// The mask map's white lines, input level on x, output level on y.
std::vector<Stroke> MaskMap(const Mask& mask);

}  // namespace corvane
