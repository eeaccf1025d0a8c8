#include "align/combine.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

// What is done to a pair of pixels, the same at both precisions.

struct Sum {
  Floats m1, m2;
  ALWAYS_INLINE Floats operator()(Floats a, Floats b) const { return m2 * b + m1 * a; }
};
struct Difference {
  Floats m1, m2;
  ALWAYS_INLINE Floats operator()(Floats a, Floats b) const { return m1 * a - m2 * b; }
};
struct Average {
  Floats m1, m2;
  ALWAYS_INLINE Floats operator()(Floats a, Floats b) const { return (m2 * b + m1 * a) / (m1 + m2); }
};
struct Darker {
  Floats m1, m2;
  ALWAYS_INLINE Floats operator()(Floats a, Floats b) const { return m1 * a <= m2 * b ? m1 * a : m2 * b; }
};
struct Lighter {
  Floats m1, m2;
  ALWAYS_INLINE Floats operator()(Floats a, Floats b) const { return Larger(m1 * a, m2 * b); }
};
// A pixel without light in the flat leaves the other picture's as it is.
struct Quotient {
  Floats m1, m2;
  ALWAYS_INLINE Floats operator()(Floats a, Floats b) const {
    const Floats flat = m2 * b;
    return m1 * a / (flat > 0.0f ? flat : Broadcast(1.0f));
  }
};

constexpr int kBlock = 4 * kLanes;  // levels to a vector of bytes

// No method leaves the range of 32-bit integers, so packing limits the levels.
template <class Method>
ALWAYS_INLINE Octets CombineLevels(const std::uint8_t* a, const std::uint8_t* b, const Method& method) {
  Ints levels[4];
  for (int i = 0; i < 4; ++i) {
    levels[i] = RoundToInts(method(LoadBytesAsFloats(a + i * kLanes), LoadBytesAsFloats(b + i * kLanes)));
  }
  return PackToOctets(levels[0], levels[1], levels[2], levels[3]);
}

template <class Method>
void Display(ConstGrayView a, ConstGrayView b, float m1, float m2, GrayView result) {
  const Method method{Broadcast(m1), Broadcast(m2)};
  const std::size_t count = (std::size_t)result.stride * result.height;
  std::size_t i = 0;
  for (; i + kBlock <= count; i += kBlock)
    Store(result.bits + i, CombineLevels(a.bits + i, b.bits + i, method));
  std::uint8_t lastA[kBlock] = {};
  std::uint8_t lastB[kBlock] = {};
  __builtin_memcpy(lastA, a.bits + i, count - i);
  __builtin_memcpy(lastB, b.bits + i, count - i);
  const Octets last = CombineLevels(lastA, lastB, method);
  __builtin_memcpy(result.bits + i, &last, count - i);
}

// Without multipliers the choice is one between bytes.
template <class Method, Octets Choose(Octets, Octets)>
void DisplayChoice(ConstGrayView a, ConstGrayView b, float m1, float m2, GrayView result) {
  if (m1 != 1 || m2 != 1) return Display<Method>(a, b, m1, m2, result);
  const std::size_t count = (std::size_t)result.stride * result.height;
  std::size_t i = 0;
  for (; i + kVectorBytes <= count; i += kVectorBytes) {
    Store(result.bits + i, Choose(Load<Octets>(a.bits + i), Load<Octets>(b.bits + i)));
  }
  std::uint8_t last[2][kVectorBytes] = {};
  __builtin_memcpy(last[0], a.bits + i, count - i);
  __builtin_memcpy(last[1], b.bits + i, count - i);
  const Octets chosen = Choose(Load<Octets>(last[0]), Load<Octets>(last[1]));
  __builtin_memcpy(result.bits + i, &chosen, count - i);
}

// Comparisons with NaN are false, so a blank stays blank.
template <class Method>
ALWAYS_INLINE Floats CombineValues(const float* a, const float* b, const Method& method) {
  const Floats v = method(Load<Floats>(a), Load<Floats>(b));
  return Smaller(Larger(v, Broadcast(0.0f)), Broadcast(32767.0f));
}

template <class Method>
void Data(ConstFloatView a, ConstFloatView b, float m1, float m2, FloatView result) {
  const Method method{Broadcast(m1), Broadcast(m2)};
  const std::size_t count = (std::size_t)result.width * result.height;
  std::size_t i = 0;
  for (; i + kLanes <= count; i += kLanes) {
    Store(result.values + i, CombineValues(a.values + i, b.values + i, method));
  }
  float lastA[kLanes] = {};
  float lastB[kLanes] = {};
  __builtin_memcpy(lastA, a.values + i, (count - i) * sizeof(float));
  __builtin_memcpy(lastB, b.values + i, (count - i) * sizeof(float));
  const Floats last = CombineValues(lastA, lastB, method);
  __builtin_memcpy(result.values + i, &last, (count - i) * sizeof(float));
}

void AverageDisplay(ConstGrayView a, ConstGrayView b, float m1, float m2, GrayView result) {
  Display<Sum>(a, b, m1 / (m1 + m2), m2 / (m1 + m2), result);
}

constexpr int kRun = 1 << 16;  // levels whose sum fits 32 bits, which vectors add twice as fast as 64

// The mean of the pixels, without the padding.
float MeanLevel(ConstGrayView levels) {
  std::uint64_t sum = 0;
  for (int y = 0; y < levels.height; ++y) {
    const std::uint8_t* row = levels.bits + (std::size_t)y * levels.stride;
    for (int x = 0; x < levels.width;) {
      const int end = levels.width - x > kRun ? x + kRun : levels.width;
      std::uint32_t part = 0;
      for (; x < end; ++x) part += row[x];
      sum += part;
    }
  }
  return (float)((double)sum / ((double)levels.width * levels.height));
}

void FlatDisplay(ConstGrayView a, ConstGrayView b, float m1, float m2, GrayView result) {
  const float mean = MeanLevel(b);
  Display<Quotient>(a, b, m1, mean > 0.0f ? m2 / mean : 1.0f, result);
}

// The number of 64-bit sums is fixed, so that every instruction set rounds alike.
constexpr int kChains = 32;

struct Totals {
  Doubles sums[2 * kChains / kLanes];
  Ints blanks;
  ALWAYS_INLINE void Add(const float* values) {
    for (int i = 0; i < kChains / kLanes; ++i) {
      const Floats v = Load<Floats>(values + i * kLanes);
      const Floats light = v == v ? v : Floats{};
      sums[2 * i] += LowDoubles(light);
      sums[2 * i + 1] += HighDoubles(light);
      blanks -= v != v;
    }
  }
};

// The mean of the values that are not blank.
double MeanValue(ConstFloatView data) {
  const std::size_t count = (std::size_t)data.width * data.height;
  Totals totals{};
  std::size_t i = 0;
  for (; i + kChains <= count; i += kChains) totals.Add(data.values + i);
  float last[kChains] = {};
  __builtin_memcpy(last, data.values + i, (count - i) * sizeof(float));
  totals.Add(last);
  double sum = 0;
  for (int chain = 0; chain < kChains; ++chain)
    sum += totals.sums[chain / (kLanes / 2)][chain % (kLanes / 2)];
  double summed = (double)count;
  for (int lane = 0; lane < kLanes; ++lane) summed -= totals.blanks[lane];
  return sum > 0 ? sum / summed : 0;
}

void FlatData(ConstFloatView a, ConstFloatView b, float m1, float m2, FloatView result) {
  const double mean = MeanValue(b);
  Data<Quotient>(a, b, m1, mean > 0 ? (float)(m2 / mean) : 1.0f, result);
}

}  // namespace

extern const CombineTable combineMethods{
    {"add", "&Add", Display<Sum>, Data<Sum>},
    {"sub", "&Subtract #2", Display<Difference>, Data<Difference>},
    {"average", "A&verage", AverageDisplay, Data<Average>},
    {"darker", "&Darker Pixel", DisplayChoice<Darker, Smaller<Octets>>, Data<Darker>},
    {"lighter", "&Lighter Pixel", DisplayChoice<Lighter, Larger<Octets>>, Data<Lighter>},
    {"flat", "Flat Fiel&d #2", FlatDisplay, FlatData},
};

}  // namespace corvane::VECTOR_NAMESPACE
