#include "viewer/view_table.h"

#include <gtest/gtest.h>

#include "tests/support/images.h"

namespace corvane {
namespace {

constexpr int kWidth = 6;
constexpr int kHeight = 4;

DisplayBitmap Shown(const ViewEntry& view, const ModCV& settings, ConstGrayView source) {
  DisplayBitmap result(view.transposes ? source.height : source.width, view.transposes ? source.width : source.height);
  view.display(settings, source, result.View());
  return result;
}

TEST(EveryView, OfTheGeometryShowsThePixelItNames) {
  ModCV settings;
  const DisplayBitmap source = Noise(kWidth, kHeight, 5);
  for (const ViewEntry& view : ViewTable()) {
    if (view.menuIndex < kRotate90) continue;
    const DisplayBitmap shown = Shown(view, settings, source.View());
    for (int y = 0; y < shown.height; ++y)
      for (int x = 0; x < shown.width; ++x) {
        const Mark pixel = view.source({x, y}, kWidth, kHeight);
        EXPECT_EQ(shown.View().At(x, y), source.View().At(pixel.x, pixel.y)) << view.menuIndex;
      }
  }
}

}  // namespace
}  // namespace corvane
