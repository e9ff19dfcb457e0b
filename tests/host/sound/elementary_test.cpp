// Elementary functions against the machine's own.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/sound/elementary.h"

namespace kavo::sound {
namespace {

TEST(Elementary, ExponentialIsRight) {
  for (double x = -20.0; x <= 20.0; x += 0.0137)
    EXPECT_NEAR(exponential(x) / std::exp(x), 1.0, 1e-14) << x;
  EXPECT_EQ(exponential(0.0), 1.0);
  EXPECT_EQ(exponential(std::numbers::ln2), 2.0);
}

TEST(Elementary, LogarithmIsRight) {
  for (double x = 0.001; x <= 1000.0; x *= 1.013)
    EXPECT_NEAR(logarithm(x), std::log(x), 1e-14) << x;
  EXPECT_EQ(logarithm(1.0), 0.0);
}

TEST(Elementary, SineAndCosineAreRight) {
  for (double turns = -4.0; turns <= 4.0; turns += 0.00137) {
    EXPECT_NEAR(sine_of_turns(turns), std::sin(2.0 * std::numbers::pi * turns), 1e-14) << turns;
    EXPECT_NEAR(cosine_of_turns(turns), std::cos(2.0 * std::numbers::pi * turns), 1e-14) << turns;
  }
  EXPECT_EQ(sine_of_turns(0.25), 1.0);
  EXPECT_EQ(cosine_of_turns(0.25), 0.0);
  EXPECT_EQ(cosine_of_turns(-0.5), -1.0);
}

} // namespace
} // namespace kavo::sound
