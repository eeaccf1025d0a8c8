#include "viewer/magnify_kernels.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

void RepeatBytes(const std::uint8_t* in, int width, int factor, std::uint8_t* out) {
  int x = 0;
  // Sixteen pixels become `factor` vectors; place i of vector v shows pixel (16 * v + i) / factor.
  constexpr int kMostFactor = 6;
  Octets16 places[kMostFactor];
  for (int v = 0; v < factor && v < kMostFactor; ++v) {
    std::uint8_t place[16];
    for (int i = 0; i < 16; ++i) place[i] = (std::uint8_t)((16 * v + i) / factor);
    places[v] = Load<Octets16>(place);
  }
  for (; kQuickLookUp && factor <= kMostFactor && x + 16 <= width; x += 16) {
    const Octets16 pixels = Load<Octets16>(in + x);
    for (int v = 0; v < factor; ++v) Store(out + x * factor + 16 * v, LookUpSixteen(pixels, places[v]));
  }
  for (; x < width; ++x) {
    for (int k = 0; k < factor; ++k) out[x * factor + k] = in[x];
  }
}

void RepeatFloats(const float* in, int width, int factor, float* out) {
  for (int x = 0; x < width; ++x) {
    for (int k = 0; k < factor; ++k) out[x * factor + k] = in[x];
  }
}

// Placed values are taken over as they are: 0 * (b - a) would spoil them where b is not finite.
void Spread(const float* in, int width, int factor, const float* __restrict steps, float* __restrict repeated,
            float* __restrict out) {
  RepeatFloats(in, width, factor, repeated);
  const float parts = (float)factor;
  const int placed = (width - 1) * factor;
  for (int i = 0; i < placed; ++i) {
    const float a = repeated[i];
    const float between = a + steps[i] * (repeated[i + factor] - a) / parts;
    out[i] = steps[i] == 0.0f ? a : between;
  }
  for (int i = placed; i < placed + factor; ++i) out[i] = repeated[i];
}

void SpreadLevels(const std::uint8_t* __restrict repeated, int count, int factor,
                  const std::uint16_t* __restrict steps, std::uint16_t* __restrict sums) {
  for (int i = 0; i < count; ++i) {
    const int way = steps[i] * (repeated[i + factor] - repeated[i]);
    sums[i] = (std::uint16_t)(factor * repeated[i] + way);
  }
}

// Whole numbers divided by factor * factor: multiplied by the reciprocal, scaled to 16 bits. It is large
// enough for every sum of levels.
struct Quotient {
  explicit Quotient(int divisor)
      : shift(divisor == 4 ? 1 : 3),
        reciprocal(Broadcast((std::uint16_t)(((1 << (16 + shift)) + divisor - 1) / divisor))) {}
  ALWAYS_INLINE Words Of(Words sum) const { return MultiplyHigh(sum, reciprocal) >> shift; }
  int shift;
  Words reciprocal;
};

void BlendLevels(const std::uint16_t* lower, const std::uint16_t* upper, int k, int factor, std::uint8_t* out,
                 int width) {
  const int divisor = factor * factor;
  const Quotient quotient(divisor);
  const Words below = Broadcast((std::uint16_t)(factor - k));
  const Words above = Broadcast((std::uint16_t)k);
  const Words half = Broadcast((std::uint16_t)((divisor - 1) / 2));
  const Words even = Broadcast((std::uint16_t)(1 - divisor % 2));  // only even divisors have ties
  for (int x = 0; x < width; x += kVectorBytes) {
    Words levels[2];
    for (int i = 0; i < 2; ++i) {
      const int at = x + i * 2 * kLanes;
      const Words sum = below * Load<Words>(lower + at) + above * Load<Words>(upper + at);
      levels[i] = quotient.Of(sum + half + (quotient.Of(sum) & even));
    }
    const Octets octets = LowerOctets(levels[0], levels[1]);
    if (x + kVectorBytes <= width) {
      Store(out + x, octets);
    } else {
      __builtin_memcpy(out + x, &octets, width - x);
    }
  }
}

ALWAYS_INLINE Floats Between(const float* lower, const float* upper, Floats step, Floats parts) {
  const Floats a = Load<Floats>(lower);
  return a + step * (Load<Floats>(upper) - a) / parts;
}

void BlendBytes(const float* lower, const float* upper, int k, int factor, std::uint8_t* out, int width) {
  const Floats step = Broadcast((float)k);
  const Floats parts = Broadcast((float)factor);
  int x = 0;
  for (; x + kVectorBytes <= width; x += kVectorBytes) {
    Ints levels[4];
    for (int i = 0; i < 4; ++i) {
      const int at = x + i * kLanes;
      levels[i] = RoundToInts(Between(lower + at, upper + at, step, parts));
    }
    Store(out + x, PackToOctets(levels[0], levels[1], levels[2], levels[3]));
  }
  for (; x < width; ++x) {
    const float v = lower[x] + (float)k * (upper[x] - lower[x]) / (float)factor;
    out[x] = (std::uint8_t)__builtin_nearbyintf(v < 0.0f ? 0.0f : v > 255.0f ? 255.0f : v);
  }
}

void BlendFloats(const float* __restrict lower, const float* __restrict upper, int k, int factor,
                 float* __restrict out, int width) {
  const float step = (float)k;
  const float parts = (float)factor;
  for (int x = 0; x < width; ++x) out[x] = lower[x] + step * (upper[x] - lower[x]) / parts;
}

}  // namespace

extern const MagnifyKernels magnifyKernels{RepeatBytes, RepeatFloats, SpreadLevels, BlendLevels,
                                           Spread,      BlendBytes,   BlendFloats};

}  // namespace corvane::VECTOR_NAMESPACE
