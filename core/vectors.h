#pragma once

// Vectors for hot kernels: one source, three widths (see cmake/VectorSources.cmake). Only for sources listed
// with vector_sources(); everything here lives in VECTOR_NAMESPACE and is inlined.

#include <cstddef>
#include <cstdint>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#define ALWAYS_INLINE inline __attribute__((always_inline))

namespace corvane::VECTOR_NAMESPACE {

#if defined(__AVX512BW__)
inline constexpr int kVectorBytes = 64;
#elif defined(__AVX2__)
inline constexpr int kVectorBytes = 32;
#else
inline constexpr int kVectorBytes = 16;
#endif
inline constexpr int kLanes = kVectorBytes / 4;  // floats or 32-bit integers in a vector

using Floats = float __attribute__((vector_size(kVectorBytes)));
using Ints = std::int32_t __attribute__((vector_size(kVectorBytes)));
using Doubles = double __attribute__((vector_size(kVectorBytes)));
using Longs = std::int64_t __attribute__((vector_size(kVectorBytes)));
using Words = std::uint16_t __attribute__((vector_size(kVectorBytes)));
using Octets = std::uint8_t __attribute__((vector_size(kVectorBytes)));

template <class Vector>
ALWAYS_INLINE Vector Load(const void* source) {
  Vector v;
  __builtin_memcpy(&v, source, sizeof v);
  return v;
}
template <class Vector>
ALWAYS_INLINE void Store(void* target, Vector v) {
  __builtin_memcpy(target, &v, sizeof v);
}
ALWAYS_INLINE Floats Broadcast(float value) { return value - Floats{}; }
ALWAYS_INLINE Ints BroadcastInt(std::int32_t value) { return value - Ints{}; }
template <class Vector>
ALWAYS_INLINE Vector Reinterpret(auto v) {
  static_assert(sizeof(Vector) == sizeof v);
  return reinterpret_cast<Vector>(v);
}

// b < a ? b : a and b > a ? b : a, where the comparison decides also for not-a-number. One instruction each:
// left to the compiler it becomes two or three where one side is a constant.
ALWAYS_INLINE Floats Smaller(Floats a, Floats b) {
#if defined(__AVX512BW__)
  return (Floats)_mm512_min_ps((__m512)b, (__m512)a);
#elif defined(__AVX2__)
  return (Floats)_mm256_min_ps((__m256)b, (__m256)a);
#elif defined(__SSE2__)
  return (Floats)_mm_min_ps((__m128)b, (__m128)a);
#else
  return b < a ? b : a;
#endif
}
ALWAYS_INLINE Floats Larger(Floats a, Floats b) {
#if defined(__AVX512BW__)
  return (Floats)_mm512_max_ps((__m512)b, (__m512)a);
#elif defined(__AVX2__)
  return (Floats)_mm256_max_ps((__m256)b, (__m256)a);
#elif defined(__SSE2__)
  return (Floats)_mm_max_ps((__m128)b, (__m128)a);
#else
  return b > a ? b : a;
#endif
}

// The next kLanes bytes as floats.
ALWAYS_INLINE Floats LoadBytesAsFloats(const std::uint8_t* source) {
#if defined(__AVX512BW__)
  return (Floats)_mm512_cvtepi32_ps(_mm512_cvtepu8_epi32(_mm_loadu_si128((const __m128i*)source)));
#elif defined(__AVX2__)
  return (Floats)_mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(_mm_loadl_epi64((const __m128i*)source)));
#elif defined(__SSE4_1__)
  std::int32_t four;
  __builtin_memcpy(&four, source, 4);
  return (Floats)_mm_cvtepi32_ps(_mm_cvtepu8_epi32(_mm_cvtsi32_si128(four)));
#else
  Floats v;
  for (int i = 0; i < kLanes; ++i) v[i] = source[i];
  return v;
#endif
}

// The first and the second half of the lanes in 64 bits, and back with each lane rounded to 32.
ALWAYS_INLINE Doubles LowDoubles(Floats v) {
#if defined(__AVX512BW__)
  return (Doubles)_mm512_cvtps_pd(_mm512_castps512_ps256((__m512)v));
#elif defined(__AVX2__)
  return (Doubles)_mm256_cvtps_pd(_mm256_castps256_ps128((__m256)v));
#elif defined(__SSE2__)
  return (Doubles)_mm_cvtps_pd((__m128)v);
#else
  Doubles r;
  for (int i = 0; i < kLanes / 2; ++i) r[i] = v[i];
  return r;
#endif
}
ALWAYS_INLINE Doubles HighDoubles(Floats v) {
#if defined(__AVX512BW__)
  return (Doubles)_mm512_cvtps_pd(_mm512_extractf32x8_ps((__m512)v, 1));
#elif defined(__AVX2__)
  return (Doubles)_mm256_cvtps_pd(_mm256_extractf128_ps((__m256)v, 1));
#elif defined(__SSE2__)
  return (Doubles)_mm_cvtps_pd(_mm_movehl_ps((__m128)v, (__m128)v));
#else
  Doubles r;
  for (int i = 0; i < kLanes / 2; ++i) r[i] = v[i + kLanes / 2];
  return r;
#endif
}
ALWAYS_INLINE Floats NarrowToFloats(Doubles low, Doubles high) {
#if defined(__AVX512BW__)
  return (Floats)_mm512_insertf32x8(_mm512_castps256_ps512(_mm512_cvtpd_ps((__m512d)low)),
                                    _mm512_cvtpd_ps((__m512d)high), 1);
#elif defined(__AVX2__)
  return (Floats)_mm256_set_m128(_mm256_cvtpd_ps((__m256d)high), _mm256_cvtpd_ps((__m256d)low));
#elif defined(__SSE2__)
  return (Floats)_mm_movelh_ps(_mm_cvtpd_ps((__m128d)low), _mm_cvtpd_ps((__m128d)high));
#else
  Floats r;
  for (int i = 0; i < kLanes / 2; ++i) {
    r[i] = (float)low[i];
    r[i + kLanes / 2] = (float)high[i];
  }
  return r;
#endif
}

// The nearest integers, ties to even. Lanes must fit 32 bits; not-a-number becomes the smallest integer.
ALWAYS_INLINE Ints RoundToInts(Floats v) {
#if defined(__AVX512BW__)
  return (Ints)_mm512_cvtps_epi32((__m512)v);
#elif defined(__AVX2__)
  return (Ints)_mm256_cvtps_epi32((__m256)v);
#elif defined(__SSE2__)
  return (Ints)_mm_cvtps_epi32((__m128)v);
#else
  Ints r;
  for (int i = 0; i < kLanes; ++i) r[i] = v[i] == v[i] ? (std::int32_t)__builtin_nearbyintf(v[i]) : INT32_MIN;
  return r;
#endif
}

// Two vectors of integers to one vector of words, limited to 0..65535, in order.
ALWAYS_INLINE Words PackToWords(Ints a, Ints b) {
#if defined(__AVX512BW__)
  const __m512i order = _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7);
  return (Words)_mm512_permutexvar_epi64(order, _mm512_packus_epi32((__m512i)a, (__m512i)b));
#elif defined(__AVX2__)
  return (Words)_mm256_permute4x64_epi64(_mm256_packus_epi32((__m256i)a, (__m256i)b), 0b11011000);
#elif defined(__SSE4_1__)
  return (Words)_mm_packus_epi32((__m128i)a, (__m128i)b);
#else
  Words r;
  for (int i = 0; i < 2 * kLanes; ++i) {
    const std::int32_t v = i < kLanes ? a[i] : b[i - kLanes];
    r[i] = (std::uint16_t)(v < 0 ? 0 : v > 65535 ? 65535 : v);
  }
  return r;
#endif
}

// The two bytes of each word exchanged.
ALWAYS_INLINE Words SwapWordBytes(Words words) {
#if defined(__SSSE3__)
  const __m128i order = _mm_setr_epi8(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14);
#if defined(__AVX512BW__)
  return (Words)_mm512_shuffle_epi8((__m512i)words, _mm512_broadcast_i32x4(order));
#elif defined(__AVX2__)
  return (Words)_mm256_shuffle_epi8((__m256i)words, _mm256_broadcastsi128_si256(order));
#else
  return (Words)_mm_shuffle_epi8((__m128i)words, order);
#endif
#else
  return words << 8 | words >> 8;
#endif
}

// Four vectors of integers to one vector of bytes, limited to 0..255, in order.
ALWAYS_INLINE Octets PackToOctets(Ints a, Ints b, Ints c, Ints d) {
#if defined(__AVX512BW__)
  const __m512i words1 = _mm512_packs_epi32((__m512i)a, (__m512i)b);
  const __m512i words2 = _mm512_packs_epi32((__m512i)c, (__m512i)d);
  const __m512i order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
  return (Octets)_mm512_permutexvar_epi32(order, _mm512_packus_epi16(words1, words2));
#elif defined(__AVX2__)
  const __m256i words1 = _mm256_packs_epi32((__m256i)a, (__m256i)b);
  const __m256i words2 = _mm256_packs_epi32((__m256i)c, (__m256i)d);
  const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
  return (Octets)_mm256_permutevar8x32_epi32(_mm256_packus_epi16(words1, words2), order);
#elif defined(__SSE2__)
  return (Octets)_mm_packus_epi16(_mm_packs_epi32((__m128i)a, (__m128i)b),
                                  _mm_packs_epi32((__m128i)c, (__m128i)d));
#else
  Octets r;
  for (int i = 0; i < 4 * kLanes; ++i) {
    const std::int32_t v = i < kLanes       ? a[i]
                           : i < 2 * kLanes ? b[i - kLanes]
                           : i < 3 * kLanes ? c[i - 2 * kLanes]
                                            : d[i - 3 * kLanes];
    r[i] = (std::uint8_t)(v < 0 ? 0 : v > 255 ? 255 : v);
  }
  return r;
#endif
}

}  // namespace corvane::VECTOR_NAMESPACE
