#pragma once

#include <cstddef>

#include "core/instruction_set.h"

namespace corvane {

// Logarithms and powers made of additions, multiplications and divisions in a fixed order, so that they come
// out the same on every processor and with every C library. The result is the nearest 64-bit float but for a
// few arguments in a thousand, where it is the second nearest; results that 64 bits can hold are exact. `x`
// is 0 or a positive normal number; infinity and not-a-number pass through.
struct PortableMathKernels {
  // out[i] = ln(x[i]); ln(0) is minus infinity.
  void (*logarithms)(const double* x, double* out, std::size_t count);
  // out[i] = x[i] to the power `exponent`, which is above 0; a power of 0 is 0.
  void (*powers)(const double* x, double exponent, double* out, std::size_t count);
  // out[i] = e to the power x[i], for any x.
  void (*exponentials)(const double* x, double* out, std::size_t count);
};
DECLARE_VECTOR_KERNELS(PortableMathKernels, portableMathKernels, ChosenPortableMathKernels)

inline double Logarithm(double x) {
  double result;
  ChosenPortableMathKernels().logarithms(&x, &result, 1);
  return result;
}
inline double Power(double x, double exponent) {
  double result;
  ChosenPortableMathKernels().powers(&x, exponent, &result, 1);
  return result;
}
inline double Exponential(double x) {
  double result;
  ChosenPortableMathKernels().exponentials(&x, &result, 1);
  return result;
}

}  // namespace corvane
