#pragma once

// The operations of vectors.h without any processor instruction: what processors without a file of their own
// get, and the definition that the other files follow.

namespace corvane::VECTOR_NAMESPACE {

// b < a ? b : a and b > a ? b : a. Comparisons with NaN are false, so the result is then `a`.
ALWAYS_INLINE Floats Smaller(Floats a, Floats b) { return b < a ? b : a; }
ALWAYS_INLINE Floats Larger(Floats a, Floats b) { return b > a ? b : a; }

// The next kLanes bytes or words as floats.
ALWAYS_INLINE Floats LoadBytesAsFloats(const std::uint8_t* source) {
  Floats v;
  for (int i = 0; i < kLanes; ++i) v[i] = source[i];
  return v;
}
ALWAYS_INLINE Floats LoadWordsAsFloats(const std::uint16_t* source) {
  Floats v;
  for (int i = 0; i < kLanes; ++i) v[i] = source[i];
  return v;
}

// The first and the second half of the lanes in 64 bits, and back with each lane rounded to 32.
ALWAYS_INLINE Doubles LowDoubles(Floats v) {
  Doubles r;
  for (int i = 0; i < kLanes / 2; ++i) r[i] = v[i];
  return r;
}
ALWAYS_INLINE Doubles HighDoubles(Floats v) {
  Doubles r;
  for (int i = 0; i < kLanes / 2; ++i) r[i] = v[i + kLanes / 2];
  return r;
}
ALWAYS_INLINE Floats NarrowToFloats(Doubles low, Doubles high) {
  Floats r;
  for (int i = 0; i < kLanes / 2; ++i) {
    r[i] = (float)low[i];
    r[i + kLanes / 2] = (float)high[i];
  }
  return r;
}

// The nearest integers, ties to even. Lanes must not be above 2^31 - 1; those below -2^31 and NaN become
// -2^31.
ALWAYS_INLINE Ints RoundToInts(Floats v) {
  Ints r;
  for (int i = 0; i < kLanes; ++i) {
    r[i] = v[i] > -2147483648.0f ? (std::int32_t)__builtin_nearbyintf(v[i]) : INT32_MIN;
  }
  return r;
}

// Two vectors of integers to one vector of words, limited to 0..65535, in order.
ALWAYS_INLINE Words PackToWords(Ints a, Ints b) {
  Words r;
  for (int i = 0; i < 2 * kLanes; ++i) {
    const std::int32_t v = i < kLanes ? a[i] : b[i - kLanes];
    r[i] = (std::uint16_t)(v < 0 ? 0 : v > 65535 ? 65535 : v);
  }
  return r;
}

// Four vectors of integers to one vector of bytes, limited to 0..255, in order.
ALWAYS_INLINE Octets PackToOctets(Ints a, Ints b, Ints c, Ints d) {
  const Ints quarters[4] = {a, b, c, d};
  Octets r;
  for (int i = 0; i < 4 * kLanes; ++i) {
    const std::int32_t v = quarters[i / kLanes][i % kLanes];
    r[i] = (std::uint8_t)(v < 0 ? 0 : v > 255 ? 255 : v);
  }
  return r;
}

// The lanes of three vectors in turn as bytes, limited to 0..255; the last quarter is unspecified.
ALWAYS_INLINE Octets PackTriples(Ints a, Ints b, Ints c) {
  const Ints sources[3] = {a, b, c};
  Octets r{};
  for (int i = 0; i < 3 * kLanes; ++i) {
    const std::int32_t v = sources[i % 3][i / 3];
    r[i] = (std::uint8_t)(v < 0 ? 0 : v > 255 ? 255 : v);
  }
  return r;
}

// The upper halves of the 32-bit products.
ALWAYS_INLINE Words MultiplyHigh(Words a, Words b) {
  Words r;
  for (int i = 0; i < 2 * kLanes; ++i) r[i] = (std::uint16_t)((std::uint32_t)a[i] * b[i] >> 16);
  return r;
}

// The two bytes of each word exchanged.
ALWAYS_INLINE Words SwapWordBytes(Words words) { return words << 8 | words >> 8; }

// In every group of 16 lanes: table[index & 15], or 0 where the top bit of the index is set. Without an
// instruction for it (kQuickLookUp is false), larger tables are better read byte by byte.
inline constexpr bool kQuickLookUp = false;
template <class Vector>
ALWAYS_INLINE Vector LookUpSixteen(Vector table, Vector index) {
  Vector r;
  for (unsigned i = 0; i < sizeof r; ++i) r[i] = index[i] & 128 ? 0 : table[(i & ~15u) + (index[i] & 15)];
  return r;
}

// a - b in signed lanes, limited to -128..127.
ALWAYS_INLINE Octets SubtractSigned(Octets a, Octets b) {
  Octets r;
  for (int i = 0; i < kVectorBytes; ++i) {
    const int v = (std::int8_t)a[i] - (std::int8_t)b[i];
    r[i] = (std::uint8_t)(v < -128 ? -128 : v > 127 ? 127 : v);
  }
  return r;
}

}  // namespace corvane::VECTOR_NAMESPACE
