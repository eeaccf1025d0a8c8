#include "formats/fits_pixels.h"

#include <cstdint>

#include "base/vectors.h"

// Plain loops: the compiler turns them into vectors of the full width. Each sample type has a loop for the
// scaling that nearly every file has, in integers, and one that computes every scaling in 64 bits.

namespace corvane::VECTOR_NAMESPACE {
namespace {

using RawWord = std::uint16_t __attribute__((may_alias, aligned(1)));
using RawLong = std::uint32_t __attribute__((may_alias, aligned(1)));

constexpr std::uint32_t kBlankBits = 0x7FC00000;

ALWAYS_INLINE std::uint32_t Native(std::uint32_t raw) {
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  return __builtin_bswap32(raw);
#else
  return raw;
#endif
}

ALWAYS_INLINE std::uint16_t Native(std::uint16_t raw) {
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  return __builtin_bswap16(raw);
#else
  return raw;
#endif
}

ALWAYS_INLINE float FromBits(std::uint32_t bits) { return __builtin_bit_cast(float, bits); }

// What does not fit a float is blank.
ALWAYS_INLINE float Fitting(float value) {
  return __builtin_fabsf(value) <= __FLT_MAX__ ? value : FromBits(kBlankBits);
}

// 2^(e - 127) * (1 + m / 65536) of the exponent e and the upper 16 mantissa bits m, for every e: exponent 0
// is below the normal numbers and keeps its value shifted, exponent 255 is too large for a float.
ALWAYS_INLINE float Truncated(std::uint32_t bits) {
  const std::uint32_t magnitude = bits & 0x7FFFFF80;
  const std::uint32_t sign = bits & 0x80000000;
  const std::uint32_t small = 0x00400000 | magnitude >> 1;
  const std::uint32_t fitting = magnitude < 0x00800000 ? small : magnitude;
  return FromBits(magnitude >= 0x7F800000 ? kBlankBits : sign | fitting);
}

void DecodeBytes(const unsigned char* raw, double scale, double zero, float* values, std::size_t count) {
  if (scale == 1.0 && zero == 0.0) {
    for (std::size_t i = 0; i < count; ++i) values[i] = raw[i];
  } else {
    for (std::size_t i = 0; i < count; ++i) values[i] = Fitting(static_cast<float>(raw[i] * scale + zero));
  }
}

// Unsigned words; values of 65536 or more are reduced by 65536.
void DecodeWords(const unsigned char* raw, double scale, double zero, float* values, std::size_t count) {
  const RawWord* words = reinterpret_cast<const RawWord*>(raw);
  if (scale == 1.0 && (zero == 0.0 || zero == 32768.0)) {
    // With a zero point of half the range, the reduced sum is the word with its highest bit flipped.
    const std::uint16_t flipped = zero == 0.0 ? 0 : 0x8000;
    for (std::size_t i = 0; i < count; ++i) {
      values[i] = static_cast<std::uint16_t>(Native(words[i]) ^ flipped);
    }
  } else {
    for (std::size_t i = 0; i < count; ++i) {
      const float value = static_cast<float>(Native(words[i]) * scale + zero);
      values[i] = Fitting(value >= 65536.0f ? value - 65536.0f : value);
    }
  }
}

// Unsigned longs; values above 2147483647 are reduced by 4294967296.
void DecodeLongs(const unsigned char* raw, double scale, double zero, float* values, std::size_t count) {
  const RawLong* longs = reinterpret_cast<const RawLong*>(raw);
  if (scale == 1.0 && zero == 0.0) {
    for (std::size_t i = 0; i < count; ++i) {
      values[i] = static_cast<float>(static_cast<std::int32_t>(Native(longs[i])));
    }
  } else {
    for (std::size_t i = 0; i < count; ++i) {
      // Converted as a signed number, because vectors have no conversion of unsigned ones, then shifted back.
      const double unscaled = static_cast<std::int32_t>(Native(longs[i]) ^ 0x80000000) + 2147483648.0;
      const double value = unscaled * scale + zero;
      values[i] = Fitting(static_cast<float>(value > 2147483647.0 ? value - 4294967296.0 : value));
    }
  }
}

void DecodeFloats(const unsigned char* raw, double scale, double zero, float* values, std::size_t count) {
  const RawLong* longs = reinterpret_cast<const RawLong*>(raw);
  if (scale == 1.0 && zero == 0.0) {
    for (std::size_t i = 0; i < count; ++i) values[i] = Truncated(Native(longs[i]));
  } else {
    for (std::size_t i = 0; i < count; ++i) {
      values[i] = Fitting(static_cast<float>(Truncated(Native(longs[i])) * scale + zero));
    }
  }
}

}  // namespace

extern const FitsKernels fitsKernels{DecodeBytes, DecodeWords, DecodeLongs, DecodeFloats};

}  // namespace corvane::VECTOR_NAMESPACE
