#pragma once

#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/instruction_set.h"
#include "base/progress.h"

namespace corvane {

// A run of a filter. Source and result have the same size and stride and do not overlap; the result starts as
// a copy of the source, so that a filter need not touch what it does not change.
struct PreviewRun {
  ConstGrayView source;
  GrayView result;
  int radius = 1;  // 1, 2 or 3
  Progress& progress;
};
struct DataRun {
  ConstFloatView source;
  FloatView result;
  int radius = 1;
  float imageMax = 0;  // the largest value of the source
  Progress& progress;
};

// A row of the filter table. The forms return false when `progress` cancels, with part of the result written.
// They throw std::bad_alloc, before anything is written.
struct FilterEntry {
  const char* caption;
  bool usesRadius;
  bool (*preview)(const PreviewRun& run);
  bool (*data)(const DataRun& run);
};

}  // namespace corvane
