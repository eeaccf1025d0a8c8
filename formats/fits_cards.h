#pragma once

#include <string>
#include <vector>

namespace corvane {

// The 36 cards of a written file, 80 characters each. Names are cut to what their card holds; characters
// outside printable ASCII become "?", quotes are doubled.
struct WrittenHeader {
  int bitsPerPixel = 8;
  int width = 0;
  int height = 0;
  std::string source{};         // name of the image's own file
  std::string originalFiles{};  // names of the files it was made from; "" for a single source
  std::string comment{};        // 70 characters, quotes included (see CommentValue)
};
std::vector<std::string> WrittenCards(const WrittenHeader& header);

// The 70 characters of the comment card's value for a typed text.
std::string CommentValue(const std::string& typed);

}  // namespace corvane
