#include "analysis/profile.h"

#include <algorithm>

#include "base/marker.h"
#include "base/numeric.h"

namespace corvane {
namespace {

constexpr int kBefore = 49;  // pixels left of the marker, and rows above it
constexpr int kAfter = 50;   // pixels right of the marker, and rows below it
constexpr int kPositions = 100;

struct Span {
  int first = 0;
  int last = -1;
};

Span ColumnsAround(int markX, int width) {
  return {std::max(markX - kBefore, 0), std::min(markX + kAfter, width - 1)};
}
Span RowsAround(int markY, int height) {
  return {std::max(markY - kAfter, 0), std::min(markY + kBefore, height - 1)};
}

// Inside the picture even where the picture became smaller since the marker was placed.
Mark MarkerOf(const ModCV& cv) {
  return ClampMark({RoundEven(cv.MarkX), RoundEven(cv.MarkY)}, std::max(cv.Width(), 1),
                   std::max(cv.Height(), 1));
}

void AddLine(std::vector<Stroke>& strokes, int x1, int y1, int x2, int y2, Color color) {
  strokes.push_back({static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
                     static_cast<float>(y2), color});
}

// Positions that the graph leaves free because the marker is nearer than 50 pixels to an edge.
int FreePositions(int pixelsToEdge) { return std::max(kPositions / 2 - pixelsToEdge, 0); }

// What both graphs print: the ends of the position axis, its middle, the value axis and its name.
std::vector<Label> AxisLabels(const GraphFrame& frame, const char* right) {
  const float scale = frame.textScale;
  const float left = static_cast<float>(frame.left);
  const float below = static_cast<float>(frame.Bottom() + 3);
  const float zero = static_cast<float>(frame.Bottom() - 1);  // the line y = 0
  const float middle = static_cast<float>(frame.top + 128);
  std::vector<Label> labels = {{left - 8 * scale, below, "-50"},
                               {left + 100 - 3 * scale, below, "0"},
                               {left + 200 - 8 * scale, below, right},
                               {left - 12 * scale, zero - 8 * scale, "0"},
                               {left - 26 * scale, zero - 250 - 8 * scale, "250"}};
  const std::vector<Label> word =
      VerticalWord("Luminance", left - 42 * scale, middle - 58 * scale, 13 * scale);
  labels.insert(labels.end(), word.begin(), word.end());
  return labels;
}

// A row or a column, to be described in a sentence. `first` is the position of levels[0], `step` 1 or -1.
struct Line {
  std::string name;
  std::string position;
  std::span<const std::int32_t> levels;
  int first = 0;
  int step = 1;
  int marked = 0;
};

std::string Describe(const Line& line) {
  std::string text = line.name;
  if (line.levels.empty()) return text += ": no pixels.";
  const auto place = [&](std::size_t k) {
    return std::to_string(line.first + line.step * static_cast<int>(k) + 1);
  };
  const auto at = [&](auto level) {
    const auto k = static_cast<std::size_t>(level - line.levels.begin());
    return std::to_string(*level).append(" at ").append(line.position).append(" ").append(place(k));
  };
  const auto lowest = std::min_element(line.levels.begin(), line.levels.end());
  const auto highest = std::max_element(line.levels.begin(), line.levels.end());
  text.append(", ").append(line.position).append("s ").append(place(0));
  text.append(" to ").append(place(line.levels.size() - 1));
  text.append(": lowest gray level ").append(at(lowest));
  text.append(", highest ").append(at(highest));
  // The picture may have changed its size since the profile was taken.
  const std::size_t k = static_cast<std::size_t>(std::max(line.step * (line.marked - line.first), 0));
  if (k < line.levels.size())
    text.append(", marker ").append(at(line.levels.begin() + static_cast<std::ptrdiff_t>(k)));
  return text += ".";
}

}  // namespace

void Profile(ModCV& cv) {
  cv.XProfile.clear();
  cv.YProfile.clear();
  const ConstGrayView picture = cv.Display();
  if (cv.DisplayBits.empty() || cv.DisplayBits.size() < picture.Size()) return;
  const Mark marker = MarkerOf(cv);
  const Span columns = ColumnsAround(marker.x, picture.width);
  const Span rows = RowsAround(marker.y, picture.height);
  for (int x = columns.first; x <= columns.last; ++x) cv.XProfile.push_back(picture.At(x, marker.y));
  for (int y = rows.last; y >= rows.first; --y) cv.YProfile.push_back(picture.At(marker.x, y));
}

std::vector<Stroke> RowProfileGraph(std::span<const std::int32_t> levels, int markX) {
  std::vector<Stroke> strokes;
  const int count = static_cast<int>(levels.size());
  const int offset = FreePositions(markX);
  for (int k = 0; k < count; ++k) {
    const int x = 2 * (offset + k);
    AddLine(strokes, x, 0, x, levels[k], kBlack);
    AddLine(strokes, x + 1, 0, x + 1, levels[k], kBlack);
  }
  if (offset > 0) AddLine(strokes, 0, 0, 2 * offset, 0, kRed);
  if (offset + count - 1 < kPositions) AddLine(strokes, 2 * (offset + count - 1), 0, 200, 0, kRed);
  return strokes;
}

std::vector<Stroke> ColumnProfileGraph(std::span<const std::int32_t> levels, int rowsAbove) {
  std::vector<Stroke> strokes;
  const int count = static_cast<int>(levels.size());
  const int offset = FreePositions(rowsAbove);
  for (int k = 0; k < count; ++k) {
    const int x = 199 - 2 * (offset + k);
    AddLine(strokes, x, 0, x, levels[k], kBlack);
    AddLine(strokes, x - 1, 0, x - 1, levels[k], kBlack);
  }
  if (offset > 0) AddLine(strokes, 200, 0, 2 * (count - 1), 0, kRed);
  if (offset + count - 1 < kPositions) AddLine(strokes, 198 - 2 * (offset + count - 1), 0, 0, 0, kRed);
  return strokes;
}

std::vector<Stroke> ProfileGrid() {
  std::vector<Stroke> strokes;
  for (int x = 10; x <= 190; x += 10) AddLine(strokes, x, 0, x, 257, kDarkGray);
  for (int y = 25; y <= 250; y += 25) AddLine(strokes, 0, y, 201, y, kDarkGray);
  return strokes;
}

std::vector<Label> RowProfileLabels(const GraphFrame& frame) { return AxisLabels(frame, "50"); }
std::vector<Label> ColumnProfileLabels(const GraphFrame& frame) { return AxisLabels(frame, "+50"); }

std::string DescribeRowProfile(const ModCV& cv) {
  const Mark marker = MarkerOf(cv);
  return Describe({"X profile through row " + std::to_string(marker.y + 1), "column", cv.XProfile,
                   ColumnsAround(marker.x, cv.Width()).first, 1, marker.x});
}

std::string DescribeColumnProfile(const ModCV& cv) {
  const Mark marker = MarkerOf(cv);
  return Describe({"Y profile through column " + std::to_string(marker.x + 1), "row", cv.YProfile,
                   RowsAround(marker.y, cv.Height()).last, -1, marker.y});
}

}  // namespace corvane
