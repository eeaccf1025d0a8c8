#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>

#include "core/working_files.h"
#include "tests/support/file_makers.h"
#include "tests/support/test_files.h"

namespace corvane {
namespace {

double Lightness(const std::array<int, 3>& color) {
  std::array<double, 3> linear{};
  for (int i = 0; i < 3; ++i) {
    const double part = color[i] / 255.0;
    linear[i] = part > 0.04045 ? std::pow((part + 0.055) / 1.055, 2.4) : part / 12.92;
  }
  const double y = 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2];
  return y > 0.008856 ? 116 * std::cbrt(y) - 16 : 903.3 * y;
}

std::array<int, 3> PaletteColor(const std::string& bytes, int level) {
  const std::uint32_t entry = FieldAt(bytes, 54 + 4 * static_cast<std::size_t>(level));
  return {static_cast<int>(entry >> 16 & 255), static_cast<int>(entry >> 8 & 255),
          static_cast<int>(entry & 255)};
}

TEST(ShippedFiles, TemplatesAreHeadersOfEmptyBitmaps) {
  for (const char* name : {kGrayTemplate, kPalettes[0], kPalettes[1], kPalettes[2], kColorTemplate}) {
    SCOPED_TRACE(name);
    const std::string bytes = ReadFile(AssetFolder() / name);
    const bool isColor = name == std::string(kColorTemplate);
    const std::uint32_t size = isColor ? 54 : 1078;
    ASSERT_EQ(bytes.size(), size);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    EXPECT_EQ(FieldAt(bytes, 10), size);
    EXPECT_EQ(FieldAt(bytes, 14), 40u);
    EXPECT_EQ(FieldAt(bytes, 26), 1u | (isColor ? 24u : 8u) << 16);  // planes and bits per pixel
    EXPECT_EQ(FieldAt(bytes, 30), 0u);
  }
  const std::string gray = ReadFile(AssetFolder() / kGrayTemplate);
  for (int level = 0; level < 256; ++level)
    EXPECT_EQ(PaletteColor(gray, level), (std::array<int, 3>{level, level, level}));
}

TEST(ShippedFiles, PalettesRiseFromDarkToBrightWithoutAJump) {
  for (const char* name : kPalettes) {
    SCOPED_TRACE(name);
    const std::string bytes = ReadFile(AssetFolder() / name);
    EXPECT_LT(Lightness(PaletteColor(bytes, 0)), 5);
    EXPECT_GT(Lightness(PaletteColor(bytes, 255)), 95);
    for (int level = 1; level < 256; ++level) {
      const auto before = PaletteColor(bytes, level - 1);
      const auto color = PaletteColor(bytes, level);
      EXPECT_GT(Lightness(color), Lightness(before)) << level;
      for (int i = 0; i < 3; ++i) EXPECT_LE(std::abs(color[i] - before[i]), 20) << level;
    }
  }
}

}  // namespace
}  // namespace corvane
