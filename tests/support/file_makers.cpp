#include "tests/support/file_makers.h"

#include <bit>

namespace corvane {

namespace {

void FillBlock(std::string& bytes, char filler) { bytes.resize((bytes.size() + 2879) / 2880 * 2880, filler); }

void AppendBigEndian(std::string& bytes, std::uint64_t value, int size) {
  for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
}

void AppendLittleEndian(std::string& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
}

}  // namespace

std::string RawCard(std::string_view text) {
  std::string card(text);
  card.resize(80, ' ');
  return card;
}

std::string Card(std::string_view keyword, std::string_view value) {
  std::string card(keyword);
  card.resize(8, ' ');
  card += "= ";
  if (value.size() < 20) card.append(20 - value.size(), ' ');
  card += value;
  return RawCard(card);
}

std::string Card(std::string_view keyword, long value) { return Card(keyword, std::to_string(value)); }

std::string FitsBytes(const std::vector<std::string>& cards, std::string_view data) {
  std::string bytes;
  for (const std::string& card : cards) bytes += card;
  bytes += RawCard("END");
  FillBlock(bytes, ' ');
  bytes += data;
  FillBlock(bytes, '\0');
  return bytes;
}

std::vector<std::string> ImageCards(int bitpix, int width, int height, const std::vector<std::string>& more) {
  std::vector<std::string> cards{Card("SIMPLE", "T"), Card("BITPIX", bitpix), Card("NAXIS", 2),
                                 Card("NAXIS1", width), Card("NAXIS2", height)};
  cards.insert(cards.end(), more.begin(), more.end());
  return cards;
}

std::string FitsPixels(int bitpix, const std::vector<double>& raw) {
  std::string bytes;
  for (const double value : raw) {
    if (bitpix == -32)
      AppendBigEndian(bytes, std::bit_cast<std::uint32_t>(static_cast<float>(value)), 4);
    else if (bitpix == -64)
      AppendBigEndian(bytes, std::bit_cast<std::uint64_t>(value), 8);
    else
      AppendBigEndian(bytes, static_cast<std::uint64_t>(static_cast<std::int64_t>(value)), bitpix / 8);
  }
  return bytes;
}

std::string FitsImage(int bitpix, int width, int height, const std::vector<double>& raw,
                      const std::vector<std::string>& more) {
  return FitsBytes(ImageCards(bitpix, width, height, more), FitsPixels(bitpix, raw));
}

std::string BitmapBytes(const BitmapSpec& spec) {
  std::vector<Color> palette = spec.palette;
  if (spec.bits == 8 && palette.empty())
    for (int i = 0; i < 256; ++i) {
      const auto level = static_cast<std::uint8_t>(i);
      palette.push_back({level, level, level});
    }
  const auto colors = static_cast<std::uint32_t>(palette.size());
  const int stride = (spec.width * spec.bits / 8 + 3) / 4 * 4;
  const auto dataSize = static_cast<std::uint32_t>(stride * spec.height);
  const std::uint32_t offset = 54 + 4 * colors;

  std::string bytes = "BM";
  for (const std::uint32_t field :
       {offset + dataSize, 0u, offset, 40u, static_cast<std::uint32_t>(spec.width),
        static_cast<std::uint32_t>(spec.topDown ? -spec.height : spec.height)})
    AppendLittleEndian(bytes, field, 4);
  AppendLittleEndian(bytes, 1, 2);
  AppendLittleEndian(bytes, static_cast<std::uint32_t>(spec.bits), 2);
  for (const std::uint32_t field : {0u, dataSize, 2835u, 2835u, colors, 0u})
    AppendLittleEndian(bytes, field, 4);
  for (const Color& color : palette)
    for (const std::uint8_t part : {color.blue, color.green, color.red, std::uint8_t{0}})
      bytes += static_cast<char>(part);

  for (int row = 0; row < spec.height; ++row) {
    const int y = spec.topDown ? row : spec.height - 1 - row;
    const std::size_t rowEnd = bytes.size() + static_cast<std::size_t>(stride);
    for (int x = 0; x < spec.width; ++x) {
      const Color color = spec.pixel(x, y);
      if (spec.bits == 8) {
        bytes += static_cast<char>(color.red);
        continue;
      }
      for (const std::uint8_t part : {color.blue, color.green, color.red}) bytes += static_cast<char>(part);
      if (spec.bits == 32) bytes += static_cast<char>(0xFF);
    }
    bytes.resize(rowEnd, '\0');
  }
  return bytes;
}

std::string GrayBitmap(int bits, int width, int height, const std::function<int(int x, int y)>& level) {
  const auto gray = [&](int x, int y) {
    const auto part = static_cast<std::uint8_t>(level(x, y));
    return Color{part, part, part};
  };
  return BitmapBytes({bits, width, height, false, gray, {}});
}

std::uint32_t FieldAt(std::string_view bytes, std::size_t offset) {
  std::uint32_t value = 0;
  for (int i = 3; i >= 0; --i)
    value = value << 8 | static_cast<unsigned char>(bytes.at(offset + static_cast<std::size_t>(i)));
  return value;
}

void SetField(std::string& bytes, std::size_t offset, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i)
    bytes.at(offset + static_cast<std::size_t>(i)) = static_cast<char>(value >> (8 * i));
}

}  // namespace corvane
