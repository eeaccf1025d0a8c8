#pragma once

#include <cstddef>

#include "base/instruction_set.h"

namespace corvane {

// What a curve on physical values does before and after its power or logarithm.
struct CurveFrame {
  float lowest = 0;  // of the values, which become their distance from it, not below 0
  double gain = 1;
  float ceiling = 0;
};

// The curves on `count` physical values in place: curve and gain in 64 bits, their product rounded once.
struct CurveKernels {
  // ln d, where d is at least 1.
  void (*logarithm)(const CurveFrame& frame, float* values, std::size_t count);
  // d to the power `exponent`.
  void (*power)(const CurveFrame& frame, double exponent, float* values, std::size_t count);
};
DECLARE_VECTOR_KERNELS(CurveKernels, curveKernels, ChosenCurveKernels)

}  // namespace corvane
