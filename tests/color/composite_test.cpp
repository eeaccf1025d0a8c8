#include "color/composite.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/multiplier.h"
#include "base/numeric.h"
#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

TEST(CompositeStride, IsAWholeNumberOfFourBytes) {
  const std::pair<int, int> cases[] = {{1, 4}, {4, 12}, {5, 16}, {6, 20}, {7, 24}, {8, 24}, {6000, 18000}};
  for (const auto& [width, stride] : cases) EXPECT_EQ(CompositeStride(width), stride) << width;
}

void ExpectComposite(const ColorPlane& red, const ColorPlane& green, const ColorPlane& blue) {
  const int width = red.levels.width;
  const int height = red.levels.height;
  ColorBitmap result(width, height);
  for (unsigned char& byte : result.bits) byte = 77;
  Composite(red, green, blue, result);
  for (int y = 0; y < height; ++y) {
    std::vector<int> expected;
    for (int x = 0; x < width; ++x) {
      for (const ColorPlane& plane : {blue, green, red})
        expected.push_back(ToByte(plane.levels.At(x, y) * plane.multiplier));
    }
    expected.resize(result.stride, 0);
    ASSERT_EQ(std::vector<int>(result.Row(y), result.Row(y) + result.stride), expected)
        << "row " << y << " of " << width << " pixels";
  }
}

TEST(Composite, InterleavesScaledPictures) {
  OnEveryInstructionSet([] {
    for (int width = 1; width <= 70; ++width) {
      const DisplayBitmap red = Noise(width, 3, width);
      const DisplayBitmap green = Noise(width, 3, width + 100);
      const DisplayBitmap blue = Noise(width, 3, width + 200);
      ExpectComposite({red.View(), 1}, {green.View(), 0.05f}, {blue.View(), 2});
      ExpectComposite({red.View(), 0.7f}, {green.View(), 1.95f}, {red.View(), 1});
    }
  });
}

// Each level at each multiplier that the up-down controls give, ties and levels beyond 255 among them.
TEST(Composite, ScalesEveryLevel) {
  DisplayBitmap levels(256, 1);
  for (int i = 0; i < 256; ++i) levels.bits[i] = static_cast<std::uint8_t>(i);
  for (int steps = 1; steps <= 40; ++steps) {
    const ColorPlane plane{levels.View(), static_cast<float>(steps) / 20};
    ExpectComposite(plane, plane, plane);
  }
  ColorBitmap pixel(1, 1);
  const DisplayBitmap low = Levels(1, 1, {10});
  const DisplayBitmap dark = Levels(1, 1, {30});
  const DisplayBitmap bright = Levels(1, 1, {200});
  Composite({low.View(), 0.05f}, {dark.View(), 0.05f}, {bright.View(), 2}, pixel);
  EXPECT_EQ(std::vector<int>(pixel.Row(0), pixel.Row(0) + 4), (std::vector<int>{255, 2, 0, 0}));
}

TEST(Multiplier, IsComparedAsA32BitFloat) {
  struct Case {
    const char* text;
    int tooSmall;
    int tooLarge;
  };
  const Case cases[] = {{"1", 0, 0},     {"1.0", 0, 0},  {"0.05", 0, 0},       {"2", 0, 0},
                        {" .5 ", 0, 0},  {"0.04", 1, 0}, {"0.049", 1, 0},      {"2.01", 0, 1},
                        {"1e300", 0, 1}, {"-1", 1, 0},   {"2.00000001", 0, 0}, {"0.0499999999", 0, 0},
                        {"", 1, 0},      {"one", 1, 0},  {"0,5", 1, 0}};
  for (const Case& c : cases) {
    EXPECT_EQ(ParseMultiplier(c.text) < kSmallestMultiplier, c.tooSmall == 1) << c.text;
    EXPECT_EQ(ParseMultiplier(c.text) > kLargestMultiplier, c.tooLarge == 1) << c.text;
  }
}

}  // namespace
}  // namespace corvane
