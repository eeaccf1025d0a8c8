#include "viewer/magnify_kernels.h"

#include "core/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

void RepeatBytes(const std::uint8_t* in, int width, int factor, std::uint8_t* out) {
  int x = 0;
#if defined(__SSSE3__)
  // Sixteen pixels become `factor` vectors; place i of vector v shows pixel (16 * v + i) / factor.
  constexpr int kMostFactor = 6;
  __m128i places[kMostFactor];
  for (int v = 0; v < factor && v < kMostFactor; ++v) {
    std::uint8_t place[16];
    for (int i = 0; i < 16; ++i) place[i] = (std::uint8_t)((16 * v + i) / factor);
    __builtin_memcpy(&places[v], place, 16);
  }
  for (; factor <= kMostFactor && x + 16 <= width; x += 16) {
    const __m128i pixels = _mm_loadu_si128((const __m128i*)(in + x));
    for (int v = 0; v < factor; ++v) {
      _mm_storeu_si128((__m128i*)(out + x * factor + 16 * v), _mm_shuffle_epi8(pixels, places[v]));
    }
  }
#endif
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

extern const MagnifyKernels magnifyKernels{RepeatBytes, RepeatFloats, Spread, BlendBytes, BlendFloats};

}  // namespace corvane::VECTOR_NAMESPACE
