#include <gtest/gtest.h>

#include "tests/support/file_makers.h"
#include "tests/support/test_files.h"
#include "tests/support/window_controls.h"
#include "widgets/PictureBox.h"
#include "widgets/Thumbnail.h"

namespace corvane {
namespace {

TEST(PictureBox, MapsUnitsToPixels) {
  PictureBox box;
  box.resize(258, 163);
  box.SetCoordinates(-1, 257, -1, 162);  // one unit to a pixel
  EXPECT_EQ(box.Pixel(-1, -1), QPoint(0, 162));
  EXPECT_EQ(box.Pixel(0, 0), QPoint(1, 161));
  EXPECT_EQ(box.Pixel(256, 161), QPoint(257, 0));
  box.resize(20, 10);
  box.SetCoordinates(0, 10, 0, 100);
  EXPECT_EQ(box.Pixel(9.99, 99.9), QPoint(19, 0));
  EXPECT_EQ(box.Pixel(0.5, 10), QPoint(1, 8));
}

TEST(PictureBox, DrawsStrokesOnALayerBothEndsIncluded) {
  PictureBox box;
  box.resize(9, 7);
  box.SetBackground(Qt::white);
  box.SetCoordinates(0, 9, 0, 7);
  const Stroke strokes[] = {
      {2, 3, 5, 3, kBlack}, {7, 6, 7, 4, kRed}, {0, 0, 0, 0, kDarkGray}, {1, 4, 3, 6, kBlack}};
  box.Draw(strokes);
  int drawn = 0;
  for (int y = 0; y < 7; ++y)
    for (int x = 0; x < 9; ++x) drawn += box.Point(x, y) != Qt::white;
  EXPECT_EQ(drawn, 4 + 3 + 1 + 3);
  for (const int x : {2, 5}) EXPECT_EQ(box.Point(x, 3), Qt::black) << x;
  for (const int y : {4, 6}) EXPECT_EQ(box.Point(7, y), Qt::red) << y;
  EXPECT_EQ(box.Point(0, 0), ToQt(kDarkGray));
  for (const int i : {1, 2, 3}) EXPECT_EQ(box.Point(i, i + 3), Qt::black) << i;
  EXPECT_FALSE(box.Point(9, 0).isValid());
  // Also on a finer screen, where ctest runs this a second time.
  const QImage shown = box.grab().toImage();
  const int fine = static_cast<int>(shown.devicePixelRatio());
  const auto ink = [&](bool ofRows) {
    const auto runs = InkRuns(shown, QRect(QPoint(0, 0), QSize(6, 3) * fine), ofRows);
    return runs.empty() ? QRect() : runs.front() | runs.back();
  };
  EXPECT_EQ(ink(false) & ink(true), QRect(QPoint(1, 0) * fine, QSize(3, 3) * fine)) << "the slanting line";

  QImage picture(9, 7, QImage::Format_RGB32);
  picture.fill(Qt::blue);
  box.SetPicture(picture);
  EXPECT_EQ(box.Point(2, 3), Qt::black);
  EXPECT_EQ(box.Flattened().pixelColor(7, 0), Qt::red);
  box.Clear();
  EXPECT_EQ(box.Point(2, 3), Qt::blue);
  box.SetPicture({});
  EXPECT_EQ(box.Point(2, 3), Qt::white);
}

TEST(Thumbnail, IsAsFineAsTheScreen) {
  const TemporaryFolder folder;
  WriteFile(folder.Path() / "a.bmp", GrayBitmap(8, 200, 100, [](int x, int) { return x; }));
  Thumbnail preview({50, 50});
  ASSERT_TRUE(preview.LoadFile(folder.Path() / "a.bmp"));
  EXPECT_EQ(preview.size(), QSize(50, 25));
  EXPECT_EQ(preview.Picture().size(), preview.size() * preview.devicePixelRatio());
}

TEST(PictureBox, ShowsTheFileItLoadedAndKeepsItWhenAnotherCannotBeRead) {
  const TemporaryFolder folder;
  const auto file = folder.Path() / "picture.bmp";
  const auto color = [](int x, int y) { return Color{std::uint8_t(x), std::uint8_t(y), 9}; };
  WriteFile(file, BitmapBytes({24, 3, 2, false, color, {}}));
  PictureBox box;
  ASSERT_TRUE(box.LoadFile(file));
  EXPECT_EQ(box.PictureSize(), QSize(3, 2));
  box.resize(5, 4);
  box.SetBackground(Qt::white);
  box.SetCoordinates(0, 5, 0, 4);
  WriteFile(folder.Path() / "damaged.bmp", "BM");
  EXPECT_FALSE(box.LoadFile(folder.Path() / "damaged.bmp"));
  std::filesystem::remove(file);
  EXPECT_EQ(box.Point(2, 3), QColor(2, 0, 9));
  EXPECT_EQ(box.Point(0, 2), QColor(0, 1, 9));
  EXPECT_EQ(box.Point(3, 3), Qt::white);
}

}  // namespace
}  // namespace corvane
