#pragma once

#include <cmath>
#include <cstdint>

namespace corvane {

// The nearest integer, ties to even. `value` must fit an int.
inline int RoundEven(double value) { return static_cast<int>(std::nearbyint(value)); }

// A gray level: limited to 0..255, then the nearest integer, ties to even. NaN is 0.
inline std::uint8_t ToByte(double value) {
  if (!(value > 0)) return 0;
  if (value > 255) return 255;
  return static_cast<std::uint8_t>(std::nearbyint(value));
}

}  // namespace corvane
