#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/graph_labels.h"
#include "base/display_bitmap.h"
#include "base/drawing.h"
#include "base/refusal.h"
#include "core/modcv.h"

namespace corvane {

// Pixels of each gray level, in the form of the store's LumHist.
using LevelHistogram = std::array<float, 256>;

// Adds the pixels of a picture to the counts; row padding is not counted.
void CountPixels(ConstGrayView picture, LevelHistogram& counts);
// Adds every byte of display rows, padding included.
void CountBytes(std::span<const unsigned char> bytes, LevelHistogram& counts);

// Reads the pixel bytes of a display bitmap into DisplayBits and adds its pixels to LumHist.
std::optional<Refusal> LumVect(ModCV& cv, const std::filesystem::path& bitmap);

// What the histogram window shows: BytesPerPixel of the current slot, ImageMin and ImageMax of its data where
// it has any, and fresh counts of every byte of DisplayBits in LumHist.
void CountCurrentImage(ModCV& cv);

// The share of the pixels in the darkest tenth of the gray levels, 0..1.
double DarkShare(const LevelHistogram& counts);

// The graph of the counts on a logarithmic axis. Coordinates run from -1 to 257 and from -1 (bottom) to 162.
struct HistogramGraph {
  LevelHistogram logarithms{};  // to the base 10; 0 for a count of 1 or less
  int decades = 2;              // shown on the count axis
  int barScale = 80;            // units of height per decade
  std::vector<Stroke> strokes;  // the bars, then the grid over them
};
inline constexpr Color kHistogramBar{232, 232, 232};
inline constexpr Color kHistogramGrid{176, 176, 176};
HistogramGraph GraphHistogram(const LevelHistogram& counts);

// Ticks and powers of ten to the right of the graph.
struct CountAxis {
  std::vector<Stroke> ticks;
  std::vector<Label> labels;
};
CountAxis LabelCounts(int decades, int barScale, const GraphFrame& frame);

// What stands under the two ends of the graph, and how far from its left edge.
struct LevelAxis {
  std::string left;
  std::string right;
  int leftOffset = -3;
  int rightOffset = 245;
};
// "0" and "255": the tool windows.
LevelAxis GrayLevelAxis();
// The histogram window: gray levels for a bytes-per-pixel code of 1, the range of the data for 2, 4 and -4,
// nothing for any other code.
LevelAxis DataLevelAxis(int bytesPerPixel, float minimum, float maximum);
std::vector<Label> LabelLevels(const LevelAxis& axis, const GraphFrame& frame);

// Caption of the histogram window; empty where it keeps the one it has.
std::string HistogramCaption(int bytesPerPixel);

// The graph in a sentence: its axis labels, its peak, the levels that occur, the share of dark pixels.
std::string DescribeHistogram(const LevelHistogram& counts, const LevelAxis& axis);

}  // namespace corvane
