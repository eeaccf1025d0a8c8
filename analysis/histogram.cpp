#include "analysis/histogram.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/level_count.h"
#include "base/numeric.h"
#include "base/text.h"
#include "core/slot_picture.h"

namespace corvane {
namespace {

constexpr int kGraphHeight = 160;  // units that whole decades share
constexpr int kLastLevel = 256;    // its place in a frame, which begins one unit left of level 0
constexpr int kDarkLevels = 26;    // 0..25, the darkest tenth

// Rounded to 32 bits, so that a count of 1000 has the logarithm 3 and not a little less.
float Logarithm(float count) {
  return count <= 1.0f ? 0.0f : static_cast<float>(std::log(static_cast<double>(count)) / std::log(10.0));
}

double Total(const LevelHistogram& counts) { return std::accumulate(counts.begin(), counts.end(), 0.0); }

std::string WholeNumber(float value) { return FixedDecimals(std::nearbyint(value), 0); }

}  // namespace

void CountPixels(ConstGrayView picture, LevelHistogram& counts) {
  const LevelCounts found = CountLevels(picture);
  for (int level = 0; level < 256; ++level) counts[level] += static_cast<float>(found[level]);
}

void CountBytes(std::span<const unsigned char> bytes, LevelHistogram& counts) {
  const int size = static_cast<int>(bytes.size());
  CountPixels({bytes.data(), size, 1, size}, counts);
}

std::optional<Refusal> LumVect(ModCV& cv, const std::filesystem::path& bitmap) {
  if (auto refusal = LoadDisplayBits(cv, bitmap)) return refusal;
  CountPixels(cv.Display(), cv.LumHist);
  return std::nullopt;
}

void CountCurrentImage(ModCV& cv) {
  cv.BytesPerPixel = cv.SlotBytesPerPixel[cv.CurrentSlot];
  if (cv.BytesPerPixel != 1) LoadSlotData(cv);
  cv.LumHist.fill(0);
  cv.LumHistLog.fill(0);
  CountBytes({cv.DisplayBits.data(), cv.DisplayBits.size()}, cv.LumHist);
}

double DarkShare(const LevelHistogram& counts) {
  const double total = Total(counts);
  const double dark = std::accumulate(counts.begin(), counts.begin() + kDarkLevels, 0.0);
  return total > 0 ? dark / total : 0;
}

HistogramGraph GraphHistogram(const LevelHistogram& counts) {
  HistogramGraph graph;
  std::transform(counts.begin(), counts.end(), graph.logarithms.begin(), Logarithm);
  const float highest = *std::max_element(graph.logarithms.begin(), graph.logarithms.end());
  graph.decades = static_cast<int>(std::floor(std::max(1.0f, highest))) + 1;
  graph.barScale = kGraphHeight / graph.decades;
  const float scale = static_cast<float>(graph.barScale);
  for (int level = 0; level < 256; ++level) {
    const float x = static_cast<float>(level);
    const float logarithm = graph.logarithms[level];
    if (logarithm > 0) graph.strokes.push_back({x, 0, x, scale * logarithm, kHistogramBar});
  }
  for (int k = 0; k <= graph.decades; ++k) {
    const float y = scale * static_cast<float>(k);
    graph.strokes.push_back({-1, y, 256, y, kHistogramGrid});
  }
  return graph;
}

CountAxis LabelCounts(int decades, int barScale, const GraphFrame& frame) {
  CountAxis axis;
  const float x = static_cast<float>(frame.Right() + 4);
  for (int k = 0; k <= decades; ++k) {
    const float y = static_cast<float>(frame.Bottom() - barScale * k);
    axis.ticks.push_back({x, y, x + 8, y, kBlack});
    axis.labels.push_back({x + 10, y - 6, Grouped(std::pow(10.0, k))});
  }
  return axis;
}

LevelAxis GrayLevelAxis() { return {"0", "255"}; }

LevelAxis DataLevelAxis(int bytesPerPixel, float minimum, float maximum) {
  if (bytesPerPixel == 1) return GrayLevelAxis();
  if (minimum > maximum) return {};  // nothing but blank pixels
  switch (bytesPerPixel) {
    case 2: {
      const int offset = std::fabs(minimum) < 10 ? -3 : minimum >= 1000 ? -13 : -8;
      return {WholeNumber(minimum), WholeNumber(maximum), offset, 240};
    }
    case 4:
    case -4:
      return {Scientific(minimum), Scientific(maximum), -13, 230};
  }
  return {};
}

std::vector<Label> LabelLevels(const LevelAxis& axis, const GraphFrame& frame) {
  const float left = static_cast<float>(frame.left);
  const float right = left + kLastLevel;
  const float y = static_cast<float>(frame.Bottom()) + 4 * frame.textScale;
  return {{left + frame.textScale * static_cast<float>(axis.leftOffset), y, axis.left},
          {right + frame.textScale * static_cast<float>(axis.rightOffset - kLastLevel), y, axis.right}};
}

std::string HistogramCaption(int bytesPerPixel) {
  switch (bytesPerPixel) {
    case 1:
      return "Image Histogram at 8 Bits Per Pixel";
    case 2:
    case 4:
    case -4:
      return "  Image Histogram (BITPIX = " + std::to_string(8 * bytesPerPixel) + ")";
  }
  return "";
}

std::string DescribeHistogram(const LevelHistogram& counts, const LevelAxis& axis) {
  std::string text = "Histogram, left ";
  text.append(axis.left).append(", right ").append(axis.right).append(", top count ");
  text.append(Grouped(std::pow(10.0, GraphHistogram(counts).decades)));
  if (Total(counts) == 0) return text += ": no pixels.";
  const auto occurs = [](float count) { return count > 0; };
  const auto peak = std::max_element(counts.begin(), counts.end());
  const auto lowest = std::find_if(counts.begin(), counts.end(), occurs) - counts.begin();
  const auto highest = counts.rend() - std::find_if(counts.rbegin(), counts.rend(), occurs) - 1;
  text.append(": most pixels (").append(Grouped(*peak));
  text.append(") have gray level ").append(std::to_string(peak - counts.begin()));
  text.append(", levels ").append(std::to_string(lowest)).append(" to ").append(std::to_string(highest));
  text.append(" occur, ").append(FixedDecimals(100 * DarkShare(counts), 0));
  return text += " % of the pixels are in the darkest tenth.";
}

}  // namespace corvane
