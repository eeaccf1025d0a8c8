#pragma once

#include <immintrin.h>

namespace corvane::VECTOR_NAMESPACE {

// Intrinsics, because the compiler makes two or three instructions of a comparison and a choice where one
// side is a constant.
ALWAYS_INLINE Floats Smaller(Floats a, Floats b) { return (Floats)_mm512_min_ps((__m512)b, (__m512)a); }
ALWAYS_INLINE Floats Larger(Floats a, Floats b) { return (Floats)_mm512_max_ps((__m512)b, (__m512)a); }

ALWAYS_INLINE Floats LoadBytesAsFloats(const std::uint8_t* source) {
  return (Floats)_mm512_cvtepi32_ps(_mm512_cvtepu8_epi32(_mm_loadu_si128((const __m128i*)source)));
}
ALWAYS_INLINE Floats LoadWordsAsFloats(const std::uint16_t* source) {
  return (Floats)_mm512_cvtepi32_ps(_mm512_cvtepu16_epi32(_mm256_loadu_si256((const __m256i*)source)));
}

ALWAYS_INLINE Doubles LowDoubles(Floats v) {
  return (Doubles)_mm512_cvtps_pd(_mm512_castps512_ps256((__m512)v));
}
ALWAYS_INLINE Doubles HighDoubles(Floats v) {
  return (Doubles)_mm512_cvtps_pd(_mm512_extractf32x8_ps((__m512)v, 1));
}
ALWAYS_INLINE Floats NarrowToFloats(Doubles low, Doubles high) {
  return (Floats)_mm512_insertf32x8(_mm512_castps256_ps512(_mm512_cvtpd_ps((__m512d)low)),
                                    _mm512_cvtpd_ps((__m512d)high), 1);
}

ALWAYS_INLINE Ints RoundToInts(Floats v) { return (Ints)_mm512_cvtps_epi32((__m512)v); }

// Packing works on each quarter of a vector by itself; the permutation restores the order.
ALWAYS_INLINE Words PackToWords(Ints a, Ints b) {
  const __m512i order = _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7);
  return (Words)_mm512_permutexvar_epi64(order, _mm512_packus_epi32((__m512i)a, (__m512i)b));
}

ALWAYS_INLINE Octets PackToOctets(Ints a, Ints b, Ints c, Ints d) {
  const __m512i words1 = _mm512_packs_epi32((__m512i)a, (__m512i)b);
  const __m512i words2 = _mm512_packs_epi32((__m512i)c, (__m512i)d);
  const __m512i order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
  return (Octets)_mm512_permutexvar_epi32(order, _mm512_packus_epi16(words1, words2));
}

ALWAYS_INLINE Octets PackTriples(Ints a, Ints b, Ints c) {
  const __m512i words = _mm512_packs_epi32((__m512i)a, (__m512i)b);
  const __m512i bytes = _mm512_packus_epi16(words, _mm512_packs_epi32((__m512i)c, (__m512i)c));
  const __m128i order = _mm_setr_epi8(0, 4, 8, 1, 5, 9, 2, 6, 10, 3, 7, 11, -1, -1, -1, -1);
  const __m512i triples = _mm512_shuffle_epi8(bytes, _mm512_broadcast_i32x4(order));
  const __m512i front = _mm512_setr_epi32(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 3, 7, 11, 15);
  return (Octets)_mm512_permutexvar_epi32(front, triples);
}

ALWAYS_INLINE Words MultiplyHigh(Words a, Words b) {
  return (Words)_mm512_mulhi_epu16((__m512i)a, (__m512i)b);
}

ALWAYS_INLINE Words SwapWordBytes(Words words) {
  const __m128i order = _mm_setr_epi8(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14);
  return (Words)_mm512_shuffle_epi8((__m512i)words, _mm512_broadcast_i32x4(order));
}

inline constexpr bool kQuickLookUp = true;
ALWAYS_INLINE Octets LookUpSixteen(Octets table, Octets index) {
  return (Octets)_mm512_shuffle_epi8((__m512i)table, (__m512i)index);
}
ALWAYS_INLINE Octets16 LookUpSixteen(Octets16 table, Octets16 index) {
  return (Octets16)_mm_shuffle_epi8((__m128i)table, (__m128i)index);
}

// table[index] for a table of 256 bytes in four vectors.
ALWAYS_INLINE Octets LookUpLevels(const Octets (&table)[4], Octets index) {
  const __m512i low = _mm512_permutex2var_epi8((__m512i)table[0], (__m512i)index, (__m512i)table[1]);
  const __m512i high = _mm512_permutex2var_epi8((__m512i)table[2], (__m512i)index, (__m512i)table[3]);
  return (Octets)_mm512_mask_blend_epi8(_mm512_movepi8_mask((__m512i)index), low, high);
}

// Elements `shift` to `shift` + kLanes - 1 of `low` followed by `high`.
ALWAYS_INLINE Floats Shifted(Floats low, Floats high, int shift) {
  return (Floats)_mm512_alignr_epi32((__m512i)high, (__m512i)low, shift);
}

ALWAYS_INLINE Octets SubtractSigned(Octets a, Octets b) {
  return (Octets)_mm512_subs_epi8((__m512i)a, (__m512i)b);
}

}  // namespace corvane::VECTOR_NAMESPACE
