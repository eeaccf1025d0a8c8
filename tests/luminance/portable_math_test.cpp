#include "luminance/portable_math.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/support/images.h"

namespace corvane {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kBlank = std::numeric_limits<double>::quiet_NaN();

// Arguments whose results are known to the last bit without any library.
TEST(PortableMath, IsExactWhereTheResultIs) {
  for (int x = 0; x <= 4096; ++x) {
    EXPECT_EQ(Power(x * static_cast<double>(x), 0.5), x);
    EXPECT_EQ(Power(x, 2), x * static_cast<double>(x));
    EXPECT_EQ(Power(x, 3), x * static_cast<double>(x) * x);
  }
  for (int n = -1000; n <= 1000; ++n) EXPECT_EQ(Power(std::ldexp(1.0, n), 1), std::ldexp(1.0, n));
  EXPECT_EQ(Logarithm(1), 0);
  EXPECT_EQ(Exponential(0), 1);
  EXPECT_EQ(Exponential(1), 2.718281828459045);
  EXPECT_EQ(Logarithm(10), 2.302585092994046);
  EXPECT_EQ(Logarithm(0), -kInfinite);
  EXPECT_EQ(Power(1e30, 20), kInfinite);
  EXPECT_EQ(Power(1e-30, 20), 0);
  for (const double exponent : {0.33, 0.5, 2.0, 10.0}) {
    EXPECT_EQ(Power(0, exponent), 0);
    EXPECT_EQ(Power(kInfinite, exponent), kInfinite);
    EXPECT_TRUE(std::isnan(Power(kBlank, exponent)));
  }
  EXPECT_TRUE(std::isnan(Logarithm(kBlank)) && std::isnan(Exponential(kBlank)));
  EXPECT_EQ(Logarithm(kInfinite), kInfinite);
}

// The distance from the true value in units in the last place of a double.
double Error(double value, long double truth) {
  int exponent = 0;
  std::frexp(truth, &exponent);
  return static_cast<double>(std::fabs(value - truth) / std::ldexp(1.0L, exponent - 53));
}

TEST(PortableMath, IsAsAccurateAsItSays) {
  const struct {
    double exponent;
    double most;
  } powers[] = {{0.1, 2}, {0.33, 2}, {0.3333, 2}, {0.9, 2}, {1.7, 4}, {3.3, 8}, {10, 16}};
  Random random(1);
  for (int i = 0; i < 100'000; ++i) {
    // Pixel values, then all the sizes that a 32-bit float has.
    double x = random.Next() / 65536.0 + 0.001;
    if (i % 2 == 0) x = std::ldexp(1 + random.Fraction(), random.Below(276) - 149);
    ASSERT_LE(Error(Logarithm(x), std::log(static_cast<long double>(x))), 2) << x;
    for (const auto& [exponent, most] : powers) {
      const long double truth = std::pow(static_cast<long double>(x), static_cast<long double>(exponent));
      if (truth < 1e-300L || truth > 1e300L) continue;
      ASSERT_LE(Error(Power(x, exponent), truth), most) << x << " to " << exponent;
    }
    const double power = 1400 * random.Fraction() - 700;
    ASSERT_LE(Error(Exponential(power), std::exp(static_cast<long double>(power))), 2) << power;
  }
}

// No compiler has fused or reordered an operation: these are the bits of every machine.
TEST(PortableMath, GivesTheSameBitsOnEveryMachine) {
  Random random(2);
  std::uint64_t sum = 0;
  const auto add = [&](double value) {
    sum = sum * 6364136223846793005u + __builtin_bit_cast(std::uint64_t, value);
  };
  for (int i = 0; i < 10'000; ++i) {
    const double x = random.Next() / 65536.0 + 0.001;
    add(Logarithm(x));
    add(Power(x, 0.33));
    add(Power(x, 4.5));
    add(Exponential(-x / 1000));
  }
  EXPECT_EQ(sum, 11163942701901245865u);
}

}  // namespace
}  // namespace corvane
