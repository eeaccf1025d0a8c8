#include "base/fit.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Fit, ReducesToTheBoxAndNeverEnlarges) {
  const struct {
    int width, height;
    FittedSize into, byAspect;  // of a box of 300 x 225
  } cases[] = {
      {10, 10, {10, 10}, {10, 10}},        {299, 100, {299, 100}, {299, 100}},
      {300, 225, {300, 225}, {300, 225}},  {400, 300, {300, 225}, {300, 225}},
      {1000, 401, {300, 120}, {300, 120}}, {1000, 402, {300, 121}, {300, 120}},
      {401, 1000, {90, 225}, {90, 225}},   {403, 1000, {91, 225}, {90, 225}},
      {9000, 1, {300, 1}, {300, 1}},       {1, 9000, {1, 225}, {1, 225}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.width << 'x' << c.height);
    const FittedSize into = FitInto(c.width, c.height, 300, 225);
    const FittedSize byAspect = FitByAspect(c.width, c.height, 300, 225);
    EXPECT_EQ(std::pair(into.width, into.height), std::pair(c.into.width, c.into.height));
    EXPECT_EQ(std::pair(byAspect.width, byAspect.height), std::pair(c.byAspect.width, c.byAspect.height));
  }
}

}  // namespace
}  // namespace corvane
