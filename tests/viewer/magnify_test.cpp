#include "viewer/magnify.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

DisplayBitmap Enlarged(void (*enlarge)(ConstGrayView, int, GrayView), const DisplayBitmap& source,
                       int factor) {
  DisplayBitmap result(source.width * factor, source.height * factor);
  for (unsigned char& byte : result.bits) byte = 99;
  enlarge(source.View(), factor, result.View());
  return result;
}

// The whole picture in floats, rows from the bottom: placed, then filled along rows, then along columns.
std::vector<std::vector<float>> SlowInterpolation(std::vector<std::vector<float>> rows, int factor) {
  const auto fill = [factor](const std::vector<float>& line) {
    std::vector<float> filled;
    for (std::size_t i = 0; i < line.size(); ++i) {
      filled.push_back(line[i]);
      for (int k = 1; k < factor; ++k) {
        if (i + 1 == line.size()) {
          filled.push_back(line[i]);
          continue;
        }
        const float way = static_cast<float>(k) * (line[i + 1] - line[i]);
        filled.push_back(line[i] + way / static_cast<float>(factor));
      }
    }
    return filled;
  };
  for (std::vector<float>& row : rows) row = fill(row);
  std::vector<std::vector<float>> result(rows.size() * factor, std::vector<float>(rows[0].size()));
  for (std::size_t x = 0; x < rows[0].size(); ++x) {
    std::vector<float> column;
    for (const std::vector<float>& row : rows) column.push_back(row[x]);
    column = fill(column);
    for (std::size_t y = 0; y < column.size(); ++y) result[y][x] = column[y];
  }
  return result;
}

std::vector<std::pair<int, int>> Sizes() {
  std::vector<std::pair<int, int>> sizes = {{16, 2}, {33, 3}, {50, 2}};
  for (int width = 1; width <= 9; ++width) sizes.emplace_back(width, 10 - width);
  return sizes;
}

template <class Check>
void AtEverySizeAndFactor(Check check) {
  OnEveryInstructionSet([&] {
    for (int factor = 2; factor <= 6; ++factor) {
      for (const auto& [width, height] : Sizes()) {
        SCOPED_TRACE(testing::Message() << width << 'x' << height << " times " << factor);
        check(width, height, factor);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  });
}

void ExpectZeroPadding(ConstGrayView view) {
  for (int y = 0; y < view.height; ++y) {
    for (int x = view.width; x < view.stride; ++x) ASSERT_EQ(view.Row(y)[x], 0) << "padding of row " << y;
  }
}

TEST(Replicate, MakesABlockOfEveryPixel) {
  AtEverySizeAndFactor([](int width, int height, int factor) {
    const DisplayBitmap source = Noise(width, height, 5 * width + factor);
    const DisplayBitmap result = Enlarged(Replicate, source, factor);
    for (int y = 0; y < result.height; ++y) {
      for (int x = 0; x < result.width; ++x) {
        ASSERT_EQ(result.View().At(x, y), source.View().At(x / factor, y / factor)) << x << ',' << y;
      }
    }
    ExpectZeroPadding(result.View());

    const FloatImage data = NoiseFloats(width, height, 3);
    const FloatImage large = Replicate(data.View(), factor);
    for (int y = 0; y < large.Height(); ++y) {
      for (int x = 0; x < large.Width(); ++x) {
        ASSERT_EQ(large.View().At(x, y), data.View().At(x / factor, y / factor)) << x << ',' << y;
      }
    }
  });
}

// The definition of a picture whose rows from the bottom `row(y)` gives.
template <class Row>
std::vector<std::vector<float>> Expected(int width, int height, int factor, Row row) {
  std::vector<std::vector<float>> rows;
  for (int y = 0; y < height; ++y) rows.emplace_back(row(y), row(y) + width);
  return SlowInterpolation(rows, factor);
}

// Levels are rounded; data keep the same places on screen unrounded.
TEST(Interpolate, EqualsTheDefinition) {
  AtEverySizeAndFactor([](int width, int height, int factor) {
    const DisplayBitmap source = Noise(width, height, 7 * width + factor);
    const auto levels = Expected(width, height, factor, [&](int y) { return source.View().Row(y); });
    const DisplayBitmap result = Enlarged(Interpolate, source, factor);
    const FloatImage data = NoiseFloats(width, height, 11 * width + factor, -500, 70000);
    const auto values =
        Expected(width, height, factor, [&](int y) { return data.View().Row(height - 1 - y); });
    const FloatImage large = Interpolate(data.View(), factor);
    for (int y = 0; y < result.height; ++y) {
      for (int x = 0; x < result.width; ++x) {
        const float level = std::clamp(levels[y][x], 0.0f, 255.0f);
        ASSERT_EQ(result.View().At(x, y), static_cast<int>(std::nearbyint(level))) << x << ',' << y;
        ASSERT_EQ(large.View().At(x, large.Height() - 1 - y), values[y][x]) << x << ',' << y;
      }
    }
    ExpectZeroPadding(result.View());
  });
}

TEST(Interpolate, KeepsPlacedDataBesideBlanksAndSignedZeros) {
  const float blank = std::numeric_limits<float>::quiet_NaN();
  const float infinite = std::numeric_limits<float>::infinity();
  OnEveryInstructionSet([&] {
    const FloatImage source = Floats(4, 1, {5, blank, -0.0f, infinite});
    const FloatImage result = Interpolate(source.View(), 3);
    for (int y = 0; y < 3; ++y) {
      EXPECT_EQ(result.View().At(0, y), 5);
      EXPECT_TRUE(std::isnan(result.View().At(1, y)));
      EXPECT_TRUE(std::signbit(result.View().At(6, y)));
      for (int x = 9; x < 12; ++x) EXPECT_EQ(result.View().At(x, y), infinite);
    }
  });
}

TEST(CanMagnify, AllowsTenMillionPixels) {
  EXPECT_FALSE(CanMagnify(2000, 1600, 2));
  EXPECT_TRUE(CanMagnify(1000, 1000, 3));
  EXPECT_FALSE(CanMagnify(1000, 1000, 4));
  EXPECT_TRUE(CanMagnify(1000, 2500, 2));
  EXPECT_FALSE(CanMagnify(1000, 2501, 2));
  EXPECT_FALSE(CanMagnify(46341, 46341, 6)) << "counted in 64 bits";
}

}  // namespace
}  // namespace corvane
