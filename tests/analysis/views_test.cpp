#include "analysis/views.h"

#include <algorithm>
#include <cmath>

#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

DisplayBitmap Edges(const DisplayBitmap& source) {
  DisplayBitmap result(source.width, source.height);
  EdgeView(source.View(), result.View());
  return result;
}

// Both gradients from their kernels, one product after the other in single precision.
std::vector<int> SlowEdges(ConstGrayView source) {
  const int weights[] = {1, 5, 1};
  std::vector<int> bytes(source.Size(), 100);
  for (int r = 1; r < source.height - 1; ++r) {
    for (int c = 1; c < source.width - 1; ++c) {
      float columns = 0;
      float rows = 0;
      for (int a = -1; a <= 1; ++a) {
        for (int b = -1; b <= 1; ++b) {
          columns += static_cast<float>(weights[a + 1] * b * source.At(c + b, r + a));
          rows += static_cast<float>(weights[b + 1] * a * source.At(c + b, r + a));
        }
      }
      bytes[r * source.stride + c] =
          static_cast<int>(std::nearbyint(std::clamp(columns + rows + 100.0f, 0.0f, 255.0f)));
    }
  }
  return bytes;
}

TEST(EdgeView, EqualsTheDefinitionAtEverySize) {
  OnEveryInstructionSet([] {
    for (const int width : {1, 2, 3, 4, 5, 6, 7, 8, 9, 18, 33, 34, 67, 130}) {
      for (int height = 1; height <= 9; ++height) {
        // The dimmed picture stays clear of both limits, so every sum shows.
        DisplayBitmap source = Noise(width, height, 31 * width + height);
        ASSERT_EQ(AllBytes(Edges(source).View()), SlowEdges(source.View())) << width << 'x' << height;
        for (unsigned char& level : source.bits) level = 100 + level / 32;
        ASSERT_EQ(AllBytes(Edges(source).View()), SlowEdges(source.View())) << width << 'x' << height;
      }
    }
  });
}

TEST(RasterView, RepeatsTheRamp) {
  const DisplayBitmap source = Levels(8, 1, {0, 50, 51, 102, 103, 254, 255, 1});
  const std::vector<std::pair<int, std::vector<int>>> cases = {
      {5, {0, 250, 0, 0, 5, 250, 0, 5}},
      {1, {0, 50, 51, 102, 103, 254, 0, 1}},
      {128, {0, 25, 153, 51, 179, 127, 0, 128}},  // 128 * 255 still fits 16 bits
  };
  for (const auto& [cycles, expected] : cases) {
    DisplayBitmap result(8, 1);
    RasterView(source.View(), cycles, result.View());
    EXPECT_EQ(Pixels(result.View()), expected) << cycles << " cycles";
  }
}

TEST(Views, ChangePaddingAsWellAsPixels) {
  OnEveryInstructionSet([] {
    for (const int width : {1, 5, 39, 701}) {
      const DisplayBitmap source = Noise(width, 3, width);
      DisplayBitmap negative = Copy(source.View());
      DisplayBitmap raster = Copy(source.View());
      NegativeView(negative.View(), negative.View());
      RasterView(raster.View(), 7, raster.View());
      for (std::size_t i = 0; i < source.bits.size(); ++i) {
        ASSERT_EQ(negative.bits[i], 255 - source.bits[i]) << "byte " << i << ", width " << width;
        ASSERT_EQ(raster.bits[i], 7 * source.bits[i] % 255) << "byte " << i << ", width " << width;
      }
      NegativeView(negative.View(), negative.View());
      EXPECT_EQ(AllBytes(negative.View()), AllBytes(source.View())) << "twice negative";
    }
  });
}

TEST(NegativeData, ReversesTheSixteenBitRange) {
  FloatImage image = Floats(4, 1, {0, 32767, 100.5f, -3});
  NegativeData(image.Edit());
  EXPECT_EQ(Values(image.View()), (std::vector<float>{32767, 0, 32666.5f, 32770}));
}

}  // namespace
}  // namespace corvane
