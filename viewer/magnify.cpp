#include "viewer/magnify.h"

#include <cstdint>
#include <cstring>
#include <vector>

#include "viewer/magnify_kernels.h"

namespace corvane {
namespace {

constexpr std::int64_t kMostPixels = 10'000'000;

// Interpolates along rows; keeps what every row needs.
class RowSpreader {
 public:
  RowSpreader(int width, int factor)
      : width_(width),
        factor_(factor),
        steps_(static_cast<std::size_t>(width) * factor),
        repeated_(steps_.size() + factor) {
    for (std::size_t i = 0; i < steps_.size(); ++i) steps_[i] = static_cast<float>(i % factor);
  }

  // `out` gets width * factor values, `in` has `width`.
  void Spread(const float* in, float* out) {
    kernels_.spread(in, width_, factor_, steps_.data(), repeated_.data(), out);
  }

 private:
  const MagnifyKernels& kernels_ = ChosenMagnifyKernels();
  int width_;
  int factor_;
  std::vector<float> steps_;     // 0, 1 .. factor-1, 0, 1 ...
  std::vector<float> repeated_;  // scratch of the kernel
};

// Copies of a finished display row, its padding included.
void RepeatRow(GrayView picture, int row, int copies) {
  for (int k = 1; k <= copies; ++k) std::memcpy(picture.Row(row + k), picture.Row(row), picture.stride);
}

void ClearPadding(GrayView picture, int row) {
  std::memset(picture.Row(row) + picture.width, 0, picture.stride - picture.width);
}

// Rows of `Value` that `spread(y, row)` makes of the rows of `source`, blended by `blend`.
template <class Value, class Spread, class Blend>
void InterpolateRows(ConstGrayView source, int factor, GrayView result, Spread spread, Blend blend) {
  std::vector<Value> lower(result.width + kMagnifyStep);
  std::vector<Value> upper(result.width + kMagnifyStep);
  spread(0, lower.data());
  for (int y = 0; y < source.height - 1; ++y) {
    spread(y + 1, upper.data());
    for (int k = 0; k < factor; ++k) {
      blend(lower.data(), upper.data(), k, factor, result.Row(y * factor + k), result.width);
      ClearPadding(result, y * factor + k);
    }
    lower.swap(upper);
  }
  const int last = (source.height - 1) * factor;
  blend(lower.data(), lower.data(), 0, factor, result.Row(last), result.width);
  ClearPadding(result, last);
  RepeatRow(result, last, factor - 1);
}

void InterpolateInFloats(ConstGrayView source, int factor, GrayView result) {
  RowSpreader spreader(source.width, factor);
  std::vector<float> levels(source.width);
  const auto spread = [&](int y, float* row) {
    for (int x = 0; x < source.width; ++x) levels[x] = source.At(x, y);
    spreader.Spread(levels.data(), row);
  };
  InterpolateRows<float>(source, factor, result, spread, ChosenMagnifyKernels().blendBytes);
}

// Gives the same levels as floats for factors up to 5. Before rounding, a level is a multiple of 1 /
// factor^2: floats hold it exactly where the factor is a power of two, and for odd factors no multiple is a
// half and their errors are too small to reach one. For factor 6 those errors decide how halves are rounded.
void InterpolateInWholeNumbers(ConstGrayView source, int factor, GrayView result) {
  const MagnifyKernels& kernels = ChosenMagnifyKernels();
  std::vector<std::uint16_t> steps(result.width);
  for (std::size_t i = 0; i < steps.size(); ++i) steps[i] = static_cast<std::uint16_t>(i % factor);
  std::vector<std::uint8_t> repeated(result.width + factor);
  const auto spread = [&](int y, std::uint16_t* row) {
    kernels.repeatBytes(source.Row(y), source.width, factor, repeated.data());
    std::memset(repeated.data() + result.width, source.At(source.width - 1, y), factor);
    kernels.spreadLevels(repeated.data(), result.width, factor, steps.data(), row);
  };
  InterpolateRows<std::uint16_t>(source, factor, result, spread, kernels.blendLevels);
}

}  // namespace

bool CanMagnify(int width, int height, int factor) {
  return static_cast<std::int64_t>(width) * factor * height * factor <= kMostPixels;
}

void Replicate(ConstGrayView source, int factor, GrayView result) {
  const MagnifyKernels& kernels = ChosenMagnifyKernels();
  for (int y = 0; y < source.height; ++y) {
    kernels.repeatBytes(source.Row(y), source.width, factor, result.Row(y * factor));
    ClearPadding(result, y * factor);
    RepeatRow(result, y * factor, factor - 1);
  }
}

FloatImage Replicate(ConstFloatView source, int factor) {
  FloatImage result(source.width * factor, source.height * factor);
  const FloatView target = result.Overwrite();
  for (int y = 0; y < source.height; ++y) {
    const float* row = target.Row(y * factor);
    ChosenMagnifyKernels().repeatFloats(source.Row(y), source.width, factor, target.Row(y * factor));
    for (int k = 1; k < factor; ++k)
      std::memcpy(target.Row(y * factor + k), row, target.width * sizeof(float));
  }
  return result;
}

void Interpolate(ConstGrayView source, int factor, GrayView result) {
  if (source.width == 0 || source.height == 0) return;
  if (factor == 6) {
    InterpolateInFloats(source, factor, result);
  } else {
    InterpolateInWholeNumbers(source, factor, result);
  }
}

FloatImage Interpolate(ConstFloatView source, int factor) {
  FloatImage result(source.width * factor, source.height * factor);
  if (source.Count() == 0) return result;
  const MagnifyKernels& kernels = ChosenMagnifyKernels();
  RowSpreader spreader(source.width, factor);
  const FloatView target = result.Overwrite();
  const auto placedRow = [&](int y) { return target.Row((y + 1) * factor - 1); };

  // Data rows count from the top, so the row above another is the one before it.
  for (int y = 0; y < source.height; ++y) spreader.Spread(source.Row(y), placedRow(y));
  for (int y = 1; y < source.height; ++y) {
    for (int k = 1; k < factor; ++k) {
      kernels.blendFloats(placedRow(y), placedRow(y - 1), k, factor, placedRow(y) - k * target.width,
                          target.width);
    }
  }
  for (int y = 0; y < factor - 1; ++y) {
    std::memcpy(target.Row(y), placedRow(0), target.width * sizeof(float));
  }
  return result;
}

}  // namespace corvane
