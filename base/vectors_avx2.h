#pragma once

#include <immintrin.h>

namespace corvane::VECTOR_NAMESPACE {

// Intrinsics, because the compiler makes two or three instructions of a comparison and a choice where one
// side is a constant.
ALWAYS_INLINE Floats Smaller(Floats a, Floats b) { return (Floats)_mm256_min_ps((__m256)b, (__m256)a); }
ALWAYS_INLINE Floats Larger(Floats a, Floats b) { return (Floats)_mm256_max_ps((__m256)b, (__m256)a); }

ALWAYS_INLINE Floats LoadBytesAsFloats(const std::uint8_t* source) {
  return (Floats)_mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(_mm_loadl_epi64((const __m128i*)source)));
}
ALWAYS_INLINE Floats LoadWordsAsFloats(const std::uint16_t* source) {
  return (Floats)_mm256_cvtepi32_ps(_mm256_cvtepu16_epi32(_mm_loadu_si128((const __m128i*)source)));
}

ALWAYS_INLINE Doubles LowDoubles(Floats v) {
  return (Doubles)_mm256_cvtps_pd(_mm256_castps256_ps128((__m256)v));
}
ALWAYS_INLINE Doubles HighDoubles(Floats v) {
  return (Doubles)_mm256_cvtps_pd(_mm256_extractf128_ps((__m256)v, 1));
}
ALWAYS_INLINE Floats NarrowToFloats(Doubles low, Doubles high) {
  return (Floats)_mm256_set_m128(_mm256_cvtpd_ps((__m256d)high), _mm256_cvtpd_ps((__m256d)low));
}

ALWAYS_INLINE Ints RoundToInts(Floats v) { return (Ints)_mm256_cvtps_epi32((__m256)v); }

// Packing works on each half of a vector by itself; the permutation restores the order.
ALWAYS_INLINE Words PackToWords(Ints a, Ints b) {
  return (Words)_mm256_permute4x64_epi64(_mm256_packus_epi32((__m256i)a, (__m256i)b), 0b11011000);
}

ALWAYS_INLINE Octets PackToOctets(Ints a, Ints b, Ints c, Ints d) {
  const __m256i words1 = _mm256_packs_epi32((__m256i)a, (__m256i)b);
  const __m256i words2 = _mm256_packs_epi32((__m256i)c, (__m256i)d);
  const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
  return (Octets)_mm256_permutevar8x32_epi32(_mm256_packus_epi16(words1, words2), order);
}

ALWAYS_INLINE Octets PackTriples(Ints a, Ints b, Ints c) {
  const __m256i words = _mm256_packs_epi32((__m256i)a, (__m256i)b);
  const __m256i bytes = _mm256_packus_epi16(words, _mm256_packs_epi32((__m256i)c, (__m256i)c));
  const __m128i order = _mm_setr_epi8(0, 4, 8, 1, 5, 9, 2, 6, 10, 3, 7, 11, -1, -1, -1, -1);
  const __m256i triples = _mm256_shuffle_epi8(bytes, _mm256_broadcastsi128_si256(order));
  return (Octets)_mm256_permutevar8x32_epi32(triples, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
}

ALWAYS_INLINE Words MultiplyHigh(Words a, Words b) {
  return (Words)_mm256_mulhi_epu16((__m256i)a, (__m256i)b);
}

ALWAYS_INLINE Words SwapWordBytes(Words words) {
  const __m128i order = _mm_setr_epi8(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14);
  return (Words)_mm256_shuffle_epi8((__m256i)words, _mm256_broadcastsi128_si256(order));
}

inline constexpr bool kQuickLookUp = true;
ALWAYS_INLINE Octets LookUpSixteen(Octets table, Octets index) {
  return (Octets)_mm256_shuffle_epi8((__m256i)table, (__m256i)index);
}
ALWAYS_INLINE Octets16 LookUpSixteen(Octets16 table, Octets16 index) {
  return (Octets16)_mm_shuffle_epi8((__m128i)table, (__m128i)index);
}

ALWAYS_INLINE Octets SubtractSigned(Octets a, Octets b) {
  return (Octets)_mm256_subs_epi8((__m256i)a, (__m256i)b);
}

}  // namespace corvane::VECTOR_NAMESPACE
