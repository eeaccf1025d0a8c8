#include "filters/grain.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

constexpr int kHalf = 2;

// The sums of bytes have at most five digits and 35 is odd, so that no quotient is a tie: 16-bit integers
// give what floats would.
ALWAYS_INLINE int Smoothed(const std::uint8_t* at) {
  const int sum = 17 * at[0] + 12 * (at[-1] + at[1]) - 3 * (at[-2] + at[2]);
  return sum < 0 ? 0 : sum > 35 * 255 ? 255 : (sum + 17) / 35;
}

ALWAYS_INLINE Shorts Smoothed(Shorts center, Shorts near, Shorts far) {
  const Shorts none = {};
  const Shorts most = none + 35 * 255;
  const Shorts sum = center * 17 + near * 12 - far * 3;
  const Shorts positive = sum < none ? none : sum;
  const Shorts limited = positive > most ? most : positive;
  return (Shorts)(MultiplyHigh((Words)(limited + 17), Broadcast(std::uint16_t{7490})) >> 2);  // 2^18 / 35
}

void SmoothRow(const std::uint8_t* in, std::uint8_t* out, int width) {
  int x = kHalf;
  for (; x + kVectorBytes + kHalf <= width; x += kVectorBytes) {
    const EvenOdd before = LoadEvenOdd(in + x - 2);
    const EvenOdd here = LoadEvenOdd(in + x);
    const EvenOdd after = LoadEvenOdd(in + x + 2);
    const Shorts even = Smoothed(here.even, before.odd + here.odd, before.even + after.even);
    const Shorts odd = Smoothed(here.odd, here.even + after.even, before.odd + after.odd);
    Store(out + x, even | odd << 8);
  }
  for (; x < width - kHalf; ++x) out[x] = (std::uint8_t)Smoothed(in + x);
}

void SmoothRow(const float* in, float* out, int width) {
  constexpr int kAtOnce = 4 * kLanes;
  int x = kHalf;
  for (; x + kAtOnce + kHalf <= width; x += kAtOnce) {
#pragma GCC unroll 4
    for (int v = 0; v < 4; ++v) {
      const float* at = in + x + v * kLanes;
      Floats sum = Load<Floats>(at - 2) * Broadcast(-3.0f);
      sum += Load<Floats>(at - 1) * Broadcast(12.0f);
      sum += Load<Floats>(at) * Broadcast(17.0f);
      sum += Load<Floats>(at + 1) * Broadcast(12.0f);
      sum += Load<Floats>(at + 2) * Broadcast(-3.0f);
      Store(out + x + v * kLanes, sum / Broadcast(35.0f));
    }
  }
  for (; x < width - kHalf; ++x) {
    const float* at = in + x;
    out[x] = (at[-2] * -3.0f + at[-1] * 12.0f + at[0] * 17.0f + at[1] * 12.0f + at[2] * -3.0f) / 35.0f;
  }
}

template <class Run>
bool SmoothRows(const Run& run) {
  const int height = run.source.height;
  const int last = height > 1 ? height - 1 : 1;
  for (int y = 0; y < height; ++y) {
    SmoothRow(run.source.Row(y), run.result.Row(y), run.source.width);
    if (!run.progress.Row(y, last)) return false;
  }
  return true;
}

}  // namespace

extern const FilterEntry reduceGrain{"Reduce Grain", false, SmoothRows<PreviewRun>, SmoothRows<DataRun>};

}  // namespace corvane::VECTOR_NAMESPACE
