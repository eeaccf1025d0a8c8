#include "luminance/portable_math.h"

#include "core/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

constexpr int kWide = kVectorBytes / 8;

// The unevaluated sum of two floats: about 106 bits.
struct Pair {
  Doubles high;
  Doubles low;
};

ALWAYS_INLINE Doubles Spread(double value) { return value - Doubles{}; }

ALWAYS_INLINE Pair Sum(Doubles a, Doubles b) {
  const Doubles sum = a + b;
  const Doubles part = sum - a;
  return {sum, (a - (sum - part)) + (b - part)};
}

// The same for |a| >= |b|.
ALWAYS_INLINE Pair SortedSum(Doubles a, Doubles b) {
  const Doubles sum = a + b;
  return {sum, b - (sum - a)};
}

// The upper half of the bits, so that products of halves are exact. Without a fused multiply-add, which not
// every processor has.
ALWAYS_INLINE Doubles UpperHalf(Doubles a) {
  const Doubles scaled = a * Spread(134217729.0);
  return scaled - (scaled - a);
}

ALWAYS_INLINE Pair Product(Doubles a, Doubles b) {
  const Doubles product = a * b;
  const Doubles aHigh = UpperHalf(a);
  const Doubles aLow = a - aHigh;
  const Doubles bHigh = UpperHalf(b);
  const Doubles bLow = b - bHigh;
  return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
}

// The value of a polynomial; `coefficients` from the highest power to the lowest.
template <int count>
ALWAYS_INLINE Doubles Polynomial(const double (&coefficients)[count], Doubles x) {
  Doubles value = Spread(coefficients[0]);
  for (int i = 1; i < count; ++i) value = value * x + Spread(coefficients[i]);
  return value;
}

// Adding this to a number below 2^51 leaves its nearest integer in the low bits.
constexpr double kIntegerShift = 6755399441055744.0;
constexpr std::int64_t kIntegerShiftBits = 0x4338000000000000;

// ln 2 in two parts; the first has so few bits that its multiples up to 2048 are exact.
constexpr double kLn2High = 0x1.62e42fefa38p-1;
constexpr double kLn2Low = 0x1.ef35793c7673p-45;

// With x = 2^k m, m between sqrt(1/2) and sqrt(2), and s = (m - 1) / (m + 1):
// ln x = k ln 2 + 2 s (1 + s^2/3 + s^4/5 + ...).
ALWAYS_INLINE Pair LogarithmPair(Doubles x) {
  static constexpr double kSeries[] = {1.0 / 23, 1.0 / 21, 1.0 / 19, 1.0 / 17, 1.0 / 15, 1.0 / 13,
                                       1.0 / 11, 1.0 / 9,  1.0 / 7,  1.0 / 5,  1.0 / 3};
  const Longs bits = Reinterpret<Longs>(x);
  const Longs k = (bits - 0x3fe6a09e667f3bcd) >> 52;
  const Doubles m = Reinterpret<Doubles>(bits - (k << 52));
  const Doubles exponent = Reinterpret<Doubles>(k + kIntegerShiftBits) - Spread(kIntegerShift);

  const Doubles one = Spread(1.0);
  const Doubles numerator = m - one;
  const Pair denominator = SortedSum(m + one, m - ((m + one) - one));
  const Doubles s = numerator / denominator.high;
  const Pair back = Product(s, denominator.high);
  const Doubles sLow = (((numerator - back.high) - back.low) - s * denominator.low) / denominator.high;

  const Doubles z = s * s;
  const Pair total = Sum(exponent * Spread(kLn2High), s + s);
  const Doubles rest = (s + s) * (z * Polynomial(kSeries, z)) + (sLow + sLow) + exponent * Spread(kLn2Low);
  return SortedSum(total.high, total.low + rest);
}

// e^x for x = high + low: with x = n ln 2 + r, 2^n (1 + r + r^2/2 + r^3 (1/6 + r/24 + ...)).
ALWAYS_INLINE Doubles ExponentialOf(Pair x) {
  static constexpr double kSeries[] = {
      1.0 / 1307674368000, 1.0 / 87178291200, 1.0 / 6227020800, 1.0 / 479001600, 1.0 / 39916800,
      1.0 / 3628800,       1.0 / 362880,      1.0 / 40320,      1.0 / 5040,      1.0 / 720,
      1.0 / 120,           1.0 / 24,          1.0 / 6};
  // Far beyond the range of results, so that the two factors below stay powers of two.
  const Doubles limit = Spread(1400.0);
  const Doubles high = x.high > limit ? limit : x.high < -limit ? -limit : x.high;
  const Doubles shifted = high * Spread(0x1.71547652b82fep0) + Spread(kIntegerShift);
  const Doubles n = shifted - Spread(kIntegerShift);
  const Longs integer = Reinterpret<Longs>(shifted) - kIntegerShiftBits;
  const Doubles r = high - n * Spread(kLn2High);
  const Doubles rLow = x.low - n * Spread(kLn2Low);

  const Pair square = Product(r, r);
  const Pair linear = SortedSum(Spread(1.0), r);
  const Pair quadratic = SortedSum(linear.high, square.high * Spread(0.5));
  const Doubles cubic = square.high * r * Polynomial(kSeries, r);
  const Doubles small = (linear.low + quadratic.low) + square.low * Spread(0.5) + cubic;
  const Doubles value = quadratic.high + (small + rLow * (quadratic.high + cubic));

  const Longs half = integer >> 1;
  return value * Reinterpret<Doubles>((half + 1023) << 52) *
         Reinterpret<Doubles>((integer - half + 1023) << 52);
}

ALWAYS_INLINE Doubles Infinite() { return Spread(__builtin_inf()); }

ALWAYS_INLINE Doubles LogarithmOf(Doubles x) {
  const Doubles value = LogarithmPair(x).high;
  return x > Spread(0.0) ? (x < Infinite() ? value : x) : (x == Spread(0.0) ? -Infinite() : x);
}

ALWAYS_INLINE Doubles PowerOf(Doubles x, Doubles exponent) {
  const Pair logarithm = LogarithmPair(x);
  const Pair product = Product(exponent, logarithm.high);
  const Doubles value = ExponentialOf(SortedSum(product.high, product.low + exponent * logarithm.low));
  return ((x > Spread(0.0)) & (x < Infinite())) ? value : x;
}

template <class Function>
ALWAYS_INLINE void Map(const double* x, double* out, std::size_t count, Function function) {
  std::size_t i = 0;
  for (; i + kWide <= count; i += kWide) Store(out + i, function(Load<Doubles>(x + i)));
  if (i == count) return;
  double rest[kWide] = {};
  __builtin_memcpy(rest, x + i, (count - i) * sizeof(double));
  Store(rest, function(Load<Doubles>(rest)));
  __builtin_memcpy(out + i, rest, (count - i) * sizeof(double));
}

void Logarithms(const double* x, double* out, std::size_t count) {
  Map(x, out, count, [](Doubles v) { return LogarithmOf(v); });
}

void Powers(const double* x, double exponent, double* out, std::size_t count) {
  const Doubles power = Spread(exponent);
  Map(x, out, count, [power](Doubles v) { return PowerOf(v, power); });
}

void Exponentials(const double* x, double* out, std::size_t count) {
  Map(x, out, count, [](Doubles v) { return v == v ? ExponentialOf({v, Doubles{}}) : v; });
}

}  // namespace

extern const PortableMathKernels portableMathKernels{Logarithms, Powers, Exponentials};

}  // namespace corvane::VECTOR_NAMESPACE
