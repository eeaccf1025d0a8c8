#pragma once

// Separable blurs for vector sources: rows first, then columns, each sum accumulated product by product from
// the first weight to the last in 32 bits, then divided by the normalizer; edge pixels repeat outwards. Row
// sums live in a ring of as many rows as one step of the column sums reads. `rowDone(y)` is called for each
// finished row of the result, in order; where it returns false the blur ends and returns false.

#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/pixel_buffer.h"
#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {

// A kernel is a type with `kHalf`, the number of weights beside the middle one, and `Weight(distance)`.
template <class Kernel>
constexpr float NormalizerOf() {
  float sum = 0;
  for (int j = -Kernel::kHalf; j <= Kernel::kHalf; ++j) sum += Kernel::Weight(j < 0 ? -j : j);
  return sum * sum;
}

template <int half>
struct BoxKernel {
  static constexpr int kHalf = half;
  static constexpr float Weight(int) { return 1; }
};

// Memory for the working rows of one run.
template <class T>
class Scratch {
 public:
  explicit Scratch(std::size_t count) : bytes_(count * sizeof(T)), values_((T*)AllocatePixels(bytes_)) {
    __builtin_memset(values_, 0, bytes_);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() { FreePixels(values_, bytes_); }
  T* Get() const { return values_; }

 private:
  std::size_t bytes_;
  T* values_;
};

ALWAYS_INLINE int Limited(int value, int least, int most) {
  return value < least ? least : value > most ? most : value;
}

// Rows that are summed at a time; the column sums of so many rows share the values they load.
inline constexpr int kRowsAtOnce = 8;
// Columns of a step.
inline constexpr int kStep = kLanes;
// Values that may be read or written beyond a working row.
inline constexpr int kSlack = 4 * kLanes + 16;

// out[x] = the weighted sum of in[x] .. in[x + 2 kHalf] for `count` values and some more.
template <class Kernel>
ALWAYS_INLINE void SumAlong(const float* in, float* out, int count) {
  for (int x = 0; x < count; x += 4 * kLanes) {
    Floats sums[4];
    const Windows<4, 2 * Kernel::kHalf> windows(in + x);
#pragma GCC unroll 32
    for (int j = 0; j <= 2 * Kernel::kHalf; ++j) {
      const int distance = j < Kernel::kHalf ? Kernel::kHalf - j : j - Kernel::kHalf;
#pragma GCC unroll 4
      for (int v = 0; v < 4; ++v) {
        const Floats product = windows.At(v, j) * Broadcast(Kernel::Weight(distance));
        sums[v] = j == 0 ? product : sums[v] + product;
      }
    }
#pragma GCC unroll 4
    for (int v = 0; v < 4; ++v) Store(out + x + v * kLanes, sums[v]);
  }
}

// The blurred values of kStep columns from x on, in kRowsAtOnce rows; rows[0] is kHalf rows before the first.
template <class Kernel>
ALWAYS_INLINE void SumDown(const float* const* rows, int x, Floats (&sums)[kRowsAtOnce]) {
#pragma GCC unroll 32
  for (int i = 0; i < 2 * Kernel::kHalf + kRowsAtOnce; ++i) {
    const Floats value = Load<Floats>(rows[i] + x);
#pragma GCC unroll 8
    for (int t = 0; t < kRowsAtOnce; ++t) {
      const int j = i - t;
      if (j < 0 || j > 2 * Kernel::kHalf) continue;
      const int distance = j < Kernel::kHalf ? Kernel::kHalf - j : j - Kernel::kHalf;
      const Floats product = value * Broadcast(Kernel::Weight(distance));
      sums[t] = j == 0 ? product : sums[t] + product;
    }
  }
  const Floats normalizer = Broadcast(NormalizerOf<Kernel>());
#pragma GCC unroll 8
  for (int t = 0; t < kRowsAtOnce; ++t) sums[t] /= normalizer;
}

ALWAYS_INLINE void ToFloats(const std::uint8_t* in, float* out, int count) {
  int x = 0;
  for (; x + kLanes <= count; x += kLanes) Store(out + x, LoadBytesAsFloats(in + x));
  for (; x < count; ++x) out[x] = in[x];
}
ALWAYS_INLINE void ToFloats(const float* in, float* out, int count) {
  __builtin_memcpy(out, in, count * sizeof(float));
}

// Columns that BlurRows finishes at a time: what fills a vector of the result.
template <class T>
inline constexpr int kBlock = kVectorBytes / (int)sizeof(T) < kStep ? kStep : kVectorBytes / (int)sizeof(T);

ALWAYS_INLINE void StoreBlock(const Floats (&values)[kBlock<float> / kLanes], float* out) {
  for (int v = 0; v < kBlock<float> / kLanes; ++v) Store(out + v * kLanes, values[v]);
}
// Limited to 0..255 and rounded to the nearest, ties to even.
ALWAYS_INLINE void StoreBlock(const Floats (&values)[4], std::uint8_t* out) {
  Ints levels[4];
  for (int v = 0; v < 4; ++v) levels[v] = RoundToInts(Smaller(values[v], Broadcast(255.0f)));
  Store(out, PackToOctets(levels[0], levels[1], levels[2], levels[3]));
}

// kBlock columns from x on of kRowsAtOnce rows.
template <class Kernel, class T>
ALWAYS_INLINE void BlurBlock(const float* const* rows, int x, T* const* out, int outX) {
  constexpr int kSteps = kBlock<T> / kStep;
  Floats values[kRowsAtOnce][kSteps];
#pragma GCC unroll 1
  for (int step = 0; step < kSteps; ++step) {
    Floats sums[kRowsAtOnce];
    SumDown<Kernel>(rows, x + step * kStep, sums);
#pragma GCC unroll 8
    for (int t = 0; t < kRowsAtOnce; ++t) values[t][step] = sums[t];
  }
#pragma GCC unroll 8
  for (int t = 0; t < kRowsAtOnce; ++t) StoreBlock(values[t], out[t] + outX);
}

// The last block is moved back over its neighbor; rows shorter than a block are finished apart.
template <class Kernel, class T>
ALWAYS_INLINE void BlurRows(const float* const* rows, int width, T* const* out) {
  if (width < kBlock<T>) {
    T apart[kRowsAtOnce][kBlock<T>];
    T* parts[kRowsAtOnce];
    for (int t = 0; t < kRowsAtOnce; ++t) parts[t] = apart[t];
    BlurBlock<Kernel>(rows, 0, parts, 0);
    for (int t = 0; t < kRowsAtOnce; ++t) __builtin_memcpy(out[t], apart[t], width * sizeof(T));
    return;
  }
  for (int next = 0; next < width; next += kBlock<T>) {
    const int x = Limited(next, 0, width - kBlock<T>);
    BlurBlock<Kernel>(rows, x, out, x);
  }
}

template <class Kernel, class Source, class Result, class RowDone>
bool Blur(Source source, Result result, RowDone rowDone) {
  constexpr int kHalf = Kernel::kHalf;
  constexpr int kRing = 2 * kHalf + kRowsAtOnce;
  const int width = source.width;
  const int height = source.height;
  if (width == 0) return true;
  // No multiple of a memory page, so that the rows of a column do not compete for the same cache lines.
  const std::size_t stride = (width + 2 * kHalf + kSlack + 63) / 64 * 64 + 16;
  const Scratch<float> memory(stride * (kRing + 2));
  float* const ring = memory.Get();
  float* const padded = ring + stride * kRing;
  auto* const spare = (decltype(result.Row(0)))(padded + stride);  // takes the rows below the last

  const auto sumRow = [&](int y) {
    ToFloats(source.Row(y), padded + kHalf, width);
    for (int j = 0; j < kHalf; ++j) {
      padded[j] = padded[kHalf];
      padded[kHalf + width + j] = padded[kHalf + width - 1];
    }
    SumAlong<Kernel>(padded, ring + stride * (y % kRing), width);
  };

  int summed = 0;
  for (int y = 0; y < height; y += kRowsAtOnce) {
    for (; summed < height && summed < y + kRowsAtOnce + kHalf; ++summed) sumRow(summed);
    const float* rows[kRing];
    for (int i = 0; i < kRing; ++i) rows[i] = ring + stride * (Limited(y - kHalf + i, 0, height - 1) % kRing);
    decltype(spare + 0) out[kRowsAtOnce];
    for (int t = 0; t < kRowsAtOnce; ++t) out[t] = y + t < height ? result.Row(y + t) : spare;
    BlurRows<Kernel>(rows, width, out);
    for (int t = 0; t < kRowsAtOnce && y + t < height; ++t) {
      if (!rowDone(y + t)) return false;
    }
  }
  return true;
}

// The mean of (2 radius + 1) squared bytes. All sums are integers that 32-bit floats hold, and the divisor is
// odd, so that no quotient is a tie: 16-bit integers give the same bytes.
template <int radius>
class ByteBox {
 public:
  explicit ByteBox(int width) : width_(width), memory_(2 * (width / 2 + kLead + kSlackWords)) {
    even_ = memory_.Get() + kLead;
    odd_ = even_ + width / 2 + kLead + kSlackWords;
  }

  // Takes a row into the sums.
  void Add(const std::uint8_t* row) { Slide<false>(row, row); }
  // Takes the row below the window in and the one above it out.
  void MoveDown(const std::uint8_t* added, const std::uint8_t* dropped) { Slide<true>(added, dropped); }

  // The means of the pixels of the row in the middle.
  void Means(std::uint8_t* out) {
    Repeat();
    if (width_ < kVectorBytes) {
      std::uint8_t apart[kVectorBytes];
      Store(apart, Vector(0));
      __builtin_memcpy(out, apart, width_);
      return;
    }
    for (int next = 0; next < width_ - 1; next += kVectorBytes) {
      const int x = Limited(next, 0, (width_ - kVectorBytes) & ~1);
      Store(out + x, Vector(x / 2));
    }
    if (width_ % 2 != 0) out[width_ - 1] = Mean(width_ - 1);
  }

 private:
  static constexpr int kSide = 2 * radius + 1;
  static constexpr int kCount = kSide * kSide;
  static constexpr std::uint16_t kReciprocal = (262144 + kCount - 1) / kCount;
  static constexpr int kLead = 2;  // column pairs before the first
  static constexpr int kSlackWords = kVectorBytes / 2 + 4;

  // Not (x & 1 ? odd_ : even_)[x >> 1], which g++ 12 takes for another address when its sanitizer checks
  // shifts.
  std::uint16_t& Sum(int x) {
    const int place = x & 1;
    std::uint16_t* const sums = place == 0 ? even_ : odd_;
    return sums[(x - place) / 2];
  }

  // The sums of even and of odd columns are stored apart, so that bytes become words without being moved.
  template <bool drops>
  ALWAYS_INLINE void SlideVector(const std::uint8_t* added, const std::uint8_t* dropped, int pair) {
    EvenOdd change = LoadEvenOdd(added);
    if (drops) {
      const EvenOdd gone = LoadEvenOdd(dropped);
      change.even -= gone.even;
      change.odd -= gone.odd;
    }
    Store(even_ + pair, Load<Shorts>(even_ + pair) + change.even);
    Store(odd_ + pair, Load<Shorts>(odd_ + pair) + change.odd);
  }

  template <bool drops>
  ALWAYS_INLINE void Slide(const std::uint8_t* added, const std::uint8_t* dropped) {
    int x = 0;
    for (; x + kVectorBytes <= width_; x += kVectorBytes) SlideVector<drops>(added + x, dropped + x, x / 2);
    if (x == width_) return;
    std::uint8_t last[2][kVectorBytes] = {};
    __builtin_memcpy(last[0], added + x, width_ - x);
    __builtin_memcpy(last[1], dropped + x, width_ - x);
    SlideVector<drops>(last[0], last[1], x / 2);
  }

  // Repeats the outermost columns outwards.
  void Repeat() {
    const std::uint16_t first = Sum(0);
    const std::uint16_t last = Sum(width_ - 1);
    for (int k = 1; k <= radius; ++k) {
      Sum(-k) = first;
      Sum(width_ - 1 + k) = last;
    }
  }

  static ALWAYS_INLINE Words Quotient(Words sum) {
    return MultiplyHigh(sum + (std::uint16_t)(kCount / 2), Broadcast(kReciprocal)) >> 2;
  }

  // The means of the column pairs from `pair` on.
  ALWAYS_INLINE Octets Vector(int pair) const {
    // Column -radius and column radius + 1 belong to one of the two results, those between to both.
    Words both = {};
#pragma GCC unroll 8
    for (int k = 1 - radius; k <= radius; ++k) {
      both += Load<Words>((k & 1 ? odd_ : even_) + pair + (k >> 1));
    }
    const Words even = both + Load<Words>((radius & 1 ? odd_ : even_) + pair + (-radius >> 1));
    const Words odd = both + Load<Words>((radius & 1 ? even_ : odd_) + pair + ((radius + 1) >> 1));
    return (Octets)(Quotient(even) | Quotient(odd) << 8);
  }

  std::uint8_t Mean(int x) {
    int sum = 0;
    for (int k = -radius; k <= radius; ++k) sum += Sum(x + k);
    return (std::uint8_t)((sum + kCount / 2) / kCount);
  }

  int width_;
  Scratch<std::uint16_t> memory_;
  std::uint16_t* even_;
  std::uint16_t* odd_;
};

template <int radius, class RowDone>
bool BoxBlur(ConstGrayView source, GrayView result, RowDone rowDone) {
  if (source.width == 0) return true;
  ByteBox<radius> box(source.width);
  const auto row = [&](int y) { return source.Row(Limited(y, 0, source.height - 1)); };
  for (int y = -radius; y <= radius; ++y) box.Add(row(y));
  for (int y = 0; y < source.height; ++y) {
    if (y > 0) box.MoveDown(row(y + radius), row(y - 1 - radius));
    box.Means(result.Row(y));
    if (!rowDone(y)) return false;
  }
  return true;
}

}  // namespace corvane::VECTOR_NAMESPACE
