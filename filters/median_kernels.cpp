#include "filters/median_kernels.h"

#include "base/vectors.h"
#include "filters/sorted_lists.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

// Bytes in each row of intermediate results; together the rows stay in the fastest cache.
constexpr int kSegmentBytes = 512;

// How far ahead memory is asked for, in bytes: the medians of bytes outrun it otherwise.
constexpr int kSplitAhead = 4096;
constexpr int kNineAhead = 512;

template <int kBytes>
ALWAYS_INLINE void Prefetch(const void* values) {
  for (int i = 0; i < kBytes; i += 64) __builtin_prefetch((const char*)values + kSplitAhead + i);
}

template <class Vector>
void Split(const ElementOf<Vector>* row, int width, SplitRow<ElementOf<Vector>> split) {
  constexpr int kCount = kLanesOf<Vector>;
  int x = 0;
  for (; x + 2 * kCount <= width; x += 2 * kCount) {
    Prefetch<2 * kVectorBytes>(row + x);
    const auto low = Load<Vector>(row + x);
    const auto high = Load<Vector>(row + x + kCount);
    Store(split.even + x / 2, EvenLanes(low, high));
    Store(split.odd + x / 2, OddLanes(low, high));
  }
  for (; x < width; ++x) (x % 2 == 0 ? split.even : split.odd)[x / 2] = row[x];
}

// Limited to -1..65536, which fits an integer; -1, 65536 and what NaN becomes do not fit a word.
ALWAYS_INLINE Ints Rounded(const float* values) {
  return RoundToInts(Smaller(Larger(Load<Floats>(values), Broadcast(-1.0f)), Broadcast(65536.0f)));
}

bool SplitRounded(const float* row, int width, SplitRow<std::uint16_t> split) {
  Ints all = {};
  int x = 0;
  for (; x + 4 * kLanes <= width; x += 4 * kLanes) {
    Prefetch<4 * kVectorBytes>(row + x);
    Ints part[4];
    for (int i = 0; i < 4; ++i) {
      part[i] = Rounded(row + x + i * kLanes);
      all |= part[i];
    }
    const Words low = PackToWords(part[0], part[1]);
    const Words high = PackToWords(part[2], part[3]);
    Store(split.even + x / 2, EvenLanes(low, high));
    Store(split.odd + x / 2, OddLanes(low, high));
  }
  bool fit = true;
  for (int i = 0; i < kLanes; ++i) fit = fit && (all[i] & ~65535) == 0;
  for (; x < width; ++x) {
    const float v = row[x];
    const bool fits = v >= -0.5f && v < 65535.5f;
    (x % 2 == 0 ? split.even : split.odd)[x / 2] = fits ? (std::uint16_t)__builtin_nearbyintf(v) : 0;
    fit = fit && fits;
  }
  return fit;
}

// The nearest whole numbers, ties to even, never a negative zero. Adding and taking away the number where
// steps of 1 begin rounds; what is larger is whole already.
ALWAYS_INLINE Floats Whole(Floats v) {
  const Floats large = Broadcast(8388608.0f);
  const Ints sign = Reinterpret<Ints>(v) & Broadcast(INT32_MIN);
  const Floats step = Reinterpret<Floats>(Reinterpret<Ints>(large) | sign);
  return (v < large) & (v > -large) ? (v + step) - step : v;
}

// Writes the medians at even and at odd places in order.
ALWAYS_INLINE void StoreMedians(std::uint8_t* result, Octets even, Octets odd) {
  Store(result, InterleaveLow(even, odd));
  Store(result + kVectorBytes, InterleaveHigh(even, odd));
}
ALWAYS_INLINE void StoreMedians(float* result, Words even, Words odd) {
  std::uint16_t words[4 * kLanes];
  Store(words, InterleaveLow(even, odd));
  Store(words + 2 * kLanes, InterleaveHigh(even, odd));
  for (int i = 0; i < 4; ++i) Store(result + i * kLanes, LoadWordsAsFloats(words + i * kLanes));
}
ALWAYS_INLINE void StoreMedians(float* result, Floats even, Floats odd) {
  Store(result, Whole(InterleaveLow(even, odd)));
  Store(result + kLanes, Whole(InterleaveHigh(even, odd)));
}

// Finds the medians of 2 radius + 1 squared values in two rows by two columns at a time. Their windows share
// 2 radius rows and as many columns, the core. Its columns are sorted and merged; each window adds one column
// and one row of its own.
template <class Vector, class Result, int kRadius>
class MedianPair {
  using Value = ElementOf<Vector>;

 public:
  static void Run(const SplitRow<Value>* rows, Result* const* results, int count) {
    for (int first = 0; first < count; first += 2 * kSegment) {
      const int segment = count - first < 2 * kSegment ? count - first : 2 * kSegment;
      MedianPair work;
      work.SortColumns(rows, first / 2, (segment + 1) / 2);
      work.PairColumns(rows, first / 2, (segment + 1) / 2);
      for (int x = 0; x < segment; x += 2 * kStep) {
        work.Finish(rows, first / 2, x / 2, results, segment - x);
      }
    }
  }

 private:
  static constexpr int kWindow = (2 * kRadius + 1) * (2 * kRadius + 1);
  static constexpr int kStep = kLanesOf<Vector>;
  static constexpr int kSegment = kSegmentBytes / sizeof(Value);
  // The last step of a segment also needs columns to its right. An odd number of cache lines keeps equal
  // places of all lines apart in the cache.
  static constexpr int kLine = kSegment + 3 * 64 / sizeof(Value);

  template <int kLines>
  using Lines = Value[kLines][kLine];

  template <int kLines>
  ALWAYS_INLINE static void StoreList(const List<Vector, kLines>& list, Lines<kLines>& lines, int x) {
    UNROLLED for (int i = 0; i < kLines; ++i) Store(lines[i] + x, list.at[i]);
  }
  template <int kLines>
  ALWAYS_INLINE static List<Vector, kLines> LoadList(const Lines<kLines>& lines, int x) {
    List<Vector, kLines> list;
    UNROLLED for (int i = 0; i < kLines; ++i) list.at[i] = Load<Vector>(lines[i] + x);
    return list;
  }

  // The shared rows, column by column, at even and at odd places.
  void SortColumns(const SplitRow<Value>* rows, int first, int count) {
    for (int x = 0; x < count + kRadius; x += kStep) {
      Vector even[2 * kRadius];
      Vector odd[2 * kRadius];
      UNROLLED for (int i = 0; i < 2 * kRadius; ++i) {
        even[i] = Load<Vector>(rows[i + 1].even + first + x);
        odd[i] = Load<Vector>(rows[i + 1].odd + first + x);
      }
      StoreList(Sort<2 * kRadius>(even), evenColumns_, x);
      StoreList(Sort<2 * kRadius>(odd), oddColumns_, x);
    }
  }

  // Every odd column with the even one that follows it; so too for the values of the rows on their own.
  void PairColumns(const SplitRow<Value>* rows, int first, int count) {
    for (int x = 0; x < count + kRadius - 1; x += kStep) {
      StoreList(Merge(LoadList(oddColumns_, x), LoadList(evenColumns_, x + 1)), pairs_, x);
      UNROLLED for (int i = 0; i < 2; ++i) {
        const SplitRow<Value>& row = rows[i * (2 * kRadius + 1)];
        const List<Vector, 1> odd = {{Load<Vector>(row.odd + first + x)}};
        const List<Vector, 1> even = {{Load<Vector>(row.even + first + x + 1)}};
        StoreList(Merge(odd, even), rowPairs_[i], x);
      }
    }
  }

  // kRadius neighboring pairs of columns.
  template <int kLines>
  ALWAYS_INLINE static auto Core(const Lines<kLines>& pairs, int x) {
    if constexpr (kRadius == 1) {
      return Candidates<kWindow>(LoadList(pairs, x));
    } else {
      const auto two = Merge(LoadList(pairs, x), LoadList(pairs, x + 1));
      if constexpr (kRadius == 2) return Candidates<kWindow>(two);
      if constexpr (kRadius == 3) return Candidates<kWindow>(Merge(two, LoadList(pairs, x + 2)));
    }
  }

  ALWAYS_INLINE void Finish(const SplitRow<Value>* rows, int first, int x, Result* const* results, int left) {
    const auto core = Core(pairs_, x);
    const auto even = Candidates<kWindow>(Merge(core, LoadList(evenColumns_, x)));
    const auto odd = Candidates<kWindow>(Merge(core, LoadList(oddColumns_, x + kRadius)));
    UNROLLED for (int i = 0; i < 2; ++i) {
      const SplitRow<Value>& row = rows[i * (2 * kRadius + 1)];
      const auto own = Core(rowPairs_[i], x);
      const List<Vector, 1> evenEnd = {{Load<Vector>(row.even + first + x)}};
      const List<Vector, 1> oddEnd = {{Load<Vector>(row.odd + first + x + kRadius)}};
      const Vector evenMedian = Median(even, Merge(own, evenEnd));
      const Vector oddMedian = Median(odd, Merge(own, oddEnd));
      Result* result = results[i] + 2 * (first + x);
      if (left >= 2 * kStep) {
        StoreMedians(result, evenMedian, oddMedian);
      } else {
        Result last[2 * kStep];
        StoreMedians(last, evenMedian, oddMedian);
        __builtin_memcpy(result, last, left * sizeof(Result));
      }
    }
  }

  alignas(64) Lines<2 * kRadius> evenColumns_;
  alignas(64) Lines<2 * kRadius> oddColumns_;
  alignas(64) Lines<4 * kRadius> pairs_;
  alignas(64) Lines<2> rowPairs_[2];
};

// The byte at each place and the two that follow it, sorted.
ALWAYS_INLINE List<Octets, 3> SortAcross(const std::uint8_t* row) {
  const Octets values[] = {Load<Octets>(row), Load<Octets>(row + 1), Load<Octets>(row + 2)};
  return Sort<3>(values);
}

// Each row is sorted once for the three rows of medians that it is part of.
void MedianOfNine(const std::uint8_t* source, int sourceStride, std::uint8_t* result, int resultStride,
                  int width, int height) {
  for (int next = 0; next < width; next += kVectorBytes) {
    const int x = next < width - kVectorBytes ? next : width - kVectorBytes;
    const std::uint8_t* in = source + x;
    std::uint8_t* out = result + x;
    auto above = SortAcross(in);
    auto middle = SortAcross(in += sourceStride);
    for (int y = 0; y < height; ++y) {
      in += sourceStride;
      __builtin_prefetch(in + kNineAhead);
      __builtin_prefetch(out + kNineAhead, 1);
      const auto below = SortAcross(in);
      Octets likely[3];  // the largest minimum, the middle median and the smallest maximum
      UNROLLED for (int rank = 0; rank < 3; ++rank) {
        const Octets values[] = {above.at[rank], middle.at[rank], below.at[rank]};
        likely[rank] = Sort<3>(values).at[2 - rank];
      }
      Store(out, Sort<3>(likely).at[1]);
      out += resultStride;
      above = middle;
      middle = below;
    }
  }
}

}  // namespace

extern const MedianKernels medianKernels{
    Split<Octets>,
    Split<Floats>,
    SplitRounded,
    {MedianPair<Octets, std::uint8_t, 1>::Run, MedianPair<Octets, std::uint8_t, 2>::Run,
     MedianPair<Octets, std::uint8_t, 3>::Run},
    {MedianPair<Words, float, 1>::Run, MedianPair<Words, float, 2>::Run, MedianPair<Words, float, 3>::Run},
    {MedianPair<Floats, float, 1>::Run, MedianPair<Floats, float, 2>::Run, MedianPair<Floats, float, 3>::Run},
    MedianOfNine,
};

}  // namespace corvane::VECTOR_NAMESPACE
