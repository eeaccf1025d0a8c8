#pragma once

#include <cstdint>

// Logarithms and powers made of additions, multiplications, divisions and square roots in a fixed order: they
// come out the same on every processor and with every C library. They are always inlined and call nothing, so
// vector sources may use them, and loops over them become vectors.
//
// The error, in units in the last place of the 64-bit result, is at most 2 for logarithms, exponentials and
// powers with exponents up to 1, and at most 16 for exponents up to 10. Exponents 0.5, 2 and 3 are a root or
// products, each correctly rounded.

namespace corvane {
namespace portable {

#define PORTABLE [[gnu::always_inline]] inline

PORTABLE std::uint64_t BitsOf(double x) { return __builtin_bit_cast(std::uint64_t, x); }
PORTABLE double FromBits(std::uint64_t bits) { return __builtin_bit_cast(double, bits); }

// ln 2 in two parts; the first has so few bits that its multiples up to 2048 are exact.
constexpr double kLn2High = 0x1.62e42fefa38p-1;
constexpr double kLn2Low = 0x1.ef35793c7673p-45;
constexpr double kLog2OfE = 0x1.71547652b82fep0;

// Adding this to a number below 2^51 leaves its nearest integer in the low bits.
constexpr double kIntegerShift = 0x1.8p52;

// Coefficients from the highest power to the lowest.
template <class... Lower>
PORTABLE double Polynomial(double x, double highest, Lower... lower) {
  double value = highest;
  ((value = value * x + lower), ...);
  return value;
}

// x = 2^exponent m with m from sqrt(1/2) to sqrt(2).
struct Split {
  double exponent;
  double mantissaLogarithm;  // ln m
};

// `x` is a positive normal number. With s = (m - 1) / (m + 1): ln m = 2 s (1 + s^2/3 + s^4/5 + ...), the
// coefficients adjusted to the range, within 2^-59.
PORTABLE Split SplitOf(double x) {
  constexpr std::uint64_t kRootOfHalf = 0x3fe6a09e667f3bcd;
  constexpr std::uint64_t kBias = 1024;
  const std::uint64_t bits = BitsOf(x) + (kBias << 52) - kRootOfHalf;
  const double m = FromBits((bits & 0x000fffffffffffff) + kRootOfHalf);
  const double exponent = FromBits(bits >> 52 | BitsOf(0x1p52)) - (0x1p52 + kBias);

  const double s = (m - 1) / (m + 1);
  const double z = s * s;
  const double z2 = z * z;
  const double even =
      Polynomial(z2, 0x1.2f0639c81f37ep-4, 0x1.74663fa7d56dep-4, 0x1.24924941f5297p-3, 0x1.5555555555592p-2);
  const double odd = Polynomial(z2, 0x1.39a1a66dc03d3p-4, 0x1.c71c5205e8db2p-4, 0x1.999999997fd73p-3);
  const double twice = s + s;
  return {exponent, twice + twice * (z * (even + odd * z))};
}

// 2^n 2^t for t from -1/2 to 1/2 and the sum `shifted` of n and kIntegerShift; 2^n and the result are normal
// numbers. The series is adjusted to the range, within 2^-58.
PORTABLE double PowerOfTwo(double t, double shifted) {
  const double t2 = t * t;
  const double even = Polynomial(t2, 0x1.ea1889cdae187p-32, 0x1.b524cdb4c39c6p-24, 0x1.ffcbfc7c667ecp-17,
                                 0x1.5d87fe78a0dafp-10, 0x1.c6b08d704a0d7p-5, 0x1.62e42fefa39efp-1);
  const double odd = Polynomial(t2, 0x1.e61caca292472p-28, 0x1.62bfc6ca5cf8bp-20, 0x1.4309130f30695p-13,
                                0x1.3b2ab6fb9ff51p-7, 0x1.ebfbdff82c5a5p-3);
  const double value = 1 + t * (even + odd * t);
  return FromBits(BitsOf(value) + (BitsOf(shifted) << 52));
}

// `value`, which is 2^logarithm, or 0 or infinity where that is no normal number.
PORTABLE double Limited(double value, double logarithm) {
  value = logarithm < -1021 ? 0 : value;
  return logarithm >= 1024 ? __builtin_inf() : value;
}

}  // namespace portable

// ln(x) for a normal number above 0; ln(0) is minus infinity, infinity and NaN pass through.
PORTABLE double Logarithm(double x) {
  const portable::Split split = portable::SplitOf(x);
  const double value =
      split.exponent * portable::kLn2High + (split.mantissaLogarithm + split.exponent * portable::kLn2Low);
  return x > 0 ? (x < __builtin_inf() ? value : x) : (x == 0 ? -__builtin_inf() : x);
}

// x to the power `exponent`, which is above 0; `x` is 0 or a positive normal number, infinity and NaN
// pass through. Results below 2^-1021 are 0.
PORTABLE double GeneralPower(double x, double exponent) {
  const portable::Split split = portable::SplitOf(x);
  // The logarithm to base 2 in two parts, of which the first is exact, also when its integer is taken off.
  const double high = static_cast<float>(exponent);
  const double whole = high * split.exponent;
  const double part =
      exponent * portable::kLog2OfE * split.mantissaLogarithm + (exponent - high) * split.exponent;
  const double logarithm = whole + part;
  const double shifted = logarithm + portable::kIntegerShift;
  const double rest = (whole - (shifted - portable::kIntegerShift)) + part;
  double value = portable::Limited(portable::PowerOfTwo(rest, shifted), logarithm);
  value = x > 0 ? value : x;
  return x < __builtin_inf() ? value : x;
}

PORTABLE double Power(double x, double exponent) {
  if (exponent == 0.5) return __builtin_sqrt(x);
  if (exponent == 2) return x * x;
  if (exponent == 3) return x * x * x;
  return GeneralPower(x, exponent);
}

// e to the power `x`; results below 2^-1021 are 0.
PORTABLE double Exponential(double x) {
  const double logarithm = x * portable::kLog2OfE;
  const double shifted = logarithm + portable::kIntegerShift;
  const double n = shifted - portable::kIntegerShift;
  const double rest = (x - n * portable::kLn2High) - n * portable::kLn2Low;
  const double value = portable::PowerOfTwo(rest * portable::kLog2OfE, shifted);
  return portable::Limited(value, logarithm);
}

#undef PORTABLE

}  // namespace corvane
