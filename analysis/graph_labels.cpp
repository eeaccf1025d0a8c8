#include "analysis/graph_labels.h"

#include <string>

namespace corvane {

std::vector<Label> VerticalWord(std::string_view word, float x, float y, float step) {
  std::vector<Label> letters;
  for (const char letter : word) {
    letters.push_back({x, y, std::string(1, letter)});
    y += step;
  }
  return letters;
}

}  // namespace corvane
