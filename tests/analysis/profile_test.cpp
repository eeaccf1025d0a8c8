#include "analysis/profile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/images.h"

namespace corvane {
namespace {

// Red lines as pairs of x, in drawing order.
std::vector<std::pair<float, float>> RedLines(const std::vector<Stroke>& strokes) {
  std::vector<std::pair<float, float>> lines;
  for (const Stroke& stroke : strokes) {
    if (stroke.color != kRed) continue;
    EXPECT_EQ(stroke.y1, 0);
    EXPECT_EQ(stroke.y2, 0);
    lines.emplace_back(stroke.x1, stroke.x2);
  }
  return lines;
}

void Show(ModCV& cv, const DisplayBitmap& picture) {
  DescribeDisplayBitmap(cv, picture.width, picture.height);
  cv.DisplayBits.Resize(picture.bits.size());
  std::memcpy(cv.DisplayBits.data(), picture.bits.data(), picture.bits.size());
}

// The profiles by their definition: which columns and rows they cover.
struct Cover {
  int markX, markY;
  int firstColumn, lastColumn;
  int firstRow, lastRow;
};

TEST(Profile, CoversAHundredPixelsAroundTheMarkerAndStopsAtTheEdges) {
  const DisplayBitmap wide = Noise(301, 251, 1);
  const DisplayBitmap narrow = Noise(7, 5, 2);
  const std::pair<const DisplayBitmap&, Cover> cases[] = {
      {wide, {150, 120, 101, 200, 70, 169}},   //
      {wide, {0, 0, 0, 50, 0, 49}},            //
      {wide, {300, 250, 251, 300, 200, 250}},  //
      {wide, {49, 50, 0, 99, 0, 99}},          //
      {wide, {48, 49, 0, 98, 0, 98}},          //
      {wide, {250, 201, 201, 300, 151, 250}},  //
      {wide, {251, 202, 202, 300, 152, 250}},  //
      {narrow, {3, 2, 0, 6, 0, 4}},            //
      {narrow, {0, 4, 0, 6, 0, 4}},
  };
  for (const auto& [picture, c] : cases) {
    SCOPED_TRACE(testing::Message() << "marker " << c.markX << ',' << c.markY);
    ModCV cv;
    Show(cv, picture);
    cv.MarkX = static_cast<float>(c.markX);
    cv.MarkY = static_cast<float>(c.markY);
    cv.XProfile = {1, 2, 3};
    Profile(cv);
    std::vector<std::int32_t> row;
    std::vector<std::int32_t> column;
    for (int x = c.firstColumn; x <= c.lastColumn; ++x) row.push_back(picture.View().At(x, c.markY));
    for (int y = c.lastRow; y >= c.firstRow; --y) column.push_back(picture.View().At(c.markX, y));
    EXPECT_EQ(cv.XProfile, row);
    EXPECT_EQ(cv.YProfile, column);
  }
}

TEST(Profile, StaysInsideAPictureThatBecameSmaller) {
  ModCV cv;
  Show(cv, Levels(3, 2, {1, 2, 3, 4, 5, 6}));
  cv.MarkX = 5000;
  cv.MarkY = 4000;
  Profile(cv);
  EXPECT_THAT(cv.XProfile, testing::ElementsAre(4, 5, 6));
  EXPECT_THAT(cv.YProfile, testing::ElementsAre(6, 3));

  ModCV empty;
  Profile(empty);
  EXPECT_THAT(empty.XProfile, testing::IsEmpty());
  EXPECT_EQ(DescribeRowProfile(empty), "X profile through row 1: no pixels.");
}

TEST(ProfileGraph, MarksPositionsOutsideThePictureInRed) {
  using Lines = std::vector<std::pair<float, float>>;
  const std::vector<std::int32_t> half(51, 9);
  EXPECT_EQ(RowProfileGraph(half, 0)[0].x1, 100);
  EXPECT_EQ(RedLines(RowProfileGraph(half, 0)), (Lines{{0, 100}}));
  EXPECT_EQ(ColumnProfileGraph(half, 0)[0].x1, 99);
  EXPECT_EQ(RedLines(ColumnProfileGraph(half, 0)), (Lines{{200, 100}}));
  // At the right and at the bottom edge.
  const std::vector<std::int32_t> fifty(50, 9);
  EXPECT_EQ(RedLines(RowProfileGraph(fifty, 300)), (Lines{{98, 200}}));
  EXPECT_EQ(RedLines(ColumnProfileGraph(fifty, 300)), (Lines{{100, 0}}));
  // A picture of seven columns or five rows, marked near its middle.
  EXPECT_EQ(RedLines(RowProfileGraph(std::vector<std::int32_t>(7, 9), 3)), (Lines{{0, 94}, {106, 200}}));
  EXPECT_EQ(RedLines(ColumnProfileGraph(std::vector<std::int32_t>(5, 9), 2)), (Lines{{200, 8}, {94, 0}}));
}

TEST(ProfileLabels, NameBothAxesOfBothGraphs) {
  const GraphFrame frame{100, 30, 202, 259};
  std::string row;
  for (const Label& label : RowProfileLabels(frame)) row += label.text + " ";
  EXPECT_EQ(row, "-50 0 50 0 250 L u m i n a n c e ");
  std::string column;
  for (const Label& label : ColumnProfileLabels(frame)) column += label.text + " ";
  EXPECT_EQ(column, "-50 0 +50 0 250 L u m i n a n c e ");
}

TEST(ProfileDescription, NamesRangePositionsAndMarker) {
  ModCV cv;
  Show(cv, Levels(4, 3,
                  {10, 20, 30, 40,  //
                   11, 99, 31, 41,  //
                   12, 22, 32, 42}));
  cv.MarkX = 2;
  cv.MarkY = 1;
  Profile(cv);
  EXPECT_EQ(
      DescribeRowProfile(cv),
      "X profile through row 2, columns 1 to 4: lowest gray level 11 at column 1, highest 99 at column 2, "
      "marker 31 at column 3.");
  EXPECT_EQ(
      DescribeColumnProfile(cv),
      "Y profile through column 3, rows 3 to 1: lowest gray level 30 at row 1, highest 32 at row 3, marker "
      "31 at row 2.");
}

}  // namespace
}  // namespace corvane
