#include "filters/median.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "base/pixel_buffer.h"
#include "filters/median_kernels.h"

namespace corvane {
namespace {

constexpr int kMostRows = 2 * kLargestMedianRadius + 2;  // that the windows of two neighboring rows cover

// The rows of an image that a pair of windows covers, split; those that the next pair also covers are kept.
template <class Value>
class SplitRows {
 public:
  SplitRows(int radius, int width)
      : radius_(radius), part_(PartSize(width)), values_(2 * part_ * (2 * radius + 2)) {
    held_.fill(-1);
  }

  // The rows for the medians of rows `y` and `below`, the next one; or `y` again, if there is none.
  // `make`(y, row) splits a row that is not held yet.
  template <class Make>
  std::array<SplitRow<Value>, kMostRows> Windows(int y, int below, Make make) {
    std::array<SplitRow<Value>, kMostRows> rows;
    for (int i = 0; i <= 2 * radius_; ++i) rows[i] = Row(y - radius_ + i, make);
    rows[2 * radius_ + 1] = below > y ? Row(below + radius_, make) : rows[0];
    return rows;
  }

 private:
  // An odd number of cache lines keeps equal places of all rows apart in the cache.
  static std::size_t PartSize(int width) {
    constexpr std::size_t kLine = 64;
    const std::size_t bytes = sizeof(Value) * ((width + 1) / 2) + kMedianSlack;
    return ((bytes + kLine - 1) / kLine | 1) * kLine / sizeof(Value);
  }

  template <class Make>
  SplitRow<Value> Row(int y, Make make) {
    const int slot = y % (2 * radius_ + 2);
    Value* const even = values_.data() + 2 * part_ * slot;
    const SplitRow<Value> row{even, even + part_};
    if (held_[slot] != y) make(y, row);
    held_[slot] = y;
    return row;
  }

  int radius_;
  std::size_t part_;
  PixelBuffer<Value> values_;
  std::array<int, kMostRows> held_;
};

// Calls `find`(y, below) for every two rows that have medians, then `report` for each of them. A last row
// without a row below it is given twice. False when `report` cancels.
template <class Find, class Report>
bool InPairs(int height, int radius, Find find, Report report) {
  for (int y = radius; y < height - radius; y += 2) {
    const int below = std::min(y + 1, height - radius - 1);
    find(y, below);
    for (int row = y; row <= below; ++row) {
      if (!report(row)) return false;
    }
  }
  return true;
}

// How a row takes part: rounded to words, or else as it is.
enum class RowKind { Words, Floats, WithBlanks };

bool HasBlank(const float* row, int width) {
  bool blank = false;
  for (int x = 0; x < width; ++x) blank |= std::isnan(row[x]);
  return blank;
}

// Kernels cannot order NaN, so they find nothing useful in a window with a blank: it becomes blank here.
void SpreadBlanks(const float* row, int width, int radius, float* result) {
  for (int x = 0; x < width; ++x) {
    if (!std::isnan(row[x])) continue;
    const int first = std::max(x - radius, radius);
    const int end = std::min(x + radius + 1, width - radius);
    for (int i = first; i < end; ++i) result[i] = std::numeric_limits<float>::quiet_NaN();
  }
}

// Several rows at a time: the first two of them cost more than the others.
bool MedianOfNine(ConstGrayView source, GrayView result, Progress& progress) {
  constexpr int kRows = 8;
  const int last = std::max(1, source.height - 3);
  for (int y = 1; y < source.height - 1; y += kRows) {
    const int rows = std::min(kRows, source.height - 1 - y);
    ChosenMedianKernels().nine(source.Row(y - 1), source.stride, result.Row(y) + 1, result.stride,
                               source.width - 2, rows);
    for (int i = 0; i < rows; ++i) {
      if (!progress.Row(y - 1 + i, last)) return false;
    }
  }
  return true;
}

}  // namespace

bool MedianPreview(ConstGrayView source, GrayView result, int radius, Progress& progress) {
  const MedianKernels& kernels = ChosenMedianKernels();
  if (radius == 1 && source.width >= kLeastNines + 2) return MedianOfNine(source, result, progress);
  const int count = source.width - 2 * radius;
  SplitRows<std::uint8_t> split(radius, source.width);
  const auto make = [&](int y, SplitRow<std::uint8_t> row) {
    kernels.splitBytes(source.Row(y), source.width, row);
  };
  const auto find = [&](int y, int below) {
    std::uint8_t* const results[] = {result.Row(y) + radius, result.Row(below) + radius};
    kernels.bytes[radius - 1](split.Windows(y, below, make).data(), results, count);
  };
  const int last = std::max(1, source.height - 2 * radius - 1);
  return InPairs(source.height, radius, find, [&](int y) { return progress.Row(y - radius, last); });
}

bool MedianData(ConstFloatView source, FloatView result, int radius, Progress& progress) {
  const MedianKernels& kernels = ChosenMedianKernels();
  const int width = source.width;
  const int count = width - 2 * radius;
  SplitRows<std::uint16_t> words(radius, width);
  SplitRows<float> floats(radius, width);
  std::array<RowKind, kMostRows> kinds;
  const auto kind = [&](int y) -> RowKind& { return kinds[y % kMostRows]; };
  const auto makeWords = [&](int y, SplitRow<std::uint16_t> row) {
    const bool fits = kernels.splitRounded(source.Row(y), width, row);
    kind(y) = fits ? RowKind::Words : HasBlank(source.Row(y), width) ? RowKind::WithBlanks : RowKind::Floats;
  };
  const auto makeFloats = [&](int y, SplitRow<float> row) { kernels.splitFloats(source.Row(y), width, row); };
  const auto find = [&](int y, int below) {
    float* const results[] = {result.Row(y) + radius, result.Row(below) + radius};
    const auto rows = words.Windows(y, below, makeWords);
    bool fit = true;
    for (int i = y - radius; i <= below + radius; ++i) fit = fit && kind(i) == RowKind::Words;
    if (fit) return kernels.words[radius - 1](rows.data(), results, count);
    kernels.floats[radius - 1](floats.Windows(y, below, makeFloats).data(), results, count);
    for (int row = y; row <= below; ++row) {
      for (int i = row - radius; i <= row + radius; ++i) {
        if (kind(i) == RowKind::WithBlanks) SpreadBlanks(source.Row(i), width, radius, result.Row(row));
      }
    }
  };
  const int last = std::max(1, source.height - 1);
  return InPairs(source.height, radius, find, [&](int y) { return progress.Row(y, last); });
}

FilterEntry Median() {
  return {
      "Median", true,
      [](const PreviewRun& run) { return MedianPreview(run.source, run.result, run.radius, run.progress); },
      [](const DataRun& run) { return MedianData(run.source, run.result, run.radius, run.progress); }};
}

}  // namespace corvane
