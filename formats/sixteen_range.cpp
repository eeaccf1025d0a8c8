#include "formats/sixteen_range.h"

#include "formats/sixteen_bit.h"

namespace corvane {
namespace {

constexpr float kHighest = 32767.0f;

// Every value becomes (value - offset) * factor / divisor.
FloatImage Scaled(const FloatImage& image, float offset, float factor, float divisor) {
  FloatImage scaled(image.Width(), image.Height());
  ScaleIntoRange(image.View().values, offset, factor, divisor, scaled.Overwrite().values, image.Count());
  return scaled;
}

RangedImage SpreadFloats(const FloatImage& image, ValueRange range) {
  const float width = range.max - range.min;
  const float factor = range.max > range.min ? kHighest / width : 1.0f;
  return {Scaled(image, range.min, factor, 1.0f), {0.0f, width * factor}};
}

RangedImage ReduceIntegers(const FloatImage& image, ValueRange range) {
  if (range.min >= 0.0f) {
    if (range.max <= kHighest) return {image, range};
    const float factor = kHighest / range.max;
    return {Scaled(image, 0.0f, factor, 1.0f), {range.min * factor, range.max * factor}};
  }
  const float width = range.max - range.min;
  if (width <= kHighest) return {Scaled(image, range.min, 1.0f, 1.0f), {0.0f, width}};
  return {Scaled(image, range.min, kHighest, width), {0.0f, kHighest}};
}

}  // namespace

RangedImage IntoSixteenBitRange(const FloatImage& image, int precision) {
  const ValueRange range = FindRange(image.View());
  if (precision == -4) return SpreadFloats(image, range);
  if (precision == 2 || precision == 4) return ReduceIntegers(image, range);
  return {image, range};
}

}  // namespace corvane
