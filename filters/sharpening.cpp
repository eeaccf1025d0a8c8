#include "filters/sharpening.h"

#include "filters/blur.h"
#include "filters/gaussian_kernels.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

struct DiagonalKernel {
  static constexpr int kHalf = 1;
  static constexpr int kDivisor = 3;
  static constexpr int Weight(int dx, int dy) { return dx == 0 && dy == 0 ? 7 : dx == 0 || dy == 0 ? 0 : -1; }
};
template <int half, int center, int divisor>
struct SquareKernel {
  static constexpr int kHalf = half;
  static constexpr int kDivisor = divisor;
  static constexpr int Weight(int dx, int dy) { return dx == 0 && dy == 0 ? center : -1; }
};

// The sums of bytes are integers of at most four digits: 16-bit integers give the bytes that floats would.
// Thirds are never ties; sixths are, where the remainder is 3.
template <class Kernel>
ALWAYS_INLINE Shorts Quotient(Shorts sum) {
  const Shorts none = {};
  const Shorts most = none + 255 * Kernel::kDivisor;
  const Shorts positive = sum < none ? none : sum;
  const Shorts rounding = (positive > most ? most : positive) + Kernel::kDivisor / 2;
  constexpr std::uint16_t kReciprocal = 65536 / Kernel::kDivisor + 1;
  const Shorts quotient = (Shorts)MultiplyHigh((Words)rounding, Broadcast(kReciprocal));
  if constexpr (Kernel::kDivisor % 2 != 0) return quotient;
  return quotient - ((quotient * Kernel::kDivisor == rounding) & quotient & 1);
}

// Weighted sums of the pixels at even and at odd places.
template <class Kernel>
ALWAYS_INLINE EvenOdd WeightedSums(const std::uint8_t* const* rows, int x) {
  constexpr int kHalf = Kernel::kHalf;
  constexpr int kWide = kHalf + 1;  // columns on each side that the two places reach
  EvenOdd sum = {};
#pragma GCC unroll 8
  for (int dy = -kHalf; dy <= kHalf; ++dy) {
    const std::uint8_t* row = rows[dy + kHalf] + x;
#pragma GCC unroll 8
    for (int from = -(kWide & ~1); from <= kWide; from += 2) {
      const EvenOdd pair = LoadEvenOdd(row + from);
#pragma GCC unroll 2
      for (int place = 0; place < 2; ++place) {
        const Shorts values = place == 0 ? pair.even : pair.odd;
        const int dx = from + place;
        const auto weight = [&](int offset) __attribute__((always_inline)) {
          return offset < -kHalf || offset > kHalf ? 0 : Kernel::Weight(offset, dy);
        };
        sum.even += values * (std::int16_t)weight(dx);
        sum.odd += values * (std::int16_t)weight(dx - 1);
      }
    }
  }
  return sum;
}

template <class Kernel>
void SharpenRow(const std::uint8_t* const* rows, std::uint8_t* out, int width) {
  constexpr int kHalf = Kernel::kHalf;
  const auto sharpenVector = [&](int x) __attribute__((always_inline)) {
    const EvenOdd sum = WeightedSums<Kernel>(rows, x);
    Store(out + x, Quotient<Kernel>(sum.even) | Quotient<Kernel>(sum.odd) << 8);
  };
  // Vectors read up to three columns on each side.
  constexpr int kSide = 3;
  const auto sharpenPixel = [&](int x) {
    int sum = 0;
    for (int dy = -kHalf; dy <= kHalf; ++dy) {
      for (int dx = -kHalf; dx <= kHalf; ++dx) sum += Kernel::Weight(dx, dy) * rows[dy + kHalf][x + dx];
    }
    const int limited = Limited(sum, 0, 255 * Kernel::kDivisor) + Kernel::kDivisor / 2;
    const int quotient = limited / Kernel::kDivisor;
    const bool tie = Kernel::kDivisor % 2 == 0 && limited % Kernel::kDivisor == 0;
    out[x] = (std::uint8_t)(tie ? quotient & ~1 : quotient);
  };
  const int end = width - kHalf;
  const int lastVector = width - kSide - kVectorBytes;
  if (lastVector < kSide) {
    for (int x = kHalf; x < end; ++x) sharpenPixel(x);
    return;
  }
  for (int x = kHalf; x < kSide; ++x) sharpenPixel(x);
  for (int x = kSide; x < lastVector; x += kVectorBytes) sharpenVector(x);
  sharpenVector(lastVector);
  for (int x = width - kSide; x < end; ++x) sharpenPixel(x);
}

template <class Kernel>
bool SharpenBytes(const PreviewRun& run) {
  constexpr int kHalf = Kernel::kHalf;
  const int count = run.source.height - 2 * kHalf;
  for (int y = 0; y < count; ++y) {
    const std::uint8_t* rows[2 * kHalf + 1];
    for (int i = 0; i <= 2 * kHalf; ++i) rows[i] = run.source.Row(y + i);
    SharpenRow<Kernel>(rows, run.result.Row(y + kHalf), run.source.width);
    if (!run.progress.Row(y, count)) return false;
  }
  return true;
}

// Limited to 0..most. Comparisons with NaN are false, so a blank stays blank.
ALWAYS_INLINE float Limit(float value, float most) {
  const float notAbove = most < value ? most : value;
  return notAbove < 0.0f ? 0.0f : notAbove;
}
ALWAYS_INLINE Floats Limit(Floats value, Floats most) { return Larger(Smaller(value, most), Floats{}); }

// Products with a weight of 0 are not skipped: 0 times NaN is NaN, so a blank spreads.
template <class Value>
ALWAYS_INLINE Value Product(int weight, Value value) {
  return weight == -1 ? -value : value * ((float)weight - Value{});
}

// kVectors vectors from x on in kRows rows; rows[0] is kHalf rows above the first.
template <class Kernel, int kRows, int kVectors>
ALWAYS_INLINE void SharpenBlock(const float* const* rows, int x, float most, float* const* out) {
  constexpr int kHalf = Kernel::kHalf;
  Floats sums[kRows][kVectors];
#pragma GCC unroll 16
  for (int i = 0; i < 2 * kHalf + kRows; ++i) {
#pragma GCC unroll 8
    for (int dx = -kHalf; dx <= kHalf; ++dx) {
#pragma GCC unroll 4
      for (int v = 0; v < kVectors; ++v) {
        const Floats value = Load<Floats>(rows[i] + x + dx + v * kLanes);
#pragma GCC unroll 4
        for (int t = 0; t < kRows; ++t) {
          const int dy = i - t - kHalf;
          if (dy < -kHalf || dy > kHalf) continue;
          const Floats product = Product(Kernel::Weight(dx, dy), value);
          sums[t][v] = dy == -kHalf && dx == -kHalf ? product : sums[t][v] + product;
        }
      }
    }
  }
#pragma GCC unroll 4
  for (int t = 0; t < kRows; ++t) {
#pragma GCC unroll 4
    for (int v = 0; v < kVectors; ++v) {
      const Floats quotient = sums[t][v] / Broadcast((float)Kernel::kDivisor);
      Store(out[t] + x + v * kLanes, Limit(quotient, Broadcast(most)));
    }
  }
}

template <class Kernel, int kRows>
ALWAYS_INLINE void SharpenRows(const float* const* rows, float most, float* const* out, int width) {
  constexpr int kHalf = Kernel::kHalf;
  constexpr int kBlockWidth = 2 * kLanes;
  const int lastBlock = width - kHalf - kBlockWidth;
  if (lastBlock >= kHalf) {
    for (int x = kHalf; x < lastBlock; x += kBlockWidth) SharpenBlock<Kernel, kRows, 2>(rows, x, most, out);
    SharpenBlock<Kernel, kRows, 2>(rows, lastBlock, most, out);
    return;
  }
  for (int t = 0; t < kRows; ++t) {
    for (int x = kHalf; x < width - kHalf; ++x) {
      float sum = 0;
      for (int dy = -kHalf; dy <= kHalf; ++dy) {
        for (int dx = -kHalf; dx <= kHalf; ++dx) {
          const float product = Product(Kernel::Weight(dx, dy), rows[t + kHalf + dy][x + dx]);
          sum = dy == -kHalf && dx == -kHalf ? product : sum + product;
        }
      }
      out[t][x] = Limit(sum / (float)Kernel::kDivisor, most);
    }
  }
}

template <class Kernel>
bool SharpenFloats(const DataRun& run) {
  constexpr int kHalf = Kernel::kHalf;
  const int last = run.source.height - 1 - kHalf;
  for (int y = kHalf; y <= last;) {
    const float* rows[2 * kHalf + kRowsAtOnce];
    float* out[kRowsAtOnce];
    const int count = last + 1 - y < kRowsAtOnce ? 1 : kRowsAtOnce;
    for (int i = 0; i < 2 * kHalf + count; ++i) rows[i] = run.source.Row(y - kHalf + i);
    for (int t = 0; t < count; ++t) out[t] = run.result.Row(y + t);
    if (count == kRowsAtOnce) {
      SharpenRows<Kernel, kRowsAtOnce>(rows, run.imageMax, out, run.source.width);
    } else {
      SharpenRows<Kernel, 1>(rows, run.imageMax, out, run.source.width);
    }
    for (const int end = y + count; y < end; ++y) {
      if (!run.progress.Row(y, last)) return false;
    }
  }
  return true;
}

bool SharpenPreview(const PreviewRun& run) {
  switch (run.radius) {
    case 1:
      return SharpenBytes<DiagonalKernel>(run);
    case 2:
      return SharpenBytes<SquareKernel<1, 11, 3>>(run);
    default:
      return SharpenBytes<SquareKernel<2, 30, 6>>(run);
  }
}

bool SharpenData(const DataRun& run) {
  switch (run.radius) {
    case 1:
      return SharpenFloats<DiagonalKernel>(run);
    case 2:
      return SharpenFloats<SquareKernel<1, 11, 3>>(run);
    default:
      return SharpenFloats<SquareKernel<2, 30, 6>>(run);
  }
}

// Three times the pixel minus twice its blurred value, which `out` holds; exact in 16-bit integers.
void MergeRow(const std::uint8_t* in, std::uint8_t* out, int from, int to) {
  const Shorts none = {};
  const Shorts most = none + 255;
  const auto merge = [&](Shorts pixel, Shorts blurred) __attribute__((always_inline)) {
    const Shorts value = pixel * 3 - blurred * 2;
    const Shorts positive = value < none ? none : value;
    return positive > most ? most : positive;
  };
  int x = from;
  for (; x + kVectorBytes <= to; x += kVectorBytes) {
    const EvenOdd pixel = LoadEvenOdd(in + x);
    const EvenOdd blurred = LoadEvenOdd(out + x);
    Store(out + x, merge(pixel.even, blurred.even) | merge(pixel.odd, blurred.odd) << 8);
  }
  for (; x < to; ++x) out[x] = (std::uint8_t)Limited(3 * in[x] - 2 * out[x], 0, 255);
}

void MergeRow(const float* in, float* out, int width) {
  for (int x = 0; x < width; ++x) out[x] = in[x] * 3.0f - (out[x] + out[x]);
}

template <int radius>
bool UnsharpBytes(const PreviewRun& run) {
  const int width = run.source.width;
  const int height = run.source.height;
  return BoxBlur<radius>(run.source, run.result, [&](int y) {
    if (y >= radius && y < height - radius) {
      MergeRow(run.source.Row(y), run.result.Row(y), radius, width - radius);
    }
    return run.progress.Row(y, height);
  });
}

template <int radius>
bool UnsharpFloats(const DataRun& run) {
  return Blur<GaussianKernel<radius>>(run.source, run.result, [&](int y) {
    MergeRow(run.source.Row(y), run.result.Row(y), run.source.width);
    return run.progress.Row(y, run.source.height);
  });
}

bool UnsharpPreview(const PreviewRun& run) {
  switch (run.radius) {
    case 1:
      return UnsharpBytes<1>(run);
    case 2:
      return UnsharpBytes<2>(run);
    default:
      return UnsharpBytes<3>(run);
  }
}

bool UnsharpData(const DataRun& run) {
  switch (run.radius) {
    case 1:
      return UnsharpFloats<1>(run);
    case 2:
      return UnsharpFloats<2>(run);
    default:
      return UnsharpFloats<3>(run);
  }
}

}  // namespace

extern const FilterEntry sharpen{"Sharpen", true, SharpenPreview, SharpenData};
extern const FilterEntry unsharpMask{"Unsharp Mask", true, UnsharpPreview, UnsharpData};

}  // namespace corvane::VECTOR_NAMESPACE
