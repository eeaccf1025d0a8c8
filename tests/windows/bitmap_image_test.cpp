#include <gtest/gtest.h>

#include "tests/support/file_makers.h"
#include "tests/support/test_files.h"
#include "widgets/BitmapImage.h"

namespace corvane {
namespace {

class BitmapImage : public testing::Test {
 protected:
  QImage Load(std::string_view bytes) const {
    WriteFile(file, bytes);
    return LoadBitmapImage(file);
  }
  TemporaryFolder folder;
  const std::filesystem::path file = folder.Path() / "picture.bmp";
};

Color PixelAt(int x, int y) {
  const auto level = static_cast<std::uint8_t>(37 * x + 11 * y + 5);
  return {level, static_cast<std::uint8_t>(level ^ 0x5a), static_cast<std::uint8_t>(255 - level)};
}

TEST_F(BitmapImage, ShowsEveryPixelUprightAtEverySmallSize) {
  std::vector<Color> palette;
  for (int i = 0; i < 256; ++i)
    palette.push_back({static_cast<std::uint8_t>(i), 7, static_cast<std::uint8_t>(255 - i)});
  for (const int bits : {8, 24})
    for (int width = 1; width <= 9; ++width)
      for (int height = 1; height <= 5; ++height) {
        SCOPED_TRACE(testing::Message() << bits << " bits " << width << 'x' << height);
        const QImage image = Load(BitmapBytes({bits, width, height, false, PixelAt, palette}));
        ASSERT_EQ(image.size(), QSize(width, height));
        EXPECT_EQ(image.format(), bits == 8 ? QImage::Format_Indexed8 : QImage::Format_RGB888);
        for (int y = 0; y < height; ++y)
          for (int x = 0; x < width; ++x) {
            const Color wanted = bits == 8 ? palette[PixelAt(x, y).red] : PixelAt(x, y);
            EXPECT_EQ(image.pixel(x, y), qRgb(wanted.red, wanted.green, wanted.blue)) << x << ',' << y;
          }
      }
}

TEST_F(BitmapImage, ReadsAPictureOfManyBlocks) {
  const QImage image = Load(BitmapBytes({8, 701, 1999, false, PixelAt, {}}));
  ASSERT_EQ(image.size(), QSize(701, 1999));
  for (int y = 0; y < 1999; ++y)
    for (const int x : {0, 700}) ASSERT_EQ(qRed(image.pixel(x, y)), PixelAt(x, y).red) << x << ',' << y;
}

TEST_F(BitmapImage, IsNullForADamagedFile) {
  EXPECT_TRUE(LoadBitmapImage(folder.Path() / "absent.bmp").isNull());
  EXPECT_TRUE(LoadBitmapImage(folder.Path()).isNull());
  const std::string good = BitmapBytes({8, 6, 4, false, PixelAt, {}});
  ASSERT_FALSE(Load(good).isNull());
  for (const std::size_t length : {std::size_t{0}, std::size_t{53}, std::size_t{1078}, good.size() - 1})
    EXPECT_TRUE(Load(good.substr(0, length)).isNull()) << length;
  struct Damage {
    std::size_t at;
    std::uint32_t value;
    int size;
  };
  for (const Damage& damage :
       {Damage{0, 'X', 1}, Damage{10, 54, 4}, Damage{10, 0xffffffff, 4}, Damage{14, 12, 4}, Damage{18, 0, 4},
        Damage{18, 0x7fffffff, 4}, Damage{22, 0, 4}, Damage{22, 0xfffffffc, 4}, Damage{28, 4, 2},
        Damage{30, 1, 4}}) {
    std::string bytes = good;
    SetField(bytes, damage.at, damage.value, damage.size);
    EXPECT_TRUE(Load(bytes).isNull()) << damage.at << " = " << damage.value;
  }
}

}  // namespace
}  // namespace corvane
