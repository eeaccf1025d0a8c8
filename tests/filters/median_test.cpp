#include "filters/median.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

constexpr float kBlank = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// The middle one of the sorted window, pixel by pixel; `result` gives the values at the edges.
template <class View, class Result>
void SlowMedian(View source, Result result, int radius) {
  for (int y = radius; y < source.height - radius; ++y) {
    for (int x = radius; x < source.width - radius; ++x) {
      std::vector<float> window;
      for (int dy = -radius; dy <= radius; ++dy) {
        for (int dx = -radius; dx <= radius; ++dx) window.push_back(source.At(x + dx, y + dy));
      }
      const bool blank = std::any_of(window.begin(), window.end(), [](float v) { return std::isnan(v); });
      if (!blank) std::sort(window.begin(), window.end());
      const float median = blank ? kBlank : std::nearbyint(window[window.size() / 2]);
      result.At(x, y) = static_cast<std::remove_reference_t<decltype(result.At(x, y))>>(median);
    }
  }
}

void ExpectPreview(const DisplayBitmap& source, int radius) {
  const DisplayBitmap before = Noise(source.width, source.height, 99);
  DisplayBitmap expected = Copy(before.View());
  SlowMedian(source.View(), expected.View(), radius);
  OnEveryInstructionSet([&] {
    DisplayBitmap result = Copy(before.View());
    NoProgress progress;
    EXPECT_TRUE(MedianPreview(source.View(), result.View(), radius, progress));
    EXPECT_EQ(AllBytes(result.View()), AllBytes(expected.View()))
        << source.width << 'x' << source.height << " radius " << radius;
  });
}

// Blanks compare as equal, zeros of either sign do not.
std::vector<std::uint32_t> Comparable(ConstFloatView view) {
  std::vector<std::uint32_t> bits(view.Count());
  for (std::size_t i = 0; i < bits.size(); ++i) {
    const float value = std::isnan(view.values[i]) ? kBlank : view.values[i];
    std::memcpy(&bits[i], &value, sizeof value);
  }
  return bits;
}

void ExpectData(const FloatImage& source, int radius) {
  const FloatImage before = NoiseFloats(source.Width(), source.Height(), 99);
  FloatImage expected = before;
  SlowMedian(source.View(), expected.Edit(), radius);
  for (float& value : std::span(expected.Edit().values, expected.Count())) value += 0.0f;  // no -0
  OnEveryInstructionSet([&] {
    FloatImage result = before;
    NoProgress progress;
    EXPECT_TRUE(MedianData(source.View(), result.Edit(), radius, progress));
    EXPECT_EQ(Comparable(result.View()), Comparable(expected.View()))
        << source.Width() << 'x' << source.Height() << " radius " << radius;
  });
}

// Rounding matters: many values lie half-way, and equal ones are common.
FloatImage Halves(int width, int height, std::uint32_t seed, int low, int high) {
  FloatImage image(width, height);
  const FloatView view = image.Edit();
  Random random(seed);
  for (std::size_t i = 0; i < view.Count(); ++i) {
    view.values[i] = static_cast<float>(low + random.Below(high - low)) / 2;
  }
  return image;
}

TEST(Median, EqualsTheDefinitionAtEverySmallSize) {
  for (int width = 1; width <= 9; ++width) {
    for (int height = 1; height <= 9; ++height) {
      for (int radius = 1; radius <= 3; ++radius) {
        ExpectPreview(Noise(width, height, 17 * width + height), radius);
        ExpectData(Halves(width, height, 17 * width + height, -3, 60), radius);
        ExpectData(NoiseFloats(width, height, 17 * width + height, 0, 65535), radius);
      }
    }
  }
}

// Widths around those of a vector and of what is sorted at a time.
TEST(Median, EqualsTheDefinitionAtEveryWidthOfALastStep) {
  for (const int width : {31, 65, 66, 67, 70, 129, 134, 259, 519, 1030, 1031, 1161}) {
    for (int radius = 1; radius <= 3; ++radius) {
      const int height = 2 * radius + 1 + width % 4;
      ExpectPreview(Noise(width, height, width), radius);
      ExpectData(NoiseFloats(width, height, width), radius);
      ExpectData(NoiseFloats(width, height, width, -1e6f, 1e6f), radius);
    }
  }
  ExpectPreview(Noise(200, 27, 1), 1);
}

// Stars on a noisy sky; rows of other kinds lie between those of 16 bits.
TEST(Median, TakesDataOfAnyRange) {
  struct Pixel {
    int x, y;
    float value;
  };
  const std::vector<std::vector<Pixel>> cases = {
      {},
      {{7, 12, 65535.49f}, {40, 3, 65535.5f}},
      {{7, 12, -0.5f}, {40, 3, -0.51f}, {41, 3, -0.4f}, {42, 4, -0.3f}},
      {{8, 8, 16777217.0f}, {9, 8, 3e9f}, {9, 9, -3e9f}, {8, 9, 8388607.5f}, {8, 10, -4194304.5f}},
      {{20, 5, kInfinity}, {21, 5, kInfinity}, {20, 6, -kInfinity}, {33, 17, 3.4e38f}},
      {{0, 0, kBlank}, {69, 23, kBlank}, {35, 12, kBlank}, {36, 12, kInfinity}},
  };
  FloatImage sky(70, 24);
  Random random(5);
  for (float& value : std::span(sky.Edit().values, sky.Count())) {
    value =
        static_cast<float>(random.Below(100) == 0 ? 20000 + random.Below(40000) : 1000 + random.Below(60)) /
        2;
  }
  for (const auto& pixels : cases) {
    FloatImage source = sky;
    for (const Pixel& pixel : pixels) source.Edit().At(pixel.x, pixel.y) = pixel.value;
    for (int radius = 1; radius <= 3; ++radius) ExpectData(source, radius);
  }
  for (const float value : {kBlank, kInfinity, -0.0f, -0.5f, -0.75f, 65535.25f, 65535.5f, 8388607.5f}) {
    for (const int width : {15, 64}) ExpectData(UniformFloats(width, 9, value), 2);
  }
}

TEST(Median, FollowsTheStrideOfEachView) {
  const DisplayBitmap source = Noise(100, 30, 1);
  for (int radius = 1; radius <= 3; ++radius) {
    DisplayBitmap result = Noise(90, 20, 2);
    DisplayBitmap expected = Copy(result.View());
    const ConstGrayView part{source.View().Row(4) + 3, 81, 16, source.stride};
    const auto inside = [](DisplayBitmap& bitmap) {
      return GrayView{bitmap.View().Row(2) + 5, 81, 16, bitmap.stride};
    };
    SlowMedian(part, inside(expected), radius);
    NoProgress progress;
    MedianPreview(part, inside(result), radius, progress);
    EXPECT_EQ(Pixels(result.View()), Pixels(expected.View())) << "radius " << radius;
  }
}

class Watch : public Progress {
 public:
  explicit Watch(int rows) : left_(rows) {}
  bool Row(int done, int total) override {
    reports.emplace_back(done, total);
    return --left_ > 0;
  }
  std::vector<std::pair<int, int>> reports;

 private:
  int left_;
};

TEST(Median, ReportsEachRowAndStopsWhenCancelled) {
  using Reports = std::vector<std::pair<int, int>>;
  struct Case {
    int width, height, radius, cancelAt;
    Reports preview, data;
  };
  const Case cases[] = {
      {80, 6, 1, 9, {{0, 3}, {1, 3}, {2, 3}, {3, 3}}, {{1, 5}, {2, 5}, {3, 5}, {4, 5}}},
      {9, 7, 2, 9, {{0, 2}, {1, 2}, {2, 2}}, {{2, 6}, {3, 6}, {4, 6}}},
      {9, 7, 3, 9, {{0, 1}}, {{3, 6}}},
      {9, 6, 3, 9, {}, {}},
      {80, 6, 1, 3, {{0, 3}, {1, 3}, {2, 3}}, {{1, 5}, {2, 5}, {3, 5}}},
      {9, 9, 1, 1, {{0, 6}}, {{1, 8}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.width << 'x' << c.height << " radius " << c.radius);
    const bool finished = c.preview.size() < static_cast<std::size_t>(c.cancelAt);
    Watch preview(c.cancelAt);
    DisplayBitmap levels(c.width, c.height);
    EXPECT_EQ(MedianPreview(Noise(c.width, c.height, 1).View(), levels.View(), c.radius, preview), finished);
    EXPECT_EQ(preview.reports, c.preview);
    Watch data(c.cancelAt);
    FloatImage values(c.width, c.height);
    EXPECT_EQ(MedianData(NoiseFloats(c.width, c.height, 1).View(), values.Edit(), c.radius, data), finished);
    EXPECT_EQ(data.reports, c.data);
  }
}

}  // namespace
}  // namespace corvane
