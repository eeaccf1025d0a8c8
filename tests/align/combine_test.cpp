#include "align/combine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string_view>

#include "base/numeric.h"
#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

constexpr float kBlank = std::numeric_limits<float>::quiet_NaN();
constexpr float kMultipliers[][2] = {{1, 1}, {0.05f, 2}, {2, 0.05f}, {0.7f, 1.1f}, {0.5f, 0.5f}, {2, 2}};

const CombineMethod& Method(std::string_view key) {
  const CombineMethod* found = nullptr;
  for (const CombineMethod& method : CombineMethods())
    if (method.key == key) found = &method;
  return *found;
}

enum class Precision { Display, Data };

// What a method makes of a pair of pixels before it is limited.
float Combined(std::string_view key, Precision precision, float a, float b, float m1, float m2) {
  const float first = a * m1;
  const float second = b * m2;
  if (key == "add") return first + second;
  if (key == "sub") return first - second;
  if (key == "average" && precision == Precision::Display) return a * (m1 / (m1 + m2)) + b * (m2 / (m1 + m2));
  if (key == "average") return (second + first) / (m1 + m2);
  if (key == "darker") return first <= second ? first : second;
  if (key == "lighter") return first < second ? second : first;
  return second > 0 ? first / second : first;
}

void ExpectDisplay(const CombineMethod& method, const DisplayBitmap& a, const DisplayBitmap& b, float m1,
                   float m2) {
  SCOPED_TRACE(testing::Message() << method.key << ' ' << a.width << 'x' << a.height << ' ' << m1 << ' '
                                  << m2);
  DisplayBitmap result(a.width, a.height);
  method.display(a.View(), b.View(), m1, m2, result.View());
  if (method.key == std::string_view("flat")) {
    double sum = 0;
    for (const int level : Pixels(b.View())) sum += level;
    const float mean = static_cast<float>(sum / (static_cast<double>(b.width) * b.height));
    m2 = mean > 0 ? m2 / mean : 1;
  }
  for (std::size_t i = 0; i < a.bits.size(); ++i) {  // padding is combined too
    ASSERT_EQ(result.bits[i], ToByte(Combined(method.key, Precision::Display, a.bits[i], b.bits[i], m1, m2)))
        << int{a.bits[i]} << " and " << int{b.bits[i]};
  }
}

void ExpectData(const CombineMethod& method, const FloatImage& a, const FloatImage& b, float m1, float m2) {
  SCOPED_TRACE(testing::Message() << method.key << ' ' << a.Width() << 'x' << a.Height() << ' ' << m1 << ' '
                                  << m2);
  FloatImage result(a.Width(), a.Height());
  method.data(a.View(), b.View(), m1, m2, result.Overwrite());
  if (method.key == std::string_view("flat")) {
    double sum = 0;
    int summed = 0;
    for (const float v : Values(b.View())) {
      if (!std::isnan(v)) ++summed, sum += v;
    }
    m2 = sum > 0 ? static_cast<float>(m2 / (sum / summed)) : 1;
  }
  for (std::size_t i = 0; i < a.Count(); ++i) {
    const float v = Combined(method.key, Precision::Data, a.View().values[i], b.View().values[i], m1, m2);
    const float limited = v < 0 ? 0 : v > 32767 ? 32767 : v;
    const float found = result.View().values[i];
    ASSERT_TRUE(found == limited || (std::isnan(found) && std::isnan(limited)))
        << found << " for " << limited;
  }
}

// Sums of whole numbers are exact, so the reference may add them in any order.
FloatImage WholeNumbers(int width, int height, std::uint32_t seed) {
  FloatImage data = NoiseFloats(width, height, seed);
  const FloatView values = data.Edit();
  for (std::size_t i = 0; i < values.Count(); ++i) values.values[i] = std::floor(values.values[i]);
  return data;
}

TEST(EveryMethod, EqualsItsDefinitionAtBothPrecisions) {
  OnEveryInstructionSet([] {
    for (const CombineMethod& method : CombineMethods()) {
      for (const auto& [m1, m2] : kMultipliers) {
        for (const int width : {1, 2, 3, 4, 5, 6, 7, 8, 9, 61, 300}) {
          ExpectDisplay(method, Noise(width, 5, width), Noise(width, 5, width + 1), m1, m2);
          ExpectData(method, WholeNumbers(width, 5, width), WholeNumbers(width, 5, width + 1), m1, m2);
        }
      }
    }
  });
}

// Every pair of levels, and with it ties, zeros in the flat and results beyond both limits.
TEST(EveryMethod, EqualsItsDefinitionForEveryPairOfLevels) {
  DisplayBitmap a(256, 256);
  DisplayBitmap b(256, 256);
  for (int i = 0; i < 256 * 256; ++i) {
    a.bits[i] = static_cast<std::uint8_t>(i % 256);
    b.bits[i] = static_cast<std::uint8_t>(i / 256);
  }
  OnEveryInstructionSet([&] {
    for (const CombineMethod& method : CombineMethods())
      for (const auto& [m1, m2] : kMultipliers) ExpectDisplay(method, a, b, m1, m2);
  });
}

TEST(EveryMethod, MayWriteOverItsSources) {
  const DisplayBitmap a = Noise(301, 7, 1);
  const FloatImage data = WholeNumbers(301, 7, 2);
  for (const CombineMethod& method : CombineMethods()) {
    DisplayBitmap expected(a.width, a.height);
    DisplayBitmap inPlace = Copy(a.View());
    method.display(a.View(), a.View(), 0.7f, 1.1f, expected.View());
    method.display(inPlace.View(), inPlace.View(), 0.7f, 1.1f, inPlace.View());
    EXPECT_EQ(AllBytes(inPlace.View()), AllBytes(expected.View())) << method.key;
    FloatImage expectedData(301, 7);
    FloatImage dataInPlace = data;
    method.data(data.View(), data.View(), 0.7f, 1.1f, expectedData.Overwrite());
    const FloatView own = dataInPlace.Edit();
    method.data(own, own, 0.7f, 1.1f, own);
    EXPECT_EQ(Values(own), Values(expectedData.View())) << method.key;
  }
}

TEST(EveryMethod, WeighsPairsOfPixels) {
  struct Case {
    const char* key;
    int a, b;
    float m1, m2;
    int expected;
  };
  const Case cases[] = {
      {"add", 100, 100, 1, 1, 200},     {"add", 200, 100, 1, 1, 255},    {"add", 1, 0, 0.5f, 1, 0},
      {"add", 3, 0, 0.5f, 1, 2},        {"sub", 90, 90, 1, 1, 0},        {"sub", 90, 90, 2, 1, 90},
      {"sub", 10, 200, 1, 1, 0},        {"average", 255, 0, 2, 2, 128},  {"average", 253, 0, 1, 1, 126},
      {"average", 100, 200, 1, 1, 150}, {"darker", 100, 90, 1, 2, 100},  {"lighter", 100, 90, 1, 2, 180},
      {"flat", 100, 50, 1, 1, 100},     {"flat", 100, 50, 1.5f, 1, 150}, {"flat", 100, 0, 1.5f, 2, 150},
  };
  for (const Case& c : cases) {
    DisplayBitmap result(1, 1);
    Method(c.key).display(Levels(1, 1, {c.a}).View(), Levels(1, 1, {c.b}).View(), c.m1, c.m2, result.View());
    EXPECT_EQ(Pixels(result.View())[0], c.expected) << c.key << ' ' << c.a << ' ' << c.b;
  }
}

TEST(Flat, OfOneBrightnessOnlyScales) {
  for (const int width : {1, 2, 3, 4, 5, 6, 7, 8, 9, 70001}) {
    const DisplayBitmap a = Noise(width, 4, width);
    DisplayBitmap result(width, 4);
    Method("flat").display(a.View(), Uniform(width, 4, 64).View(), 1, 2, result.View());
    DisplayBitmap half(width, 4);
    Method("add").display(a.View(), Uniform(width, 4, 0).View(), 0.5f, 1, half.View());
    EXPECT_EQ(Pixels(result.View()), Pixels(half.View())) << width;
  }
}

TEST(EveryMethod, TakesBlanks) {
  struct Case {
    const char* key;
    float blankFirst;
    float blankSecond;
  };
  // Of the pairs (blank, 10) and (30, blank), where the second picture has a mean of 10.
  const Case cases[] = {{"add", kBlank, kBlank}, {"sub", kBlank, kBlank}, {"average", kBlank, kBlank},
                        {"darker", 10, kBlank},  {"lighter", kBlank, 30}, {"flat", kBlank, 30}};
  OnEveryInstructionSet([&] {
    for (const Case& c : cases) {
      FloatImage result(3, 1);
      Method(c.key).data(Floats(3, 1, {kBlank, 30, 30}).View(), Floats(3, 1, {10, kBlank, 10}).View(), 1, 1,
                         result.Overwrite());
      const std::vector<float> found = Values(result.View());
      EXPECT_EQ(std::isnan(found[0]) ? -1 : found[0], std::isnan(c.blankFirst) ? -1 : c.blankFirst) << c.key;
      EXPECT_EQ(std::isnan(found[1]) ? -1 : found[1], std::isnan(c.blankSecond) ? -1 : c.blankSecond)
          << c.key;
      EXPECT_FALSE(std::isnan(found[2])) << c.key;
    }
  });
}

// The mean of a flat must not depend on how many lanes add it up.
TEST(Flat, RoundsItsMeanAlikeOnEveryInstructionSet) {
  const FloatImage a = NoiseFloats(1001, 37, 1);
  const FloatImage flat = NoiseFloats(1001, 37, 2, 0.001f, 30000);
  std::vector<float> first;
  OnEveryInstructionSet([&] {
    FloatImage result(1001, 37);
    Method("flat").data(a.View(), flat.View(), 1, 1, result.Overwrite());
    if (first.empty()) first = Values(result.View());
    EXPECT_EQ(Values(result.View()), first);
  });
}

}  // namespace
}  // namespace corvane
