#pragma once

// Lists of vectors, sorted in every lane by networks of comparisons. The compiler drops comparisons whose
// result is not used, so finding one rank costs only what that rank needs. For vector sources only.

#include "base/vectors.h"

#define UNROLLED _Pragma("GCC unroll 64")

namespace corvane::VECTOR_NAMESPACE {

// Batcher's odd-even merge of two ascending lists of which every kStep-th vector counts.
template <int kFirst, int kSecond, int kStep, class Vector>
ALWAYS_INLINE void MergeLists(const Vector* first, const Vector* second, Vector* merged) {
  if constexpr (kFirst == 0 || kSecond == 0) {
    UNROLLED for (int i = 0; i < kFirst + kSecond; ++i) merged[i] = (kFirst == 0 ? second : first)[i * kStep];
  } else if constexpr (kFirst == 1 && kSecond == 1) {
    merged[0] = Smaller(*first, *second);
    merged[1] = Larger(*first, *second);
  } else {
    constexpr int kEvens = (kFirst + 1) / 2 + (kSecond + 1) / 2;
    constexpr int kOdds = kFirst / 2 + kSecond / 2;
    Vector evens[kEvens];
    Vector odds[kOdds];
    MergeLists<(kFirst + 1) / 2, (kSecond + 1) / 2, 2 * kStep>(first, second, evens);
    MergeLists<kFirst / 2, kSecond / 2, 2 * kStep>(first + kStep, second + kStep, odds);
    merged[0] = evens[0];
    UNROLLED for (int i = 0; i < kOdds; ++i) {
      if (i + 1 < kEvens) {
        merged[2 * i + 1] = Smaller(odds[i], evens[i + 1]);
        merged[2 * i + 2] = Larger(odds[i], evens[i + 1]);
      } else {
        merged[2 * i + 1] = odds[i];
      }
    }
    if constexpr (kEvens == kOdds + 2) merged[kFirst + kSecond - 1] = evens[kEvens - 1];
  }
}

// kCount vectors of a sorted set: the set has kBelow smaller and kAbove larger ones that no longer matter.
template <class Vector, int kCount, int kBelow = 0, int kAbove = 0>
struct List {
  Vector at[kCount];
};

template <class Vector, int kFirst, int kBelow1, int kAbove1, int kSecond, int kBelow2, int kAbove2>
ALWAYS_INLINE auto Merge(const List<Vector, kFirst, kBelow1, kAbove1>& first,
                         const List<Vector, kSecond, kBelow2, kAbove2>& second) {
  List<Vector, kFirst + kSecond, kBelow1 + kBelow2, kAbove1 + kAbove2> merged;
  MergeLists<kFirst, kSecond, 1>(first.at, second.at, merged.at);
  return merged;
}

template <int kCount, class Vector>
ALWAYS_INLINE List<Vector, kCount> Sort(const Vector* values) {
  if constexpr (kCount == 1) {
    return {{*values}};
  } else {
    constexpr int kHalf = (kCount + 1) / 2;
    return Merge(Sort<kHalf>(values), Sort<kCount - kHalf>(values + kHalf));
  }
}

// The part of a list that can still hold the median of kWindow values when the others become known.
template <int kWindow, class Vector, int kCount, int kBelow, int kAbove>
ALWAYS_INLINE auto Candidates(const List<Vector, kCount, kBelow, kAbove>& list) {
  constexpr int kHalf = kWindow / 2;  // that many values lie below the median, and as many above
  constexpr int kTooSmall = kCount + kAbove - 1 - kHalf > 0 ? kCount + kAbove - 1 - kHalf : 0;
  constexpr int kTooLarge = kBelow + kCount - 1 - kHalf > 0 ? kBelow + kCount - 1 - kHalf : 0;
  List<Vector, kCount - kTooSmall - kTooLarge, kBelow + kTooSmall, kAbove + kTooLarge> kept;
  UNROLLED for (int i = 0; i < kCount - kTooSmall - kTooLarge; ++i) kept.at[i] = list.at[i + kTooSmall];
  return kept;
}

// The median of the two lists together. Take kShares values, some from the front of one list and the rest
// from the front of the other: the larger of the two last ones is never below the median, and for one such
// split it is the median.
template <class Vector, int kFirst, int kBelow1, int kAbove1, int kSecond, int kBelow2, int kAbove2>
ALWAYS_INLINE Vector Median(const List<Vector, kFirst, kBelow1, kAbove1>& first,
                            const List<Vector, kSecond, kBelow2, kAbove2>& second) {
  constexpr int kSize = kBelow1 + kFirst + kAbove1 + kBelow2 + kSecond + kAbove2;
  constexpr int kShares = kSize / 2 + 1 - kBelow1 - kBelow2;  // values up to the median, itself included
  static_assert(kFirst >= kShares && kSecond < kShares);
  Vector median = first.at[kShares - 1];
  UNROLLED for (int i = 0; i < kSecond; ++i) {
    median = Smaller(median, Larger(first.at[kShares - 2 - i], second.at[i]));
  }
  return median;
}

}  // namespace corvane::VECTOR_NAMESPACE
