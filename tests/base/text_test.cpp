#include "base/text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace corvane {
namespace {

TEST(ShortestDecimal, WritesPlainDigitsForSizesAndExponentsForExtremes) {
  const std::pair<float, const char*> cases[] = {
      {600.0f, "600"},    {0.5f, "0.5"},        {-1.25f, "-1.25"},         {0.1f, "0.1"},
      {0.0f, "0"},        {-0.0f, "0"},         {16777216.0f, "16777216"}, {1e10f, "10000000000"},
      {1e-5f, "0.00001"}, {9.9e-6f, "9.9E-06"},

      {1e15f, "1E+15"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(ShortestDecimal(value), text);
}

TEST(ShortestDecimal, ReadsBackAsTheSameNumber) {
  std::mt19937 random(7);
  for (int i = 0; i < 5000; ++i) {
    const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    if (!std::isfinite(value)) continue;
    const std::optional<double> back = ParseNumber(ShortestDecimal(value));
    ASSERT_TRUE(back) << ShortestDecimal(value);
    EXPECT_EQ(static_cast<float>(*back), value);
  }
}

TEST(ParseNumber, TakesDecimalNumbersWithBlanksSignsAndEitherExponentLetter) {
  const std::pair<const char*, double> cases[] = {
      {"5", 5},       {"  -32 ", -32},   {"+1.5", 1.5}, {".5", 0.5}, {"5.", 5},          {"1E3", 1000},
      {"1e+3", 1000}, {"2.5D-2", 0.025}, {"4d2", 400},  {"-0", 0},   {"0.0458", 0.0458}, {"65535.0", 65535},
  };
  for (const auto& [text, value] : cases) {
    SCOPED_TRACE(text);
    ASSERT_TRUE(ParseNumber(text));
    EXPECT_EQ(*ParseNumber(text), value);
  }
}

TEST(ParseNumber, RefusesEverythingElse) {
  for (const char* text :
       {"",    "   ", "abc",       "'16'", "1,5",   "1 2",    "1e", "e5",  "--1", "+-1", "- 1",  "1.2.3",
        "nan", "inf", "-infinity", "0x10", "1e999", "-1e999", "5x", "\t5", ".",   "+",   "1D2D3"}) {
    EXPECT_FALSE(ParseNumber(text)) << text;
  }
}

TEST(ParseWhole, TakesWholeNumbersThatFit) {
  EXPECT_EQ(ParseWhole(" 128 "), 128);
  EXPECT_EQ(ParseWhole("-7"), -7);
  EXPECT_EQ(ParseWhole("2147483647"), std::numeric_limits<int>::max());
  for (const char* text : {"1.5", "2147483648", "-2147483649", "1e300", "", "five"}) {
    EXPECT_FALSE(ParseWhole(text)) << text;
  }
}

TEST(NumberFormats, WriteTheirPatterns) {
  EXPECT_EQ(FixedDecimals(12.345678, 2), "12.35");
  EXPECT_EQ(FixedDecimals(0.5, 2), "0.50");
  EXPECT_EQ(FixedDecimals(100.0, 3), "100.000");
  EXPECT_EQ(FixedDecimals(-0.001, 2), "0.00");
  EXPECT_EQ(FixedDecimals(-0.01, 2), "-0.01");
  EXPECT_EQ(Grouped(1), "1");
  EXPECT_EQ(Grouped(999), "999");
  EXPECT_EQ(Grouped(1000), "1,000");
  EXPECT_EQ(Grouped(1e9), "1,000,000,000");
  EXPECT_EQ(Grouped(-123456), "-123,456");
  EXPECT_EQ(Grouped(-123), "-123");
  EXPECT_EQ(Scientific(1234), "1.234E+03");
  EXPECT_EQ(Scientific(-0.00012345), "-1.234E-04");
  EXPECT_EQ(Scientific(0), "0.000E+00");
  EXPECT_EQ(Scientific(3.4028e38), "3.403E+38");
  EXPECT_EQ(Scientific(1.5e-120), "1.500E-120");
}

TEST(NumberFormats, HoldTheLargestDouble) {
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(FixedDecimals(-largest, 3).size(), 1 + 309 + 4u);
  EXPECT_EQ(Grouped(largest).size(), 309 + 102u);
}

TEST(PrintableAscii, ReplacesEveryOtherCharacterOnce) {
  EXPECT_EQ(PrintableAscii("M 13 ~!"), "M 13 ~!");
  EXPECT_EQ(PrintableAscii("a\tb\n\x7f"), "a?b??");
  EXPECT_EQ(PrintableAscii("\xc3\xa9toile \xe2\x82\xac"), "?toile ?");
  EXPECT_EQ(PrintableAscii("\xe9t\xe9"), "?t?");  // no UTF-8
}

}  // namespace
}  // namespace corvane
