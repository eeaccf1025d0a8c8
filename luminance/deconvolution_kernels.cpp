#include "luminance/deconvolution_kernels.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

constexpr int kAcross = kTile / kLanes;  // vectors that hold the 16 values beside each other
constexpr int kAlong = 8 / kAcross;      // positions summed at a time: eight sums in flight hide the latency
static_assert(kAcross >= 1 && kTile % kAlong == 0);

void TransposeFloats(const float* const* rows, float* columns) {
  for (int y = 0; y < kTile; y += 4) {
    for (int x = 0; x < kTile; x += 4) {
      Floats4 square[4];
      for (int i = 0; i < 4; ++i) square[i] = Load<Floats4>(rows[y + i] + x);
      Transpose(square);
      for (int i = 0; i < 4; ++i) Store(columns + kTile * (x + i) + y, square[i]);
    }
  }
}

void TransposeBytes(const std::uint8_t* const* rows, float* columns) {
  Octets16 square[16];
  for (int row = 0; row < kTile; ++row) square[row] = Load<Octets16>(rows[row]);
  Transpose(square);
  std::uint8_t transposed[kTile * kTile];
  for (int i = 0; i < kTile; ++i) Store(transposed + kTile * i, square[i]);
  for (int i = 0; i < kTile * kTile; i += kLanes) Store(columns + i, LoadBytesAsFloats(transposed + i));
}

// Weighted sums at kAlong neighboring positions for the 16 values beside each other: `at(i)` is where
// position i starts, `out(t)` where the sums of position t belong. There are at least kAlong weights.
template <class At, class Out>
ALWAYS_INLINE void SumLong(At at, const float* kernel, int taps, Out out) {
  Floats sums[kAlong][kAcross];
  const auto add = [&](int i, int first, int last, bool starts) __attribute__((always_inline)) {
    const float* source = at(i);
    // Weights are loaded where they are used: carried over from one position to the next they would take the
    // registers of the sums.
    const float* weights = kernel + i;
    __asm__("" : "+r"(weights));
    Floats values[kAcross];
    for (int v = 0; v < kAcross; ++v) values[v] = Load<Floats>(source + v * kLanes);
    for (int t = 0; t < kAlong; ++t) {
      if (t < first || t > last) continue;
      const Floats weight = Broadcast(weights[-t]);
      for (int v = 0; v < kAcross; ++v) {
        const Floats product = values[v] * weight;
        sums[t][v] = starts && t == last ? product : sums[t][v] + product;
      }
    }
  };
#pragma GCC unroll 8
  for (int i = 0; i < kAlong; ++i) add(i, 0, i, true);
  for (int i = kAlong; i < taps; ++i) add(i, 0, kAlong - 1, false);
#pragma GCC unroll 8
  for (int k = 1; k < kAlong; ++k) add(taps - 1 + k, k, kAlong - 1, false);
  for (int t = 0; t < kAlong; ++t) {
    for (int v = 0; v < kAcross; ++v) Store(out(t) + v * kLanes, sums[t][v]);
  }
}

// The same for kernels shorter than that.
template <class At, class Out>
ALWAYS_INLINE void SumShort(At at, const float* kernel, int taps, Out out) {
  for (int t = 0; t < kAlong; ++t) {
    for (int v = 0; v < kTile; v += kLanes) {
      Floats sum = Load<Floats>(at(t) + v) * Broadcast(kernel[0]);
      for (int j = 1; j < taps; ++j) sum += Load<Floats>(at(t + j) + v) * Broadcast(kernel[j]);
      Store(out(t) + v, sum);
    }
  }
}

template <class At, class Out>
ALWAYS_INLINE void SumTile(At at, const float* kernel, int taps, Out out) {
  for (int first = 0; first < kTile; first += kAlong) {
    const auto from = [&](int i) __attribute__((always_inline)) { return at(first + i); };
    const auto to = [&](int t) __attribute__((always_inline)) { return out(first + t); };
    if (taps >= kAlong) {
      SumLong(from, kernel, taps, to);
    } else {
      SumShort(from, kernel, taps, to);
    }
  }
}

void SumRows(const float* columns, const float* kernel, int taps, float* tile) {
  float transposed[kTile * kTile];
  SumTile(
      [=](int i) __attribute__((always_inline)) { return columns + kTile * i; }, kernel,
      taps, [&](int t) __attribute__((always_inline)) { return transposed + kTile * t; });
  const float* rows[kTile];
  for (int i = 0; i < kTile; ++i) rows[i] = transposed + kTile * i;
  TransposeFloats(rows, tile);
}

void SumColumns(const float* tile, const int* slots, const float* kernel, int taps, float* sums) {
  SumTile(
      [=](int i) __attribute__((always_inline)) { return tile + slots[i]; }, kernel,
      taps, [=](int t) __attribute__((always_inline)) { return sums + kSegment * t; });
}

// The weights of kSegment blurred values: sin(scale * value), |scale * value| at most 1.5708, rounded to 32
// bits. The sine is x times a polynomial in x squared, within a 10^16th; its even and odd powers are summed
// apart, and four vectors side by side, because one chain of operations after the other leaves the processor
// waiting.
ALWAYS_INLINE void Weigh(const float* blurred, Doubles scale, float* weights) {
  for (int at = 0; at < kSegment; at += 2 * kLanes) {
    const Floats first = Load<Floats>(blurred + at);
    const Floats second = Load<Floats>(blurred + at + kLanes);
    const Doubles x[4] = {LowDoubles(first) * scale, HighDoubles(first) * scale, LowDoubles(second) * scale,
                          HighDoubles(second) * scale};
    Doubles sum[4];
    for (int i = 0; i < 4; ++i) {
      const Doubles z = x[i] * x[i];
      const Doubles z2 = z * z;
      Doubles even = Broadcast(0x1.60e55130e8b5ap-33) * z2 + Broadcast(0x1.71de37ddf9c4cp-19);
      even = (even * z2 + Broadcast(0x1.1111111108fafp-7)) * z2 + Broadcast(0x1.fffffffffffffp-1);
      Doubles odd = Broadcast(-0x1.9eedeb9288095p-41) * z2 + Broadcast(-0x1.ae634afcade55p-26);
      odd = (odd * z2 + Broadcast(-0x1.a01a0199bf5b5p-13)) * z2 + Broadcast(-0x1.5555555555458p-3);
      sum[i] = even + odd * z;
    }
    Store(weights + at, NarrowToFloats(sum[0] * x[0], sum[1] * x[1]));
    Store(weights + at + kLanes, NarrowToFloats(sum[2] * x[2], sum[3] * x[3]));
  }
}

// Sixteen sums of squares, of the columns whose number has the same remainder by 16.
class Energy {
 public:
  ALWAYS_INLINE explicit Energy(double* sums) : target_(sums) {
    for (int i = 0; i < kParts; ++i) sums_[i] = Load<Doubles>(sums + i * kWide);
  }
  // `vector` is the place of the residuals among the segment's vectors.
  ALWAYS_INLINE void Add(int vector, Floats residual) {
    const Doubles low = LowDoubles(residual);
    const Doubles high = HighDoubles(residual);
    const int part = vector % kAcross * 2;
    sums_[part] += low * low;
    sums_[part + 1] += high * high;
  }
  ALWAYS_INLINE void Finish() {
    for (int i = 0; i < kParts; ++i) Store(target_ + i * kWide, sums_[i]);
  }

 private:
  static constexpr int kWide = kVectorBytes / 8;
  static constexpr int kParts = kTile / kWide;
  Doubles sums_[kParts];
  double* target_;
};

constexpr int kVectors = kSegment / kLanes;
static_assert(kVectors % 4 == 0);

ALWAYS_INLINE Floats Limited(Floats v) { return Smaller(Larger(v, Floats{}), Broadcast(255.0f)); }

template <bool weighted>
ALWAYS_INLINE void FinishBytes(const float* sums, float normalizer, const std::uint8_t* observed,
                               std::uint8_t* estimate, double* energySums) {
  const Floats divisor = Broadcast(normalizer);
  Energy energy(energySums);
  float corrections[kSegment];
  float blurred[kSegment];
#pragma GCC unroll 16
  for (int i = 0; i < kVectors; ++i) {
    const int x = i * kLanes;
    const Floats value = Limited(Load<Floats>(sums + x) / divisor);
    Floats residual = LoadBytesAsFloats(observed + x) - value;
    if (!weighted) residual = Larger(residual, Floats{});
    energy.Add(i, residual);
    Store(blurred + x, value);
    Store(corrections + x, residual);
  }
  energy.Finish();
  float weights[kSegment];
  if (weighted) Weigh(blurred, Broadcast(1.57 / 255), weights);
  for (int group = 0; group < kSegment; group += 4 * kLanes) {
    Ints levels[4];
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) {
      const int x = group + i * kLanes;
      Floats correction = Load<Floats>(corrections + x);
      if (weighted) correction *= Load<Floats>(weights + x);
      levels[i] = RoundToInts(Limited(LoadBytesAsFloats(estimate + x) + correction));
    }
    Store(estimate + group, PackToOctets(levels[0], levels[1], levels[2], levels[3]));
  }
}

void CorrectBytes(const float* sums, float normalizer, const std::uint8_t* observed, std::uint8_t* estimate,
                  double* energy) {
  FinishBytes<true>(sums, normalizer, observed, estimate, energy);
}

void RaiseBytes(const float* sums, float normalizer, const std::uint8_t* observed, std::uint8_t* estimate,
                double* energy) {
  FinishBytes<false>(sums, normalizer, observed, estimate, energy);
}

ALWAYS_INLINE Floats BlankAsZero(Floats v) { return v == v ? v : Floats{}; }

void RaiseFloats(const float* sums, float normalizer, const float* observed, float* estimate,
                 double* energySums) {
  const Floats divisor = Broadcast(normalizer);
  Energy energy(energySums);
#pragma GCC unroll 16
  for (int i = 0; i < kVectors; ++i) {
    const int x = i * kLanes;
    const Floats blurred = Load<Floats>(sums + x) / divisor;
    const Floats residual = Larger(BlankAsZero(Load<Floats>(observed + x)) - blurred, Floats{});
    energy.Add(i, residual);
    Store(estimate + x, Larger(Load<Floats>(estimate + x) + residual, Floats{}));
  }
  energy.Finish();
}

void KeepBlurred(const float* sums, float normalizer, const float* observed, float* blurred,
                 double* energySums, float* largest) {
  const Floats divisor = Broadcast(normalizer);
  Energy energy(energySums);
  Floats most[kAcross];
  for (int i = 0; i < kAcross; ++i) most[i] = Load<Floats>(largest + i * kLanes);
#pragma GCC unroll 16
  for (int i = 0; i < kVectors; ++i) {
    const int x = i * kLanes;
    const Floats value = Load<Floats>(sums + x) / divisor;
    energy.Add(i, BlankAsZero(Load<Floats>(observed + x)) - value);
    most[i % kAcross] = Larger(most[i % kAcross], value);
    Store(blurred + x, value);
  }
  for (int i = 0; i < kAcross; ++i) Store(largest + i * kLanes, most[i]);
  energy.Finish();
}

void CorrectFloats(const float* blurred, double scale, const float* observed, float* estimate) {
  float weights[kSegment];
  Weigh(blurred, Broadcast(scale), weights);
  for (int x = 0; x < kSegment; x += kLanes) {
    const Floats residual = BlankAsZero(Load<Floats>(observed + x)) - Load<Floats>(blurred + x);
    Store(estimate + x, Larger(Load<Floats>(estimate + x) + residual * Load<Floats>(weights + x), Floats{}));
  }
}

}  // namespace

extern const DeconvolutionKernels deconvolutionKernels{TransposeBytes, TransposeFloats, SumRows,
                                                       SumColumns,     CorrectBytes,    RaiseBytes,
                                                       RaiseFloats,    KeepBlurred,     CorrectFloats};

}  // namespace corvane::VECTOR_NAMESPACE
