#include "viewer/view_table.h"

#include <gtest/gtest.h>

#include "tests/support/images.h"

namespace corvane {
namespace {

constexpr int kWidth = 6;
constexpr int kHeight = 4;

DisplayBitmap Shown(const ViewEntry& view, const ModCV& settings, ConstGrayView source) {
  DisplayBitmap result(view.turns ? source.height : source.width, view.turns ? source.width : source.height);
  view.display(settings, source, result.View());
  return result;
}

TEST(EveryView, OfTheGeometryShowsThePixelItNames) {
  ModCV settings;
  const DisplayBitmap source = Noise(kWidth, kHeight, 5);
  for (const ViewEntry& view : ViewTable()) {
    if (view.menuIndex < 13) continue;
    const DisplayBitmap shown = Shown(view, settings, source.View());
    for (int y = 0; y < shown.height; ++y)
      for (int x = 0; x < shown.width; ++x) {
        const Mark pixel = view.source({x, y}, kWidth, kHeight);
        EXPECT_EQ(shown.View().At(x, y), source.View().At(pixel.x, pixel.y)) << view.menuIndex;
      }
  }
}

// What a 16-bit save writes is what the screen shows: data of whole levels, top row first, put through both
// forms.
TEST(EveryView, ShowsTheSamePictureOfDataAndOfLevels) {
  ModCV settings;
  const DisplayBitmap source = Noise(kWidth, kHeight, 9);
  FloatImage data(kWidth, kHeight);
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) data.Edit().At(x, y) = source.View().At(x, kHeight - 1 - y);
  for (const ViewEntry& view : ViewTable()) {
    if (!view.data) continue;
    const DisplayBitmap shown = Shown(view, settings, source.View());
    FloatImage turned = data;
    view.data(turned);
    ASSERT_EQ(turned.Width(), shown.width) << view.menuIndex;
    ASSERT_EQ(turned.Height(), shown.height) << view.menuIndex;
    const float lift =
        view.menuIndex == 6 ? 32767.0f - 255.0f : 0.0f;  // a negative starts at the top of its range
    for (int y = 0; y < shown.height; ++y)
      for (int x = 0; x < shown.width; ++x)
        EXPECT_EQ(turned.View().At(x, y) - lift, shown.View().At(x, shown.height - 1 - y)) << view.menuIndex;
  }
}

}  // namespace
}  // namespace corvane
