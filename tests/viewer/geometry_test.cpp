#include "viewer/geometry.h"

#include <utility>
#include <vector>

#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

// Where the picture's pixel (x, y), x from the left and y from the bottom, comes to stand.
using Place = std::pair<int, int> (*)(int x, int y, int width, int height);

struct Operation {
  const char* name;
  void (*display)(ConstGrayView, GrayView);
  FloatImage (*data)(ConstFloatView);
  bool transposes;
  Place place;
};

const Operation kOperations[] = {
    {"rotate 90", Rotate90, Rotate90, true, [](int x, int y, int, int h) { return std::pair(h - 1 - y, x); }},
    {"rotate 180", Rotate180, Rotate180, false,
     [](int x, int y, int w, int h) { return std::pair(w - 1 - x, h - 1 - y); }},
    {"flip vertical", FlipVertical, FlipVertical, false,
     [](int x, int y, int w, int) { return std::pair(w - 1 - x, y); }},
    {"flip horizontal", FlipHorizontal, FlipHorizontal, false,
     [](int x, int y, int, int h) { return std::pair(x, h - 1 - y); }},
};

// Two pixels of a row or column never agree; padding holds what must not be copied.
DisplayBitmap Picture(int width, int height) {
  DisplayBitmap picture(width, height);
  for (std::size_t i = 0; i < picture.bits.size(); ++i) picture.bits[i] = 255;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x)
      picture.View().At(x, y) = static_cast<std::uint8_t>(3 * x + 89 * y + x / 80);
  }
  return picture;
}

std::vector<std::pair<int, int>> Sizes() {
  std::vector<std::pair<int, int>> sizes = {{16, 16}, {17, 33}, {64, 65}, {131, 70}, {200, 15}, {15, 200}};
  for (int width = 1; width <= 9; ++width) {
    for (int height = 1; height <= 9; ++height) sizes.emplace_back(width, height);
  }
  return sizes;
}

void ExpectDisplay(const Operation& operation, const DisplayBitmap& source) {
  const int width = operation.transposes ? source.height : source.width;
  const int height = operation.transposes ? source.width : source.height;
  DisplayBitmap result(width, height);
  for (std::size_t i = 0; i < result.bits.size(); ++i) result.bits[i] = 99;
  operation.display(source.View(), result.View());
  for (int y = 0; y < source.height; ++y) {
    for (int x = 0; x < source.width; ++x) {
      const auto [newX, newY] = operation.place(x, y, source.width, source.height);
      ASSERT_EQ(result.View().At(newX, newY), source.View().At(x, y)) << x << ',' << y;
    }
  }
  for (int y = 0; y < height; ++y) {
    for (int x = width; x < result.stride; ++x)
      ASSERT_EQ(result.View().Row(y)[x], 0) << "padding of row " << y;
  }
}

void ExpectData(const Operation& operation, int width, int height) {
  FloatImage source(width, height);
  for (std::size_t i = 0; i < source.Count(); ++i) source.Edit().values[i] = static_cast<float>(i);
  const FloatImage result = operation.data(source.View());
  ASSERT_EQ(result.Width(), operation.transposes ? height : width);
  ASSERT_EQ(result.Height(), operation.transposes ? width : height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto [newX, newY] = operation.place(x, height - 1 - y, width, height);
      ASSERT_EQ(result.View().At(newX, result.Height() - 1 - newY), source.View().At(x, y)) << x << ',' << y;
    }
  }
}

TEST(Geometry, MovesEveryPixelOfPictureAndDataToTheSamePlaceOnScreen) {
  OnEveryInstructionSet([] {
    for (const Operation& operation : kOperations) {
      for (const auto& [width, height] : Sizes()) {
        SCOPED_TRACE(testing::Message() << operation.name << ' ' << width << 'x' << height);
        ExpectDisplay(operation, Picture(width, height));
        ExpectData(operation, width, height);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  });
}

}  // namespace
}  // namespace corvane
