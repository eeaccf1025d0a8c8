#pragma once

// Vectors for hot kernels: one source for every instruction set (see cmake/VectorSources.cmake). Only for
// sources listed with vector_sources(); everything here lives in VECTOR_NAMESPACE and is inlined. Processor
// instructions are named in the vectors_*.h beside this file and nowhere else.

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

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

template <class Element>
using VectorOf [[gnu::vector_size(kVectorBytes)]] = Element;
using Floats = VectorOf<float>;
using Doubles = VectorOf<double>;
using Octets = VectorOf<std::uint8_t>;
using Words = VectorOf<std::uint16_t>;
using Shorts = VectorOf<std::int16_t>;
using Ints = VectorOf<std::int32_t>;
using Int64s = VectorOf<std::int64_t>;

// Vectors of 16 bytes, for work on small squares and tables.
using Octets16 = std::uint8_t __attribute__((vector_size(16)));
using Floats4 = float __attribute__((vector_size(16)));

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
// The vector whose elements have the type of `value` and are all equal to it.
template <class Element>
ALWAYS_INLINE VectorOf<Element> Broadcast(Element value) {
  return value - VectorOf<Element>{};
}
template <class Vector>
ALWAYS_INLINE Vector Reinterpret(auto v) {
  static_assert(sizeof(Vector) == sizeof v);
  return reinterpret_cast<Vector>(v);
}

}  // namespace corvane::VECTOR_NAMESPACE

// The operations that vectors_plain.h describes, for this instruction set.
#if defined(__AVX512BW__)
#include "base/vectors_avx512.h"
#elif defined(__AVX2__)
#include "base/vectors_avx2.h"
#elif defined(__SSE4_1__)
#include "base/vectors_sse4.h"
#else
#include "base/vectors_plain.h"
#endif

namespace corvane::VECTOR_NAMESPACE {

// The bytes at even and at odd places as 16-bit integers; even | odd << 8 is the vector they came from.
struct EvenOdd {
  Shorts even;
  Shorts odd;
};
ALWAYS_INLINE EvenOdd LoadEvenOdd(const std::uint8_t* bytes) {
  const Words pairs = Load<Words>(bytes);
  return {(Shorts)(pairs & 255), (Shorts)(pairs >> 8)};
}

// Vector v of `Vectors` in a row of floats, read j <= `Reach` elements later. A load of 64 bytes that crosses
// a cache line costs two, so there the windows are shifted out of whole vectors, of which one more is read.
template <int Vectors, int Reach>
class Windows {
 public:
  explicit ALWAYS_INLINE Windows(const float* in) : in_(in) {
#if defined(__AVX512BW__)
    for (int v = 0; v < kWhole; ++v) whole_[v] = Load<Floats>(in + v * kLanes);
#endif
  }
  ALWAYS_INLINE Floats At(int v, int j) const {
#if defined(__AVX512BW__)
    return Shifted(whole_[v + j / kLanes], whole_[v + j / kLanes + 1], j % kLanes);
#else
    return Load<Floats>(in_ + v * kLanes + j);
#endif
  }

 private:
  const float* in_;
#if defined(__AVX512BW__)
  static constexpr int kWhole = Vectors + Reach / kLanes + 1;
  Floats whole_[kWhole];
#endif
};

// Lanes of whole numbers; floats have overloads of their own.
template <class Vector>
ALWAYS_INLINE Vector Smaller(Vector a, Vector b) {
  return b < a ? b : a;
}
template <class Vector>
ALWAYS_INLINE Vector Larger(Vector a, Vector b) {
  return b > a ? b : a;
}

template <class Vector>
using ElementOf = std::remove_reference_t<decltype(Vector{}[0])>;
template <class Vector>
inline constexpr int kLanesOf = sizeof(Vector) / sizeof(Vector{}[0]);

// Lane i is lane kPlace(i) of the two vectors together.
template <auto kPlace, class Vector, int... kLane>
ALWAYS_INLINE Vector Choose(Vector a, Vector b, std::integer_sequence<int, kLane...>) {
  return __builtin_shufflevector(a, b, kPlace(kLane)...);
}
template <auto kPlace, class Vector>
ALWAYS_INLINE Vector Choose(Vector a, Vector b) {
  return Choose<kPlace>(a, b, std::make_integer_sequence<int, kLanesOf<Vector>>{});
}

// a0 b0 a1 b1 ... of the first halves and of the second halves.
template <class Vector>
ALWAYS_INLINE Vector InterleaveLow(Vector a, Vector b) {
  constexpr int kCount = kLanesOf<Vector>;
  return Choose<[](int lane) { return lane / 2 + lane % 2 * kCount; }>(a, b);
}
template <class Vector>
ALWAYS_INLINE Vector InterleaveHigh(Vector a, Vector b) {
  constexpr int kCount = kLanesOf<Vector>;
  return Choose<[](int lane) { return (lane + kCount) / 2 + lane % 2 * kCount; }>(a, b);
}

// The lanes at even and at odd places of `a` and then `b`.
template <class Vector>
ALWAYS_INLINE Vector EvenLanes(Vector a, Vector b) {
  return Choose<[](int lane) { return 2 * lane; }>(a, b);
}
template <class Vector>
ALWAYS_INLINE Vector OddLanes(Vector a, Vector b) {
  return Choose<[](int lane) { return 2 * lane + 1; }>(a, b);
}

// Rows of a square become its columns. In every round the rows of the first half interleave with those of the
// second; after as many rounds as the side has bits all are where they belong.
template <class Vector, int kSide>
ALWAYS_INLINE void Transpose(Vector (&square)[kSide]) {
  static_assert(kSide == kLanesOf<Vector>);
  for (int rounds = 1; rounds < kSide; rounds *= 2) {
    Vector next[kSide];
    for (int i = 0; i < kSide / 2; ++i) {
      next[2 * i] = InterleaveLow(square[i], square[i + kSide / 2]);
      next[2 * i + 1] = InterleaveHigh(square[i], square[i + kSide / 2]);
    }
    for (int i = 0; i < kSide; ++i) square[i] = next[i];
  }
}

// The lower bytes of two vectors of words, in order.
ALWAYS_INLINE Octets LowerOctets(Words a, Words b) { return EvenLanes((Octets)a, (Octets)b); }

}  // namespace corvane::VECTOR_NAMESPACE
