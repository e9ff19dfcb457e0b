// The generator against published sequences, its seeds, its range.
#include <gtest/gtest.h>

#include <array>

#include "host/command.h"
#include "host/random.h"
#include "tests/host/bridge.h"

namespace {

using kavo::host::CommandError;
using kavo::host::fresh_seed;
using kavo::host::Random;
using kavo::test::Bridge;
using kavo::test::Environment;

TEST(Random, IsXoshiro256StarStar) {
  Random random(Random::State{1, 2, 3, 4});
  const std::array<uint64_t, 8> published = {
      11520U,
      0U,
      1509978240U,
      1215971899390074240U,
      1216172134540287360U,
      607988272756665600U,
      16172922978634559625U,
      8476171486693032832U,
  };
  for (const uint64_t expected : published)
    EXPECT_EQ(random.next(), expected);
}

TEST(Random, SpreadsItsSeedBySplitmix64) {
  Random seeded(1234567);
  Random spread(Random::State{6457827717110365317U, 3203168211198807973U, 9817491932198370423U,
                              4593380528125082431U});
  for (int i = 0; i < 10; ++i)
    EXPECT_EQ(seeded.next(), spread.next());
}

TEST(Random, FractionsAreTheUpper53Bits) {
  Random whole(1), fractions(1);
  for (int i = 0; i < 1000; ++i)
    EXPECT_EQ(fractions.next_fraction() * 0x1p53, static_cast<double>(whole.next() >> 11U));
}

TEST(Random, FractionsFillTheRangeEvenly) {
  Random random(42);
  std::array<int, 10> tenths = {};
  constexpr int draws = 100'000;
  for (int i = 0; i < draws; ++i) {
    const double fraction = random.next_fraction();
    ASSERT_GE(fraction, 0.0);
    ASSERT_LT(fraction, 1.0);
    ++tenths.at(static_cast<size_t>(fraction * 10));
  }
  for (const int count : tenths) // five standard deviations of 95
    EXPECT_NEAR(count, draws / 10, 475);
}

TEST(Rnd, ANegativeNumberSeedsFromTheEnvironment) {
  const Environment seed("QORRT_SEED", "7");
  Bridge bridge;
  EXPECT_EQ(bridge.send("RND", -1), 0.0);
  const double first = bridge.send("RND", 1);
  const double second = bridge.send("RND", 1);
  EXPECT_NE(first, second);
  bridge.send("RND", -0.5);
  EXPECT_EQ(bridge.send("RND", 1), first);
  EXPECT_EQ(first, Random(7).next_fraction());
}

TEST(Rnd, AnyOtherNumberDraws) {
  const Environment seed("QORRT_SEED", "7");
  Bridge bridge;
  Random expected(7);
  for (const double argument : {1.0, 0.0, -0.0, 17.5, std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(bridge.send("RND", argument), expected.next_fraction()) << argument;
}

TEST(Rnd, WithoutASeedInTheEnvironmentEachSeedingDiffers) {
  const Environment seed("QORRT_SEED", nullptr);
  Bridge bridge;
  bridge.send("RND", -1);
  const double first = bridge.send("RND", 1);
  bridge.send("RND", -1);
  EXPECT_NE(bridge.send("RND", 1), first);
}

TEST(Rnd, NeedsNoSeeding) {
  const Environment seed("QORRT_SEED", nullptr);
  Bridge one;
  const double first = one.send("RND", 1);
  EXPECT_EQ(one.take_error(), "");
  Bridge another;
  EXPECT_NE(another.send("RND", 1), first);
}

TEST(Rnd, ASeedThatIsNoNumberIsAnError) {
  for (const char* text : {"", "x", "7x", "-1", " 7", "18446744073709551616"}) {
    const Environment seed("QORRT_SEED", text);
    Bridge bridge;
    EXPECT_EQ(bridge.error_of("RND", -1),
              "RND: QORRT_SEED must be a whole number from 0 to 18446744073709551615, got \"" +
                  std::string(text) + "\"");
  }
}

TEST(Rnd, TakesTheLargestSeed) {
  const Environment seed("QORRT_SEED", "18446744073709551615");
  EXPECT_EQ(fresh_seed(), UINT64_MAX);
}

} // namespace
