#include "formats/fits_format.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "base/text.h"
#include "formats/bitmap_format.h"

namespace corvane {
namespace {

constexpr int kValueColumns = 30;         // a value begins within the first 30 characters of its card
constexpr double kLargestSide = 1 << 24;  // beyond, the store's 32-bit float sizes skip whole numbers

Refusal FileError(std::string_view fault) {
  return {"FILE ERROR", std::string(fault) + " Display cancelled."};
}

Refusal CardError(std::string_view keyword, std::string_view fault) {
  return FileError("The value of the " + std::string(keyword) + " card " + std::string(fault));
}

// The number after the first "=" at or after `column` (from 0). One that crosses the last value column is
// read to its end: cut there it would be another number.
std::optional<double> CardValue(std::string_view card, std::size_t column) {
  const std::size_t equals = card.substr(0, kValueColumns).find('=', column);
  if (equals == std::string_view::npos) return std::nullopt;
  const std::size_t end = card.find_first_not_of("+-.0123456789eEdD", kValueColumns);
  card = card.substr(0, end);
  const std::size_t first = card.find_first_not_of(' ', equals + 1);
  if (first == std::string_view::npos || first >= kValueColumns) return std::nullopt;
  const std::optional<double> number =
      ParseNumber(card.substr(first, card.find_first_of(" /", first) - first));
  if (!number || std::fabs(*number) > std::numeric_limits<float>::max()) return std::nullopt;
  return number;
}

// The cards that a layout needs, each the first match from where its search begins.
struct CardSearch {
  std::span<const std::string> cards;
  std::size_t at = 0;              // the card found last
  std::optional<Refusal> refusal;  // a value that was no number

  // The value of the first card from `first` on that begins with `keyword`; nothing where there is none or
  // its value is not a number.
  std::optional<double> Find(std::string_view keyword, std::size_t first, std::size_t column = 0) {
    for (std::size_t i = first; i < cards.size(); ++i) {
      if (!cards[i].starts_with(keyword)) continue;
      at = i;
      const std::optional<double> value = CardValue(cards[i], column);
      if (!value) refusal = CardError(keyword, "is not a number.");
      return value;
    }
    return std::nullopt;
  }
};

// Without a BITPIX card `bytesPerPixel` stays 0.
std::optional<Refusal> ReadSampleType(CardSearch& search, int& bytesPerPixel) {
  const std::optional<double> value = search.Find("BITPIX", 1);
  if (!value) return search.refusal;
  const float bitpix = static_cast<float>(*value);
  if (bitpix == -64) {
    return Refusal{"PROGRAM LIMIT", "Case of 'BITPIX= -64' is not implemented! Display cancelled."};
  }
  for (const int bits : {8, 16, 32, -32}) {
    if (bitpix == bits) bytesPerPixel = bits / 8;
  }
  if (bytesPerPixel == 0) {
    return Refusal{"FILE ERROR", "Unrecognized case of bits per pixel. Display cancelled."};
  }
  return std::nullopt;
}

std::optional<Refusal> ReadSide(CardSearch& search, std::string_view keyword, int& side) {
  const std::optional<double> value = search.Find(keyword, search.at + 1);
  if (search.refusal) return search.refusal;
  if (!value) return FileError("The header has no " + std::string(keyword) + " card.");
  if (*value < 1 || *value != std::trunc(*value)) {
    return CardError(keyword, "is not a whole number of at least 1.");
  }
  if (*value > kLargestSide) return CardError(keyword, "is too large for a picture.");
  side = static_cast<int>(*value);
  return std::nullopt;
}

std::optional<Refusal> ReadAxes(CardSearch& search, FitsLayout& layout) {
  const std::optional<double> value = search.Find("NAXIS", search.at + 1, 6);
  if (search.refusal) return search.refusal;
  if (!value) return FileError("The header has no NAXIS card.");
  const double axes = std::nearbyint(*value);
  if (axes < 2) return CardError("NAXIS", "is below 2.");
  if (auto refusal = ReadSide(search, "NAXIS1", layout.width)) return refusal;
  if (auto refusal = ReadSide(search, "NAXIS2", layout.height)) return refusal;
  if (axes < 3) return std::nullopt;
  const std::optional<double> planes = search.Find("NAXIS3", search.at + 1);
  if (planes > 1.0) {
    return Refusal{"AXES LIMIT", "This image has more than 2 axes and cannot be displayed."};
  }
  return search.refusal;
}

std::optional<Refusal> ReadScaling(CardSearch& search, FitsLayout& layout) {
  constexpr std::size_t kFirst = 5;
  // Card values are 32-bit floats, whatever is computed with them.
  layout.scale = static_cast<float>(search.Find("BSCALE", kFirst).value_or(1.0));
  if (!search.refusal) layout.zero = static_cast<float>(search.Find("BZERO", kFirst).value_or(0.0));
  return search.refusal;
}

}  // namespace

std::vector<std::string> SplitCards(std::string_view file) {
  std::vector<std::string> cards;
  while (file.size() >= kCardSize && cards.size() < kMaxCards) {
    const std::string& card = cards.emplace_back(file.substr(0, kCardSize));
    if (card.starts_with("END     ")) return cards;
    file.remove_prefix(kCardSize);
  }
  return {};
}

std::optional<Refusal> ReadLayout(std::span<const std::string> cards, FitsLayout& layout) {
  CardSearch search{cards, 0, std::nullopt};
  FitsLayout found;
  if (auto refusal = ReadSampleType(search, found.bytesPerPixel)) return refusal;
  if (auto refusal = ReadAxes(search, found)) return refusal;
  if (auto refusal = ReadScaling(search, found)) return refusal;
  if (found.bytesPerPixel == 0) return Refusal{};
  if (!FitsBitmapFile(found.width, found.height)) {
    return FileError("The picture is too large for a bitmap file.");
  }
  const std::int64_t headerBytes = static_cast<std::int64_t>(cards.size()) * kCardSize;
  found.start = headerBytes + BlockPadding(headerBytes);
  layout = found;
  return std::nullopt;
}

std::int64_t BlockPadding(std::int64_t size) { return (kBlockSize - size % kBlockSize) % kBlockSize; }

}  // namespace corvane
