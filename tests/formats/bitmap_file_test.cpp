#include "formats/bitmap_file.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/file_makers.h"
#include "tests/support/test_files.h"

namespace corvane {
namespace {

using PixelsOf = std::vector<std::uint32_t>;

Color ColorAt(int x, int y) {
  const auto level = static_cast<std::uint8_t>(37 * x + 11 * y + 5);
  return {level, static_cast<std::uint8_t>(level ^ 0x5a), static_cast<std::uint8_t>(255 - level)};
}

std::vector<Color> Palette() {
  std::vector<Color> palette;
  for (int i = 0; i < 256; ++i)
    palette.push_back({static_cast<std::uint8_t>(i), 7, static_cast<std::uint8_t>(255 - i)});
  return palette;
}

std::uint32_t Shown(int bits, int x, int y) {
  const Color color = bits == 8 ? Palette()[ColorAt(x, y).red] : ColorAt(x, y);
  return 0xff000000u | std::uint32_t{color.red} << 16 | std::uint32_t{color.green} << 8 | color.blue;
}

class WorkingBitmap : public testing::Test {
 protected:
  BitmapFile Open(std::string_view bytes) const {
    WriteFile(path, bytes);
    return BitmapFile(path);
  }
  BitmapFile Open(int bits, int width, int height) const {
    return Open(BitmapBytes({bits, width, height, false, ColorAt, Palette()}));
  }
  static PixelsOf Read(const BitmapFile& file, const PixelRect& part) {
    PixelsOf pixels(static_cast<std::size_t>(part.width) * static_cast<std::size_t>(part.height));
    EXPECT_TRUE(file.Read(part, pixels.data()));
    return pixels;
  }
  static void ExpectShown(int bits, const BitmapFile& file, const PixelRect& part) {
    PixelsOf expected;
    for (int y = part.y; y < part.y + part.height; ++y)
      for (int x = part.x; x < part.x + part.width; ++x) expected.push_back(Shown(bits, x, y));
    EXPECT_EQ(Read(file, part), expected) << bits << " bits, from " << part.x << ',' << part.y;
  }

  TemporaryFolder folder;
  const std::filesystem::path path = folder.Path() / "picture.bmp";
};

TEST_F(WorkingBitmap, GivesEveryPartUprightInItsColors) {
  for (const int bits : {8, 24})
    for (const auto& [width, height] : {std::pair(1, 1), {2, 3}, {3, 1}, {7, 5}, {300, 9}}) {
      const BitmapFile file = Open(bits, width, height);
      ASSERT_EQ(std::pair(file.Width(), file.Height()), std::pair(width, height));
      for (const int x : {0, width / 2, width - 1})
        for (const int y : {0, height / 2, height - 1})
          for (const int columns : {1, 2, width})
            for (const int rows : {1, 3, height})
              ExpectShown(bits, file, {x, y, std::min(columns, width - x), std::min(rows, height - y)});
    }
}

TEST_F(WorkingBitmap, IsReadInManyBlocks) { ExpectShown(8, Open(8, 701, 1999), {0, 0, 701, 1999}); }

TEST_F(WorkingBitmap, SaysWhenItsFileWasCut) {
  const BitmapFile file = Open(24, 300, 9);
  std::filesystem::resize_file(path, 60);
  PixelsOf pixels(2700);
  EXPECT_FALSE(file.Read({0, 0, 300, 9}, pixels.data()));
  EXPECT_FALSE(ReadReduced(file, 10, 3, pixels.data()));
}

TEST_F(WorkingBitmap, IsReducedToMeansOfTheCoveredPixels) {
  constexpr int kWidth = 7, kHeight = 5;
  // Colors, a palette of colors, and levels of gray.
  for (const auto& [bits, palette] : {std::pair(24, Palette()), {8, Palette()}, {8, {}}}) {
    const BitmapFile file = Open(BitmapBytes({bits, kWidth, kHeight, false, ColorAt, palette}));
    EXPECT_EQ(file.IsGray(), palette.empty());
    const PixelsOf full = Read(file, {0, 0, kWidth, kHeight});
    for (int width = 1; width <= kWidth; ++width)
      for (int height = 1; height <= kHeight; ++height) {
        PixelsOf expected;
        for (int y = 0; y < height; ++y)
          for (int x = 0; x < width; ++x) {
            double sums[3] = {}, count = 0;
            for (int row = y * kHeight / height; row < (y + 1) * kHeight / height; ++row)
              for (int column = x * kWidth / width; column < (x + 1) * kWidth / width; ++column, ++count)
                for (int channel = 0; channel < 3; ++channel)
                  sums[channel] += full[row * kWidth + column] >> (16 - 8 * channel) & 0xff;
            std::uint32_t pixel = 0xff;
            for (const double sum : sums) pixel = pixel << 8 | static_cast<std::uint32_t>(sum / count + 0.5);
            expected.push_back(pixel);
          }
        PixelsOf reduced(expected.size());
        EXPECT_TRUE(ReadReduced(file, width, height, reduced.data()));
        EXPECT_EQ(reduced, expected) << width << 'x' << height;
      }
  }
}

TEST_F(WorkingBitmap, IsNotOpenWhereItIsDamaged) {
  EXPECT_FALSE(BitmapFile(folder.Path() / "absent.bmp").IsOpen());
  EXPECT_FALSE(BitmapFile(folder.Path()).IsOpen());
  const std::string good = BitmapBytes({8, 6, 4, false, ColorAt, {}});
  ASSERT_TRUE(Open(good).IsOpen());
  for (const std::size_t length : {std::size_t{0}, std::size_t{53}, std::size_t{1078}, good.size() - 1})
    EXPECT_FALSE(Open(good.substr(0, length)).IsOpen()) << length;
  struct Damage {
    std::size_t at;
    std::uint32_t value;
    int size;
  };
  for (const Damage& damage :
       {Damage{0, 'X', 1}, Damage{10, 54, 4}, Damage{10, 0xffffffff, 4}, Damage{14, 12, 4}, Damage{18, 0, 4},
        Damage{18, 0x7fffffff, 4}, Damage{22, 0, 4}, Damage{22, 0xfffffffc, 4}, Damage{28, 4, 2},
        Damage{28, 32, 2}, Damage{30, 1, 4}}) {
    std::string bytes = good;
    SetField(bytes, damage.at, damage.value, damage.size);
    EXPECT_FALSE(Open(bytes).IsOpen()) << damage.at << " = " << damage.value;
  }
}

}  // namespace
}  // namespace corvane
