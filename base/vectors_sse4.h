#pragma once

#include <immintrin.h>

namespace corvane::VECTOR_NAMESPACE {

// Intrinsics, because the compiler makes two or three instructions of a comparison and a choice where one
// side is a constant.
ALWAYS_INLINE Floats Smaller(Floats a, Floats b) { return (Floats)_mm_min_ps((__m128)b, (__m128)a); }
ALWAYS_INLINE Floats Larger(Floats a, Floats b) { return (Floats)_mm_max_ps((__m128)b, (__m128)a); }

ALWAYS_INLINE Floats LoadBytesAsFloats(const std::uint8_t* source) {
  std::int32_t four;
  __builtin_memcpy(&four, source, 4);
  return (Floats)_mm_cvtepi32_ps(_mm_cvtepu8_epi32(_mm_cvtsi32_si128(four)));
}
ALWAYS_INLINE Floats LoadWordsAsFloats(const std::uint16_t* source) {
  return (Floats)_mm_cvtepi32_ps(_mm_cvtepu16_epi32(_mm_loadl_epi64((const __m128i*)source)));
}

ALWAYS_INLINE Doubles LowDoubles(Floats v) { return (Doubles)_mm_cvtps_pd((__m128)v); }
ALWAYS_INLINE Doubles HighDoubles(Floats v) {
  return (Doubles)_mm_cvtps_pd(_mm_movehl_ps((__m128)v, (__m128)v));
}
ALWAYS_INLINE Floats NarrowToFloats(Doubles low, Doubles high) {
  return (Floats)_mm_movelh_ps(_mm_cvtpd_ps((__m128d)low), _mm_cvtpd_ps((__m128d)high));
}

ALWAYS_INLINE Ints RoundToInts(Floats v) { return (Ints)_mm_cvtps_epi32((__m128)v); }

ALWAYS_INLINE Words PackToWords(Ints a, Ints b) { return (Words)_mm_packus_epi32((__m128i)a, (__m128i)b); }

ALWAYS_INLINE Octets PackToOctets(Ints a, Ints b, Ints c, Ints d) {
  return (Octets)_mm_packus_epi16(_mm_packs_epi32((__m128i)a, (__m128i)b),
                                  _mm_packs_epi32((__m128i)c, (__m128i)d));
}

ALWAYS_INLINE Octets PackTriples(Ints a, Ints b, Ints c) {
  const __m128i words = _mm_packs_epi32((__m128i)a, (__m128i)b);
  const __m128i bytes = _mm_packus_epi16(words, _mm_packs_epi32((__m128i)c, (__m128i)c));
  const __m128i order = _mm_setr_epi8(0, 4, 8, 1, 5, 9, 2, 6, 10, 3, 7, 11, -1, -1, -1, -1);
  return (Octets)_mm_shuffle_epi8(bytes, order);
}

ALWAYS_INLINE Words MultiplyHigh(Words a, Words b) { return (Words)_mm_mulhi_epu16((__m128i)a, (__m128i)b); }

ALWAYS_INLINE Words SwapWordBytes(Words words) {
  const __m128i order = _mm_setr_epi8(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14);
  return (Words)_mm_shuffle_epi8((__m128i)words, order);
}

inline constexpr bool kQuickLookUp = true;
ALWAYS_INLINE Octets16 LookUpSixteen(Octets16 table, Octets16 index) {
  return (Octets16)_mm_shuffle_epi8((__m128i)table, (__m128i)index);
}

ALWAYS_INLINE Octets SubtractSigned(Octets a, Octets b) {
  return (Octets)_mm_subs_epi8((__m128i)a, (__m128i)b);
}

}  // namespace corvane::VECTOR_NAMESPACE
