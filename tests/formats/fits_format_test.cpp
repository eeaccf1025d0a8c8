#include "formats/fits_format.h"

#include <bit>
#include <cmath>

#include "formats/fits_pixels.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

using Cards = std::vector<std::string>;

FitsLayout LayoutOf(Cards cards) {
  cards.push_back(RawCard("END"));
  FitsLayout layout;
  const std::optional<Refusal> refusal = ReadLayout(cards, layout);
  EXPECT_FALSE(refusal) << refusal.value_or(Refusal{}).text;
  return layout;
}

Refusal RefusalOf(Cards cards) {
  cards.push_back(RawCard("END"));
  FitsLayout layout;
  const std::optional<Refusal> refusal = ReadLayout(cards, layout);
  EXPECT_TRUE(refusal);
  EXPECT_EQ(layout.width, 0) << "a refusal leaves the layout alone";
  return refusal.value_or(Refusal{});
}

Cards With(Cards cards, std::size_t index, std::string card) {
  cards[index] = std::move(card);
  return cards;
}

Refusal Fault(const std::string& text) { return {"FILE ERROR", text + " Display cancelled."}; }

// One pixel by the definition of its type.
double Slow(int type, const unsigned char* p) {
  const double high = p[0] * 256.0 + p[type == 1 ? 0 : 1];
  if (type == 1) return p[0];
  if (type == 2) return high;
  if (type == 4) return high * 65536.0 + p[2] * 256.0 + p[3];
  const int exponent = (p[0] & 127) * 2 + p[1] / 128;
  const int mantissa = (p[1] & 127) * 512 + p[2] * 2 + p[3] / 128;
  const double magnitude = std::ldexp(1 + mantissa / 65536.0, exponent - 127);
  return p[0] < 128 ? magnitude : -magnitude;
}

float SlowPixel(const FitsLayout& layout, const unsigned char* p) {
  constexpr double kBeyondFloat = 0x1p128;
  const double raw = Slow(layout.bytesPerPixel, p);
  if (std::fabs(raw) >= kBeyondFloat) return NAN;
  double value = raw * layout.scale + layout.zero;
  if (layout.bytesPerPixel == 4 && value > 2147483647.0) value -= 4294967296.0;
  float stored = static_cast<float>(value);
  if (layout.bytesPerPixel == 2 && stored >= 65536.0f) stored -= 65536.0f;
  return std::isinf(stored) ? NAN : stored;
}

std::uint32_t Bits(float value) {
  return std::isnan(value) ? 0x7FC00000 : std::bit_cast<std::uint32_t>(value);
}

void ExpectDecoded(const FitsLayout& layout, const std::string& raw) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(raw.data());
  const std::size_t size = static_cast<std::size_t>(std::abs(layout.bytesPerPixel));
  const std::size_t count = raw.size() / size;
  std::vector<float> values(count + 1, -7.5f);
  DecodePixels(layout, bytes, values.data(), count);
  for (std::size_t i = 0; i < count; ++i) {
    ASSERT_EQ(Bits(values[i]), Bits(SlowPixel(layout, bytes + i * size)))
        << "type " << layout.bytesPerPixel << " scale " << layout.scale << " zero " << layout.zero
        << " pixel " << i << " of " << count << ": " << values[i];
  }
  EXPECT_EQ(values[count], -7.5f) << "written past the last pixel";
}

// The decoded type and the scaling; the size does not matter to the decoder.
FitsLayout LayoutFor(int type, double scale, double zero) {
  FitsLayout layout;
  layout.bytesPerPixel = type;
  layout.scale = scale;
  layout.zero = zero;
  return layout;
}

std::string RandomBytes(std::size_t size, std::uint64_t seed) {
  Random random(seed);
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random.Next() >> 13);
  return bytes;
}

std::string EveryWord() {
  std::string raw;
  for (int word = 0; word < 65536; ++word) raw += {static_cast<char>(word >> 8), static_cast<char>(word)};
  return raw;
}

// Every exponent with the mantissas whose cut-off matters, both signs.
std::string EveryExponent() {
  std::string raw;
  for (std::uint32_t high = 0; high < 512; ++high) {
    for (const std::uint32_t mantissa : {0u, 1u, 0x7Fu, 0x80u, 0x7FFF80u, 0x7FFFFFu, 0x400000u, 0x2AAAAAu}) {
      const std::uint32_t bits = high << 23 | mantissa;
      for (int shift = 24; shift >= 0; shift -= 8) raw += static_cast<char>(bits >> shift);
    }
  }
  return raw;
}

struct Scaling {
  double scale, zero;
};
constexpr Scaling kScalings[] = {{1, 0},
                                 {1, 32768},
                                 {1, 2147483648.0},
                                 {2, 0},
                                 {0.0458f, 1500},
                                 {-1, -0.0},
                                 {1, 65535},
                                 {0, 65535.998},
                                 {1e30f, 0},
                                 {-3e38f, 1},
                                 {1.17549435e-38f, -1e-40f},
                                 {3.4e38f, -3.4e38f},
                                 {0, 0},
                                 {1, -0.0},
                                 {1, 0.5}};

TEST(DecodePixels, EqualsTheDefinitionForEveryTypeCountAndScaling) {
  const std::string words = EveryWord();
  const std::string floats = EveryExponent();
  OnEveryInstructionSet([&] {
    for (const auto& [scale, zero] : kScalings) {
      ExpectDecoded(LayoutFor(2, scale, zero), words);
      ExpectDecoded(LayoutFor(-4, scale, zero), floats);
      for (const int type : {1, 2, 4, -4}) {
        const std::size_t size = static_cast<std::size_t>(std::abs(type));
        for (std::size_t count = 0; count <= 131; count += count < 70 ? 1 : 13)
          ExpectDecoded(LayoutFor(type, scale, zero), RandomBytes(count * size, 100 + count));
      }
    }
  });
}

TEST(DecodePixels, GivesTheKnownValues) {
  const struct {
    int type;
    double scale, zero;
    std::vector<unsigned char> raw;
    float value;
  } cases[] = {
      {2, 1, 32768, {0x80, 0x00}, 0.0f},
      {2, 1, 0, {0xFF, 0xFF}, 65535.0f},
      {4, 1, 0, {0xFF, 0xFF, 0xFF, 0xFF}, -1.0f},
      {4, 1, 0, {0x7F, 0xFF, 0xFF, 0xFF}, 2147483648.0f},
      {4, 1, 2147483648.0, {0x00, 0x00, 0x00, 0x00}, -2147483648.0f},
      {-4, 1, 0, {0x3F, 0x80, 0x00, 0x00}, 1.0f},
      {-4, 1, 0, {0x00, 0x00, 0x00, 0x00}, 0x1p-127f},
      {-4, 1, 0, {0x3F, 0x80, 0x00, 0x7F}, 1.0f},
      {-4, 1, 0, {0x7F, 0x80, 0x00, 0x00}, NAN},
      {-4, 0, 1, {0x7F, 0xC0, 0x00, 0x00}, NAN},
      {-4, 1e30f, 0, {0x7F, 0x00, 0x00, 0x00}, NAN},
      // The last values that stay.
      {4, -1, 2147483648.0, {0x00, 0x00, 0x00, 0x01}, 2147483648.0f},
      {1, 0x1.fffffep127, 0, {0x01}, 0x1.fffffep127f},
  };
  for (const auto& c : cases) {
    float value = 0;
    DecodePixels(LayoutFor(c.type, c.scale, c.zero), c.raw.data(), &value, 1);
    EXPECT_EQ(Bits(value), Bits(c.value)) << value << " instead of " << c.value;
  }
}

TEST(SplitCards, EndsAtTheKeywordEndAlone) {
  const std::string end = RawCard("END");
  const std::string filler = RawCard("COMMENT");
  EXPECT_EQ(SplitCards(filler + end + filler), (Cards{filler, end}));
  EXPECT_EQ(SplitCards(RawCard("ENDTIME = 5") + RawCard("END = 1") + RawCard("END") + filler).size(), 3u);
  EXPECT_TRUE(SplitCards(filler + filler).empty());
  EXPECT_TRUE(SplitCards("").empty());
  EXPECT_TRUE(SplitCards(filler + end.substr(0, 79)).empty()) << "a cut card is no card";
}

TEST(ReadLayout, FindsSizeTypeAndScaling) {
  const std::pair<int, int> types[] = {{8, 1}, {16, 2}, {32, 4}, {-32, -4}};
  for (const auto& [bitpix, code] : types) {
    const FitsLayout layout = LayoutOf(ImageCards(
        bitpix, 123, 45, {Card("BZERO", "32768"), Card("BSCALE", "0.5 / half"), Card("BZERO", "9")}));
    EXPECT_EQ(layout.bytesPerPixel, code);
    EXPECT_EQ(layout.width, 123);
    EXPECT_EQ(layout.height, 45);
    EXPECT_EQ(layout.scale, 0.5);
    EXPECT_EQ(layout.zero, 32768.0) << "the first match counts";
    EXPECT_EQ(layout.DataBytes(), 123 * 45 * std::abs(code));
  }
  const FitsLayout plain = LayoutOf(ImageCards(16, 1, 1));
  EXPECT_EQ(plain.scale, 1.0);
  EXPECT_EQ(plain.zero, 0.0);
}

TEST(ReadLayout, IgnoresScalingAmongTheFirstFiveCards) {
  const Cards cards{Card("SIMPLE", "T"), Card("BSCALE", "3"), Card("BZERO", "9"), Card("BITPIX", 16),
                    Card("NAXIS", 2),    Card("NAXIS1", 4),   Card("NAXIS2", 4)};
  EXPECT_EQ(LayoutOf(cards).scale, 1.0);
  EXPECT_EQ(LayoutOf(cards).zero, 0.0);
  Cards later = cards;
  std::swap(later[1], later[5]);  // BSCALE is card 5 now
  std::swap(later[1], later[4]);
  std::swap(later[1], later[3]);
  EXPECT_EQ(LayoutOf(later).scale, 3.0);
}

TEST(ReadLayout, ReadsNumbersHoweverTheyAreWritten) {
  const std::pair<const char*, double> cards[] = {
      {"BSCALE  =2", 2},
      {"BSCALE  = +2.5E-1/comment", 0.25},
      {"BSCALE  = 4.D-1 / comment", 0.4f},
      {"BSCALE = 7 = 8", 7},
      {"BSCALE = 0.1 / in single precision", 0.1f},
      {"BSCALE  =                    3 comment 9", 3},
      {"BSCALE  =                   12no blank before the comment", 12},
      {"BSCALE  =  1.25000000000000000000E+02 / longer than its columns", 125},
  };
  for (const auto& [card, scale] : cards) {
    SCOPED_TRACE(card);
    EXPECT_EQ(LayoutOf(ImageCards(16, 1, 1, {RawCard(card)})).scale, scale);
  }
}

TEST(ReadLayout, RefusesAValueThatIsNoNumber) {
  for (const char* value : {"'16      '", "", "T", "1e99", "nan", "-inf", "0x10", "1,5", "1.5.2", "/ 2"}) {
    SCOPED_TRACE(value);
    const Cards good = ImageCards(16, 3, 3, {Card("BSCALE", "1"), Card("BZERO", "0")});
    const char* names[] = {"", "BITPIX", "NAXIS", "NAXIS1", "NAXIS2", "BSCALE", "BZERO"};
    for (std::size_t i = 1; i < good.size(); ++i) {
      EXPECT_EQ(RefusalOf(With(good, i, Card(names[i], value))),
                Fault("The value of the " + std::string(names[i]) + " card is not a number."));
    }
  }
  for (const char* card : {"BSCALE", "BSCALE     2", "BSCALE  =                               2",
                           "BSCALE                         = 2"}) {
    EXPECT_EQ(RefusalOf(ImageCards(16, 3, 3, {RawCard(card)})),
              Fault("The value of the BSCALE card is not a number."))
        << card;
  }
}

TEST(ReadLayout, RefusesOneSenselessCardAmongGoodOnes) {
  const Cards good = ImageCards(16, 3, 3);
  const Refusal unknownType{"FILE ERROR", "Unrecognized case of bits per pixel. Display cancelled."};
  const auto fault = [](const char* axis, const char* what) {
    return Fault("The value of the " + std::string(axis) + " card is " + what);
  };
  const Refusal wide{"PROGRAM LIMIT", "Case of 'BITPIX= -64' is not implemented! Display cancelled."};
  const char whole[] = "not a whole number of at least 1.";
  // The card to change and its new keyword, "" to take it away.
  const std::tuple<std::size_t, const char*, std::vector<const char*>, Refusal> cases[] = {
      {1, "BITPIX", {"64", "0", "-16", "16.5", "24"}, unknownType},
      {1, "BITPIX", {"-64"}, wide},
      {1, "", {""}, Refusal{}},  // silent
      {3, "", {""}, Fault("The header has no NAXIS1 card.")},
      {4, "", {""}, Fault("The header has no NAXIS2 card.")},
      {2, "NAXIS", {"0", "1", "-2"}, fault("NAXIS", "below 2.")},
      {3, "NAXIS1", {"0", "-5", "2.5", "1e-30"}, fault("NAXIS1", whole)},
      {4, "NAXIS2", {"0"}, fault("NAXIS2", whole)},
      {3, "NAXIS1", {"16777217", "4294967297", "1e30"}, fault("NAXIS1", "too large for a picture.")},
  };
  EXPECT_EQ(RefusalOf(Cards(good.begin(), good.begin() + 2)), Fault("The header has no NAXIS card."));
  for (const auto& [index, keyword, values, refusal] : cases) {
    for (const char* value : values) {
      SCOPED_TRACE(good[index] + " as " + value);
      EXPECT_EQ(RefusalOf(With(good, index, *keyword ? Card(keyword, value) : RawCard("COMMENT"))), refusal);
    }
  }
}

TEST(ReadLayout, TakesAPlaneOfACubeWithOnePlaneOnly) {
  Cards cards = With(ImageCards(16, 3, 3), 2, Card("NAXIS", 3));
  EXPECT_EQ(LayoutOf(cards).width, 3);
  cards.push_back(Card("NAXIS3", 1));
  EXPECT_EQ(LayoutOf(cards).height, 3);
  cards.back() = Card("NAXIS3", 3);
  const Refusal tooMany{"AXES LIMIT", "This image has more than 2 axes and cannot be displayed."};
  EXPECT_EQ(RefusalOf(cards), tooMany);
  EXPECT_EQ(RefusalOf(With(cards, 1, RawCard("COMMENT"))), tooMany) << "before the missing BITPIX";
  cards.back() = Card("NAXIS3", "many");
  EXPECT_EQ(RefusalOf(cards), Fault("The value of the NAXIS3 card is not a number."));
  for (const char* two : {"2.5", "1.5000001E0"})
    EXPECT_EQ(LayoutOf(With(cards, 2, Card("NAXIS", two))).width, 3) << two << " rounds to 2 axes";
}

// Rows are padded: 65533 pixels take 65536 bytes.
TEST(ReadLayout, RefusesPicturesThatNoBitmapFileHolds) {
  const Refusal tooLarge = Fault("The picture is too large for a bitmap file.");
  EXPECT_EQ(RefusalOf(ImageCards(8, 16777216, 128)), tooLarge);
  EXPECT_EQ(RefusalOf(ImageCards(8, 65533, 32768)), tooLarge);
  EXPECT_EQ(LayoutOf(ImageCards(8, 16777216, 127)).width, 16777216);
  EXPECT_EQ(LayoutOf(ImageCards(8, 65532, 32768)).height, 32768);
}

}  // namespace
}  // namespace corvane
