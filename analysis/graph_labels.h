#pragma once

#include <string_view>
#include <vector>

#include "base/drawing.h"

namespace corvane {

// Where the picture of a graph stands on its window, in window pixels.
struct GraphFrame {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  float textScale = 1;  // how much larger the texts are than those the distances were made for
  int Right() const { return left + width - 1; }
  int Bottom() const { return top + height - 1; }
};

// The letters of a word one under the other, `step` pixels apart.
std::vector<Label> VerticalWord(std::string_view word, float x, float y, float step);

}  // namespace corvane
