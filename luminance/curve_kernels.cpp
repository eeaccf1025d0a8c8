#include "luminance/curve_kernels.h"

#include "base/vectors.h"
#include "luminance/portable_math.h"

// Plain loops: the compiler turns them into vectors of the full width.

namespace corvane::VECTOR_NAMESPACE {
namespace {

template <class Curve>
ALWAYS_INLINE void Apply(const CurveFrame& frame, float least, float* values, std::size_t count,
                         Curve curve) {
  const float lowest = frame.lowest;
  const double gain = frame.gain;
  const float ceiling = frame.ceiling;
  for (std::size_t i = 0; i < count; ++i) {
    const float d = values[i] - lowest;
    const double y = curve(static_cast<double>(d < least ? least : d)) * gain;
    values[i] = y > ceiling ? ceiling : static_cast<float>(y);
  }
}

void LogarithmOfValues(const CurveFrame& frame, float* values, std::size_t count) {
  Apply(
      frame, 1, values, count, [](double d) __attribute__((always_inline)) { return Logarithm(d); });
}

void PowerOfValues(const CurveFrame& frame, double exponent, float* values, std::size_t count) {
  if (exponent == 0.5) {
    return Apply(
        frame, 0, values, count, [](double d) __attribute__((always_inline)) { return Power(d, 0.5); });
  }
  if (exponent == 2) {
    return Apply(
        frame, 0, values, count, [](double d) __attribute__((always_inline)) { return Power(d, 2); });
  }
  if (exponent == 3) {
    return Apply(
        frame, 0, values, count, [](double d) __attribute__((always_inline)) { return Power(d, 3); });
  }
  Apply(
      frame, 0, values,
      count, [exponent](double d) __attribute__((always_inline)) { return GeneralPower(d, exponent); });
}

}  // namespace

extern const CurveKernels curveKernels{LogarithmOfValues, PowerOfValues};

}  // namespace corvane::VECTOR_NAMESPACE
