#include "core/fits_writer.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "formats/fits_cards.h"
#include "formats/fits_format.h"
#include "formats/sixteen_bit.h"
#include "formats/sixteen_range.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

std::string Blanks(std::size_t count) { return std::string(count, ' '); }

TEST(WrittenCards, AreTheTenCardsAndABlockFilledWithBlanks) {
  const auto cards = WrittenCards({.bitsPerPixel = 16,
                                   .width = 1023,
                                   .height = 7,
                                   .source = "m42.fit",
                                   .comment = CommentValue("first light")});
  const std::string value = Blanks(50);
  const std::vector<std::string> expected = {
      "SIMPLE  =                    T" + value, "BITPIX  =                   16" + value,
      "NAXIS   =                    2" + value, "NAXIS1  =                 1023" + value,
      "NAXIS2  =                    7" + value, "BSCALE  =                  1.0" + value,
      "BZERO   =                  0.0" + value, "COMMENT = 'Original File = m42.fit'" + Blanks(45),
      "COMMENT = 'first light'" + Blanks(57),   "END" + Blanks(77),
  };
  ASSERT_EQ(cards.size(), 36u);
  for (std::size_t i = 0; i < 36; ++i) EXPECT_EQ(cards[i], i < 10 ? expected[i] : Blanks(80)) << "card " << i;
}

TEST(WrittenCards, CutNamesToTheirCard) {
  const std::string name60(60, 'n');
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {name60, "", "'Original File = " + name60.substr(0, 52) + "'"},
      {std::string(52, 'n'), "", "'Original File = " + std::string(52, 'n') + "'"},
      {"unused", "a.fts, b.fts", "'Original Files: a.fts, b.fts'" + Blanks(40)},
      {"unused", name60 + name60, "'Original Files: " + name60.substr(0, 52) + "'"},
      {"", "", "'Original File = '" + Blanks(52)},
      {"o'neill.fts", "", "'Original File = o''neill.fts'" + Blanks(40)},
      // The 52nd character would be half of a doubled quote.
      {std::string(51, 'n') + "'x", "", "'Original File = " + std::string(51, 'n') + "' "},
      {"M\xC3\xA4rz\t.fts", "", "'Original File = M?rz?.fts'" + Blanks(43)},
  };
  for (const auto& [source, originals, value] : cases) {
    const std::string card =
        WrittenCards({.source = source, .originalFiles = originals, .comment = CommentValue("")})[7];
    EXPECT_EQ(card, "COMMENT = " + value);
  }
}

TEST(CommentValue, IsAlwaysSeventyCharactersBetweenQuotes) {
  const std::string text68(68, 'c');
  const std::pair<std::string, std::string> cases[] = {
      {"", "'...'" + Blanks(65)},
      {text68, "'" + text68 + "'"},
      {text68 + "ut", "'" + text68 + "'"},
      {"it's", "'it''s'" + Blanks(63)},
      {std::string(67, 'c') + "'", "'" + std::string(67, 'c') + "' "},
      {std::string(40, '\''), "'" + std::string(68, '\'') + "'"},
      {"caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x94\xAD", "'caf? ? ?'" + Blanks(60)},
  };
  for (const auto& [typed, value] : cases) {
    EXPECT_EQ(CommentValue(typed), value);
    EXPECT_EQ(CommentValue(typed).size(), 70u);
  }
}

std::vector<int> Encoded(const std::vector<float>& values) {
  std::vector<unsigned char> raw(2 * values.size());
  EncodeSixteen(values.data(), raw.data(), values.size());
  std::vector<int> words;
  for (std::size_t i = 0; i < values.size(); ++i) words.push_back(raw[2 * i] * 256 + raw[2 * i + 1]);
  return words;
}

TEST(EncodeSixteen, RoundsToEvenAndLimitsWhateverTheLane) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const std::vector<std::pair<float, int>> cases = {
      {0.0f, 0},          {-0.0f, 0},        {0.5f, 0},         {1.5f, 2},          {2.5f, 2},
      {1000.4f, 0x3E8},   {1000.6f, 0x3E9},  {32766.5f, 32766}, {32767.0f, 32767},  {65534.5f, 65534},
      {65535.0f, 65535},  {65535.5f, 65535}, {65536.0f, 65535}, {1e10f, 65535},     {3.4e38f, 65535},
      {kInfinity, 65535}, {-0.6f, 0},        {-1.0f, 0},        {-70000.0f, 0},     {-kInfinity, 0},
      {1e-40f, 0},        {255.5f, 256},     {256.5f, 256},     {std::nanf(""), 0},
  };
  OnEveryInstructionSet([&] {
    for (std::size_t count = 1; count <= 70; ++count) {
      for (std::size_t first = 0; first < cases.size(); ++first) {
        std::vector<float> values;
        std::vector<int> expected;
        for (std::size_t i = 0; i < count; ++i) {
          values.push_back(cases[(first + i) % cases.size()].first);
          expected.push_back(cases[(first + i) % cases.size()].second);
        }
        ASSERT_EQ(Encoded(values), expected) << count << " values from case " << first;
      }
    }
  });
}

class FitsWriting : public AppDirFixture {
 protected:
  void Hold(const FloatImage& data, int code) {
    cv.SlotData[0] = data;
    cv.SlotBytesPerPixel[0] = code;
    cv.ImageCount = 1;
  }
  // The header and data of a picture of 8 bits.
  void Build(const DisplayBitmap& picture) {
    cv.DisplayBits = Copy(picture.View()).bits;
    cv.RowStride = picture.stride;
    cv.ImageWidth = static_cast<float>(picture.width);
    cv.ImageHeight = static_cast<float>(picture.height);
    cv.BytesPerPixel = 1;
    BuildFitsHeader(cv, "");
  }
};

// Every value goes through the stated operations in single precision, and so do the ends of the range.
TEST_F(FitsWriting, DataAreBroughtIntoTheRangeOfTheirKind) {
  using Rule = float (*)(float);
  const std::tuple<int, float, float, Rule> cases[] = {
      {2, 0, 32767, [](float v) { return v; }},
      {2, 12, 900, [](float v) { return v; }},
      {2, -100, 900, [](float v) { return v + 100; }},
      {4, 20, 60001, [](float v) { return v * (32767.0f / 60001.0f); }},
      {4, -1000, 64001, [](float v) { return (v + 1000) * 32767.0f / 65001.0f; }},
      {-4, 0.25f, 1.27f, [](float v) { return (v - 0.25f) * (32767.0f / (1.27f - 0.25f)); }},
      {-4, -7e8f, 3e5f, [](float v) { return (v + 7e8f) * (32767.0f / (3e5f + 7e8f)); }},
      {-4, 7, 7, [](float v) { return v - 7; }},
  };
  for (const auto& [code, lowest, highest, rule] : cases) {
    SCOPED_TRACE(testing::Message() << code << ": " << lowest << " to " << highest);
    FloatImage data = NoiseFloats(200, 1, 3, lowest, highest);
    data.Edit().values[0] = lowest;
    data.Edit().values[1] = highest;
    std::vector<float> expected = Values(data.View());
    std::transform(expected.begin(), expected.end(), expected.begin(), rule);
    Hold(data, code);
    PrepareSixteenBit(cv, 0, code);
    EXPECT_EQ(Values(cv.ImageData.View()), expected);
    EXPECT_EQ(std::pair(cv.ImageMin, cv.ImageMax), std::pair(expected[0], expected[1]));
  }
  const float blank = std::nanf("");
  EXPECT_TRUE(std::isnan(IntoSixteenBitRange(Floats(3, 1, {1, blank, 2}), -4).values.View().At(1, 0)));
}

TEST_F(FitsWriting, PreparingLeavesTheSlotAloneAndTakesThePrecisionItIsGiven) {
  Hold(Floats(2, 1, {-100, 900}), 2);
  PrepareSixteenBit(cv, 0, 2);
  EXPECT_EQ(Values(cv.SlotData[0].View()), (std::vector<float>{-100, 900}));
  cv.SlotBytesPerPixel[0] = 1;  // a magnified picture was committed meanwhile
  PrepareSixteenBit(cv, 0, 2);
  EXPECT_EQ(Values(cv.ImageData.View()), (std::vector<float>{0, 1000}));
  EXPECT_EQ(cv.BytesPerPixel, 2);
  const FloatImage small = Floats(2, 1, {5, 70});
  EXPECT_EQ(IntoSixteenBitRange(small, 4).values.View().values, small.View().values) << "memory is shared";
  EXPECT_EQ(IntoSixteenBitRange(Floats(2, 1, {-1, 70000}), 1).values.View().At(1, 0), 70000);
}

TEST_F(FitsWriting, SixteenBitsArePaddedToBlocksAndReadBackAsTheWorkingData) {
  Hold(Floats(2, 2, {4.5f, 1.5f, 1000.6f, 32767.0f}), 2);
  cv.FitsOutBuf.Resize(5000);
  std::fill(cv.FitsOutBuf.begin(), cv.FitsOutBuf.end(), std::uint8_t{0xEE});
  PrepareSixteenBit(cv, 0, 2);
  EncodeSixteenBit(cv);
  EXPECT_EQ(Values(cv.SlotData[0].View()), (std::vector<float>{4.5f, 1.5f, 1000.6f, 32767}));
  ASSERT_EQ(cv.FitsOutBuf.size(), 2880u);
  std::vector<int> bytes(cv.FitsOutBuf.begin(), cv.FitsOutBuf.end());
  std::vector<int> expected(2880);
  const int data[] = {0, 4, 0, 2, 3, 0xE9, 0x7F, 0xFF};
  std::copy(std::begin(data), std::end(data), expected.begin());
  EXPECT_EQ(bytes, expected);
  EXPECT_EQ(cv.FitsFileSize, "5760");
  TakeWrittenData(cv, 0);
  EXPECT_EQ(Values(cv.ImageData.View()), (std::vector<float>{4, 2, 1001, 32767}));
}

TEST_F(FitsWriting, WrittenDataUseTheSlotsMemoryAgainUnlessAnotherNeedsIt) {
  for (const bool needed : {false, true}) {
    cv.SlotData[0] = NoiseFloats(301, 211, 3, -50, 40000);
    const std::vector<float> values = Values(cv.SlotData[0].View());
    const FloatImage other = needed ? cv.SlotData[0] : FloatImage();
    cv.ImageData = cv.SlotData[0];
    const float* memory = cv.ImageData.View().values;
    EncodeSixteenBit(cv);
    cv.BytesPerPixel = 2;
    TakeWrittenData(cv, 0);
    EXPECT_EQ(cv.ImageData.View().values == memory, !needed);
    EXPECT_TRUE(!needed || Values(other.View()) == values);
    for (std::size_t i = 0; i < values.size(); ++i) {
      const float expected = std::nearbyint(std::max(values[i], 0.0f));
      ASSERT_EQ(cv.ImageData.View().values[i], expected) << i;
      ASSERT_EQ(cv.FitsOutBuf[2 * i] * 256 + cv.FitsOutBuf[2 * i + 1], expected) << i;
    }
  }
}

TEST_F(FitsWriting, EightBitFilesAreWholeBlocksOfTheRowsFromTheTop) {
  struct Size {
    int width, height;
    const char* fileSize;
  };
  for (const Size& size : {Size{100, 100, "14400"}, Size{48, 60, "5760"}, Size{1, 1, "5760"}}) {
    Build(Uniform(size.width, size.height, 9));
    EXPECT_EQ(cv.FitsFileSize, size.fileSize);
    EXPECT_EQ(WriteFits(cv, UserFile("a.fts")), 0);
    const std::string file = ReadFile(UserFile("a.fts"));
    EXPECT_EQ(std::to_string(file.size()), size.fileSize);
    EXPECT_EQ(file.find_last_not_of('\0') + 1, 2880u + static_cast<unsigned>(size.width * size.height));
  }
  Build(Levels(3, 2, {1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(std::vector<int>(cv.FitsOutBuf.begin(), cv.FitsOutBuf.begin() + 7),
            (std::vector<int>{4, 5, 6, 1, 2, 3, 0}));
}

}  // namespace
}  // namespace corvane
