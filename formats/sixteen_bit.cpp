#include "formats/sixteen_bit.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

// Packing limits the integers to 0..65535 and makes NaN, the smallest integer, 0; only what
// would not fit an integer is limited before.
ALWAYS_INLINE Ints Rounded(const float* values) {
  return RoundToInts(Smaller(Load<Floats>(values), Broadcast(65535.0f)));
}

ALWAYS_INLINE Words BigEndian(Words words) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return words;
#else
  return SwapWordBytes(words);
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

void IntoRange(const float* values, float offset, float factor, float divisor, float* result,
               std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) result[i] = (values[i] - offset) * factor / divisor;
}

}  // namespace

extern const SixteenBitKernels sixteenBitKernels{Encode, IntoRange};

}  // namespace corvane::VECTOR_NAMESPACE
