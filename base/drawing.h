#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {

struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  bool operator==(const Color&) const = default;
};

inline constexpr Color kBlack{0, 0, 0};
inline constexpr Color kWhite{255, 255, 255};
inline constexpr Color kRed{255, 0, 0};
inline constexpr Color kDarkGray{128, 128, 128};
inline constexpr Color kLightGreen{0, 255, 0};

// A line in the coordinates of the picture it is drawn on, both ends included.
struct Stroke {
  float x1 = 0;
  float y1 = 0;
  float x2 = 0;
  float y2 = 0;
  Color color;
  bool operator==(const Stroke&) const = default;
};

// A text whose top left corner stands at (x, y), in window pixels.
struct Label {
  float x = 0;
  float y = 0;
  std::string text;
  bool operator==(const Label&) const = default;
};

}  // namespace corvane
