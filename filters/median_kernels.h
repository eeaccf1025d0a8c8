#pragma once

#include <cstdint>

#include "base/instruction_set.h"

namespace corvane {

inline constexpr int kLargestMedianRadius = 3;

// A row split into its values at even and at odd places. The windows of two neighbors share all columns but
// one; split rows let one lane sort both. kMedianSlack bytes behind each part may be read.
template <class Value>
struct SplitRow {
  Value* even;
  Value* odd;
};
inline constexpr int kMedianSlack = 128;

inline constexpr int kLeastNines = 64;

struct MedianKernels {
  void (*splitBytes)(const std::uint8_t* row, int width, SplitRow<std::uint8_t> split);
  void (*splitFloats)(const float* row, int width, SplitRow<float> split);
  // Values rounded to the nearest, ties to even. False where one of them does not fit a word.
  bool (*splitRounded)(const float* row, int width, SplitRow<std::uint16_t> split);

  // The medians of `count` windows in each of two neighboring rows, for radius 1, 2 and 3. The 2 radius rows
  // that the windows share are rows[1] and on; rows[0] belongs to the first result alone, the last row to the
  // second.
  using Bytes = void (*)(const SplitRow<std::uint8_t>* rows, std::uint8_t* const* results, int count);
  using Words = void (*)(const SplitRow<std::uint16_t>* rows, float* const* results, int count);
  using Floats = void (*)(const SplitRow<float>* rows, float* const* results, int count);
  Bytes bytes[kLargestMedianRadius];
  Words words[kLargestMedianRadius];
  Floats floats[kLargestMedianRadius];  // rounded like the others

  // `height` rows of `width` medians of 3 by 3 bytes, kLeastNines or more, from rows that are not split.
  // `source` is the corner of the first window.
  void (*nine)(const std::uint8_t* source, int sourceStride, std::uint8_t* result, int resultStride,
               int width, int height);
};
DECLARE_VECTOR_KERNELS(MedianKernels, medianKernels, ChosenMedianKernels)

}  // namespace corvane
