#pragma once

#include <string_view>

#include "base/text.h"

namespace corvane {

// What pictures may be multiplied by before they are combined, limits included.
inline constexpr float kSmallestMultiplier = 0.05f;
inline constexpr float kLargestMultiplier = 2.0f;

// The number in `text` as a 32-bit float; 0, which is refused as too small, where it is no number.
inline float ParseMultiplier(std::string_view text) {
  return static_cast<float>(ParseNumber(text).value_or(0.0));
}

}  // namespace corvane
