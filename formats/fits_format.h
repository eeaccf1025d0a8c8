#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/refusal.h"

namespace corvane {

inline constexpr int kCardSize = 80;
inline constexpr int kBlockSize = 2880;
inline constexpr int kMaxCards = 1000;  // of a header, END included

// What the header says of the data.
struct FitsLayout {
  int bytesPerPixel = 0;  // 1, 2, 4, -4
  int width = 0;
  int height = 0;
  double scale = 1.0;
  double zero = 0.0;
  std::int64_t start = 0;  // byte position of the data, from 0

  std::int64_t RowBytes() const {
    return std::int64_t{width} * (bytesPerPixel < 0 ? -bytesPerPixel : bytesPerPixel);
  }
  std::int64_t DataBytes() const { return RowBytes() * height; }
};

// The cards at the beginning of a file, up to and including the one whose keyword is END; none where END is
// missing among the first kMaxCards.
std::vector<std::string> SplitCards(std::string_view file);

// Size, sample type and scaling of the image that `cards` describe, or why it cannot be shown. A refusal with
// an empty text is silent.
std::optional<Refusal> ReadLayout(std::span<const std::string> cards, FitsLayout& layout);

// Bytes that fill `size` up to whole blocks.
std::int64_t BlockPadding(std::int64_t size);

}  // namespace corvane
