#include "luminance/curves.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "luminance/curve_kernels.h"
#include "luminance/portable_math.h"
#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

constexpr float kBlank = std::numeric_limits<float>::quiet_NaN();

TEST(ScalePixel, GivesTheWorkedValues) {
  const std::tuple<Scaling, int, int> cases[] = {
      {{0, 0, 255}, 77, 77},       {{1, 0, 255}, 0, 0},       {{1, 0, 255}, 1, 32},
      {{1, 0, 255}, 255, 255},     {{1, 0, 255}, 15, 128},  // ln 16 is half of ln 256: 127.5, to even
      {{2, 0, 255}, 255, 255},                              // 254.57
      {{2, 0, 255}, 13, 94},                                // 94.49; 94.56 with the gain's exponent
      {{2, 0, 255}, 8, 80},    // 80.38; 80.52 with the level's exponent in the gain
      {{2, 0, 255}, 1, 40},    // 255 / 255^0.3333 = 40.22
      {{3, 0, 204}, 51, 128},  // half: 127.5, to even
      {{4, 0, 255}, 128, 64},      {{5, 0, 255}, 128, 32},    {{6, 0, 255, 2.0f}, 128, 64},
      {{6, 0, 255, 0.1f}, 1, 147},  // 255 / 255^0.1 = 146.51
      {{7, 100, 200}, 0, 100},     {{7, 100, 200}, 100, 255}, {{7, 100, 200}, 50, 178},  // 177.5, to even
      {{7, 50, 66}, 20, 255},      {{7, 255, 239}, 255, 255},                            // 255 + 0
      {{-1, 100, 200}, 50, 0},     {{8, 100, 200}, 130, 30},  // no such curve: the level above the clip
  };
  OnEveryInstructionSet([&] {
    for (const auto& [scaling, level, expected] : cases) {
      SCOPED_TRACE(testing::Message() << "mode " << scaling.mode << " level " << level);
      EXPECT_EQ(ScalePixel(scaling, static_cast<std::uint8_t>(level)), expected);
    }
  });
}

TEST(EveryCurve, IsBlackAtTheLowClipAndWhiteAboveTheHighOne) {
  const int clips[][2] = {{0, 255}, {0, 16}, {100, 180}, {239, 255}};
  for (int mode = 0; mode < 7; ++mode) {
    for (const auto& [low, high] : clips) {
      SCOPED_TRACE(testing::Message() << Curves()[mode].caption << ' ' << low << ".." << high);
      const auto table = ScaleTable({mode, low, high, 1.7f});
      for (int level = 0; level <= low; ++level) EXPECT_EQ(table[level], 0);
      for (int level = low + 1; level < 256; ++level) EXPECT_GE(table[level], table[level - 1]);
      // The three constants for one third leave the high clip itself up to half a level short.
      for (int level = high; level < 256; ++level) EXPECT_EQ(table[level], 255);
      for (int d = 0; mode == 1 && d <= high - low; ++d)
        EXPECT_NEAR(table[low + d], 255 * std::log(d + 1.0) / std::log(high - low + 1.0), 0.5000001);
    }
  }
}

TEST(ScaleMap, DrawsEachCurve) {
  EXPECT_EQ(ScaleMap({0, 10, 200}), (std::vector<Stroke>{{10, 0, 200, 255, kWhite}}));
  EXPECT_EQ(ScaleMap({7, 10, 200}),
            (std::vector<Stroke>{{10, 0, 10, 10, kWhite}, {10, 10, 200, 255, kWhite}}));
  EXPECT_TRUE(ScaleMap({8, 10, 200}).empty());

  const std::tuple<Scaling, int, double> points[] = {
      {{1, 20, 120}, 0, -637.5},  // ln 0.00001 / ln 100 = -2.5
      {{1, 20, 120}, 10, 127.5},  {{2, 20, 120}, 100, 255},
      {{2, 20, 120}, 1, 55.0218},  // 255 / 100^0.333
      {{3, 20, 120}, 25, 127.5},  {{4, 20, 120}, 50, 63.75},
      {{5, 20, 120}, 50, 31.875}, {{6, 20, 120, 4.0f}, 50, 15.9375},
  };
  for (const auto& [scaling, t, height] : points) {
    SCOPED_TRACE(testing::Message() << "mode " << scaling.mode);
    const std::vector<Stroke> map = ScaleMap(scaling);
    ASSERT_EQ(map.size(), 101u);
    EXPECT_EQ(map[0].x1, 20);
    EXPECT_EQ(map[0].y1, 0);
    EXPECT_EQ(map[t].x2, 20 + t);
    EXPECT_NEAR(map[t].y2, height, 0.001);
    for (std::size_t i = 1; i < map.size(); ++i) EXPECT_EQ(map[i].y1, map[i - 1].y2);
  }
}

// One pixel of the transfer on physical values, written from its definition.
float SlowTransfer(const Scaling& s, float minimum, float maximum, float p) {
  const float low16 = (maximum - minimum) * s.lowClip / 255.0f + minimum;
  const float high16 = (maximum - minimum) * s.highClip / 255.0f + minimum;
  if (std::isnan(p)) return p;
  if (s.mode == 7) {
    const float slope = s.highClip > s.lowClip ? (255.0f - s.lowClip) / (s.highClip - s.lowClip) : 1.0f;
    return std::min(32767.0f, std::max(0.0f, slope * p + low16));
  }
  const double powers[] = {1, 0, 0.33, 0.5, 2, 3, s.exponent};
  const auto curve = [&](double x, double power) { return s.mode == 1 ? std::log(x) : std::pow(x, power); };
  const float range = high16 - low16;
  const double atRange = curve(range, s.mode == 2 ? 0.3333 : powers[s.mode]);
  const bool stretch = range > (s.mode == 1 ? 1.0f : 0.0f);
  const float ceiling = range >= 255 ? range : stretch ? 255.0f : range;
  double gain = stretch ? ceiling / atRange : s.mode == 1 ? 0.0 : 1.0;
  if (s.mode == 0) gain = static_cast<float>(gain);
  const float d = std::max(0.0f, p - low16);
  const double y = s.mode == 1 && d < 1 ? 0 : curve(d, powers[s.mode]) * gain;
  return y > ceiling ? ceiling : static_cast<float>(y);
}

TEST(EveryCurve, OnPhysicalValuesEqualsTheDefinition) {
  const std::tuple<float, float> ranges[] = {{0, 0.5f}, {3, 3},     {0, 1},      {0, 1.5f},  {10, 110},
                                             {0, 255},  {0, 32767}, {-500, 500}, {900, 1200}};
  const int clips[][2] = {{0, 255}, {30, 200}, {0, 16}, {239, 255}};
  OnEveryInstructionSet([&] {
    for (int mode = 0; mode < 8; ++mode) {
      for (const float exponent : {0.1f, 1.7f, 10.0f}) {
        if (mode != 6 && exponent != 1.7f) continue;
        for (const auto& [minimum, maximum] : ranges) {
          for (const auto& [low, high] : clips) {
            const Scaling scaling{mode, low, high, exponent};
            SCOPED_TRACE(testing::Message()
                         << "mode " << mode << " exponent " << exponent << " values " << minimum << ".."
                         << maximum << " clips " << low << ".." << high);
            const float reach = maximum - minimum + 1;
            FloatImage image = NoiseFloats(71, 9, 5, minimum - reach / 4, maximum + reach / 4);
            image.Edit().values[0] = minimum;
            image.Edit().values[1] = maximum;
            image.Edit().values[2] = kBlank;
            const std::vector<float> before = Values(image.View());
            ScaleData(scaling, minimum, maximum, image.Edit());
            for (std::size_t i = 0; i < before.size(); ++i) {
              const float expected = SlowTransfer(scaling, minimum, maximum, before[i]);
              const float value = image.View().values[i];
              if (std::isnan(expected)) {
                ASSERT_TRUE(std::isnan(value));
              } else {
                ASSERT_EQ(value, expected) << "of " << before[i];
              }
            }
          }
        }
      }
    }
  });
}

// The scalar functions are what every instruction set computes, to the last bit.
TEST(CurveKernels, GiveTheBitsOfTheScalarFunctions) {
  const float inf = std::numeric_limits<float>::infinity();
  FloatImage source = NoiseFloats(211, 9, 6, -5, 70000);
  const float special[] = {0, -0.0f, -3, 1e-40f, 1e-45f, 0.5f, 1, 3e38f, inf, -inf, kBlank};
  std::copy(std::begin(special), std::end(special), source.Edit().values + 17);
  const CurveFrame frame{-0.25f, 0.75, 3e6f};
  for (const double exponent : {0.0, 0.1, 0.33, 0.5, 1.0, 2.0, 3.0, 9.7}) {
    std::vector<float> expected;
    for (const float v : Values(source.View())) {
      const float d = v - frame.lowest;
      const double y = 0.75 * (exponent == 0 ? Logarithm(d < 1 ? 1 : d) : Power(d < 0 ? 0 : d, exponent));
      expected.push_back(y > frame.ceiling ? frame.ceiling : static_cast<float>(y));
    }
    OnEveryInstructionSet([&] {
      FloatImage image = source;
      const FloatView data = image.Edit();
      const CurveKernels& kernels = ChosenCurveKernels();
      if (exponent == 0) kernels.logarithm(frame, data.values, data.Count());
      if (exponent != 0) kernels.power(frame, exponent, data.values, data.Count());
      EXPECT_EQ(std::memcmp(data.values, expected.data(), expected.size() * sizeof(float)), 0) << exponent;
    });
  }
}

}  // namespace
}  // namespace corvane
