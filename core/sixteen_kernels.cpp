#include "core/sixteen_kernels.h"

#include "core/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

ALWAYS_INLINE Ints Rounded(const float* values) {
  const Floats v = Load<Floats>(values);
  const Floats atMost = v > Broadcast(65535.0f) ? Broadcast(65535.0f) : v;
  return RoundToInts(Larger(Broadcast(0.0f), atMost));  // not-a-number is not larger: 0
}

ALWAYS_INLINE Words BigEndian(Words words) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return words;
#else
  return words << 8 | words >> 8;
#endif
}

void Encode(const float* values, unsigned char* raw, std::size_t count) {
  std::size_t i = 0;
  for (; i + 2 * kLanes <= count; i += 2 * kLanes) {
    Store(raw + 2 * i, BigEndian(PackToWords(Rounded(values + i), Rounded(values + i + kLanes))));
  }
  for (; i < count; ++i) {
    const float v = values[i];
    const unsigned word = !(v > 0.0f) ? 0 : v > 65535.0f ? 65535 : (unsigned)__builtin_nearbyintf(v);
    raw[2 * i] = (unsigned char)(word >> 8);
    raw[2 * i + 1] = (unsigned char)(word & 255);
  }
}

void Fit(const float* values, float offset, float factor, float divisor, float* fitted, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) fitted[i] = (values[i] - offset) * factor / divisor;
}

}  // namespace

extern const SixteenKernels sixteenKernels{Encode, Fit};

}  // namespace corvane::VECTOR_NAMESPACE
