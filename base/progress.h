#pragma once

#include "base/numeric.h"

namespace corvane {

// Where a kernel reports to the user and learns whether to go on: once per row of a main pass.
class Progress {
 public:
  virtual ~Progress() = default;
  // `done` of `total` rows are finished. False once the user has cancelled; the kernel then returns.
  virtual bool Row(int done, int total) = 0;
};

// For runs without a progress display.
class NoProgress : public Progress {
 public:
  bool Row(int, int) override { return true; }
};

inline int Percent(int done, int total) { return total > 0 ? RoundEven(100.0 * done / total) : 100; }

}  // namespace corvane
