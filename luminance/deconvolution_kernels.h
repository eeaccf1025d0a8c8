#pragma once

#include <cstdint>

#include "base/instruction_set.h"

namespace corvane {

// The blur works on tiles of 16 rows by 16 columns. It runs through both directions alike: rows are
// transposed, so that 16 of them lie side by side, summed along what is then the long side and transposed
// back. Every sum is accumulated product by product, from the first weight to the last.
inline constexpr int kTile = 16;
// Columns that the finishing kernels take at a time.
inline constexpr int kSegment = 64;

struct DeconvolutionKernels {
  // columns[16 x + row] = rows[row][x] for 16 rows and 16 columns.
  void (*transposeBytes)(const std::uint8_t* const* rows, float* columns);
  void (*transposeFloats)(const float* const* rows, float* columns);
  // The weighted sums of 16 transposed rows: tile[16 row + x] from columns x .. x + taps - 1.
  void (*sumRows)(const float* columns, const float* kernel, int taps, float* tile);
  // The weighted sums of 16 columns: sums[kSegment row + x] from the values at
  // tile[slots[row]] .. tile[slots[row + taps - 1]].
  void (*sumColumns)(const float* tile, const int* slots, const float* kernel, int taps, float* sums);

  // Normalize the sums and correct the estimate, for kSegment columns of a row; `energy` holds 16 sums of
  // squared residuals.
  void (*correctBytes)(const float* sums, float normalizer, const std::uint8_t* observed,
                       std::uint8_t* estimate, double* energy);
  void (*raiseBytes)(const float* sums, float normalizer, const std::uint8_t* observed,
                     std::uint8_t* estimate, double* energy);
  void (*raiseFloats)(const float* sums, float normalizer, const float* observed, float* estimate,
                      double* energy);
  // The weighted correction of values needs the brightest of all blurred values first, so it takes two steps.
  // `largest` holds 16 maxima.
  void (*keepBlurred)(const float* sums, float normalizer, const float* observed, float* blurred,
                      double* energy, float* largest);
  void (*correctFloats)(const float* blurred, double scale, const float* observed, float* estimate);
};
DECLARE_VECTOR_KERNELS(DeconvolutionKernels, deconvolutionKernels, ChosenDeconvolutionKernels)

}  // namespace corvane
