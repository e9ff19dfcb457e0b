// Chance, bits, types and the running system.
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <set>
#include <string>

#include "runtime/regex.h"
#include "runtime/system.h"
#include "tests/runtime/values.h"
#include "tests/support/rounds.h"

namespace {

using kavo::test::take;

TEST(Uuid, HasTheShapeOfVersionFour) {
  const auto* shape = "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}";
  for (int i = kavo::test::rounds(1000); i > 0; --i)
    ASSERT_EQ(qor_regex_match(shape, take(qor_uuid()).c_str()), 1);
}

TEST(Uuid, IsEightDrawsInOrder) {
  qor_randomseed(7);
  const auto uuid = take(qor_uuid());
  std::srand(7);
  std::array<unsigned, 8> draws{};
  for (auto& draw : draws)
    draw = static_cast<unsigned>(std::rand());
  std::array<char, 37> expected{};
  std::snprintf(expected.data(), expected.size(), "%04x%04x-%04x-%04x-%04x-%04x%04x%04x",
                draws[0] & 0xFFFF, draws[1] & 0xFFFF, draws[2] & 0xFFFF,
                (draws[3] & 0xFFF) | 0x4000, (draws[4] & 0x3FFF) | 0x8000, draws[5] & 0xFFFF,
                draws[6] & 0xFFFF, draws[7] & 0xFFFF);
  EXPECT_EQ(uuid, expected.data());
}

TEST(Random, RepeatsAfterTheSameSeed) {
  for (auto* draw : {qor_rnd, qor_random2}) {
    qor_randomseed(42);
    const double first = draw();
    const double second = draw();
    qor_randomseed(42);
    EXPECT_EQ(draw(), first);
    EXPECT_EQ(draw(), second);
  }
}

TEST(Random, StaysBelowOneAndSpreads) {
  for (auto* draw : {qor_rnd, qor_random2}) {
    qor_randomseed(1);
    std::set<int> tenths;
    for (int i = 0; i < 1000; ++i) {
      const double x = draw();
      ASSERT_GE(x, 0.0);
      ASSERT_LT(x, 1.0);
      tenths.insert(static_cast<int>(x * 10));
    }
    EXPECT_EQ(tenths.size(), 10U);
  }
}

TEST(Rotation, TurnsAll64Bits) {
  EXPECT_EQ(qor_rotl(0x8000000000000001, 1), 3U);
  EXPECT_EQ(qor_rotr(3, 1), 0x8000000000000001U);
  EXPECT_EQ(qor_rotl(5, 64), 5U);
  EXPECT_EQ(qor_rotl(1, -1), 0x8000000000000000U);
  EXPECT_EQ(qor_rotr(1, -1), 2U);
}

TEST(Rotation, TurnsTheLow32BitsWithA2) {
  EXPECT_EQ(qor_rotl2(0x80000001, 1), 3U);
  EXPECT_EQ(qor_rotr2(3, 1), 0x80000001U);
  EXPECT_EQ(qor_rotl2(0xFF00000005, 32), 5U);
  EXPECT_EQ(qor_rotr2(1, -1), 2U);
}

TEST(Divisors, AreNeverNegative) {
  EXPECT_EQ(qor_gcd(12, -18), 6);
  EXPECT_EQ(qor_gcd(0, -5), 5);
  EXPECT_EQ(qor_gcd(0, 0), 0);
  EXPECT_EQ(qor_lcm(-4, 6), 12);
  EXPECT_EQ(qor_lcm(0, 6), 0);
}

TEST(Divisors, AboveTheRangeAreItsUpperEnd) {
  EXPECT_EQ(qor_gcd(INT64_MIN, INT64_MIN), INT64_MAX);
  EXPECT_EQ(qor_gcd(INT64_MIN, 6), 2);
  EXPECT_EQ(qor_lcm(INT64_MAX, INT64_MAX - 1), INT64_MAX);
  EXPECT_EQ(qor_lcm(INT64_MIN, 1), INT64_MAX);
}

TEST(Iif, ChoosesByTheCondition) {
  EXPECT_EQ(qor_iif(-1, 1.5, 2.5), 1.5);
  EXPECT_EQ(qor_iif(int64_t{1} << 40, 1.5, 2.5), 1.5);
  EXPECT_EQ(qor_iif(0, 1.5, 2.5), 2.5);
}

TEST(TypeNames, OfTags) {
  const std::array names{"INT64", "FLOAT64", "STRING", "ARRAY", "OBJECT", "FUNCREF", "OBJECT"};
  for (uint32_t tag = 0; tag < names.size(); ++tag)
    EXPECT_EQ(take(qor_typeof_tag(tag)), names[tag]);
  for (const uint32_t tag : {7U, 8U, 0xFFFFFFFFU})
    EXPECT_EQ(take(qor_typeof_tag(tag)), "UNKNOWN");
}

TEST(TypeNames, OfNumbers) {
  EXPECT_EQ(take(qor_typeof_f64(std::nan(""))), "NONE");
  EXPECT_EQ(take(qor_typeof_f64(-0.0)), "FLOAT64");
}

TEST(TypeQuestions, AreAlwaysAnsweredWithOne) {
  EXPECT_EQ(qor_isnum(std::nan("")), 1);
  EXPECT_EQ(qor_isstr(nullptr), 1);
}

TEST(System, NamesItselfAndItsHost) {
  EXPECT_EQ(take(qor_os_getos()), "MACOS");
  std::array<char, 256> name{};
  ASSERT_EQ(gethostname(name.data(), name.size() - 1), 0);
  EXPECT_EQ(take(qor_os_hostname()), name.data());
}

TEST(Features, AreNamedInAnyCase) {
  EXPECT_EQ(qor_os_feature("llvmc"), 1);
  EXPECT_EQ(qor_os_feature("LLVMC"), 1);
  EXPECT_EQ(qor_os_feature("NativeC"), 1);
}

TEST(Features, ThatAreNotThere) {
  EXPECT_EQ(qor_os_feature("INTERPRETER"), 0);
  EXPECT_EQ(qor_os_feature("NATIVEC "), 0);
  EXPECT_EQ(qor_os_feature(""), 0);
  EXPECT_EQ(qor_os_feature(nullptr), 0);
  EXPECT_EQ(qor_os_feature(std::string(100, 'X').c_str()), 0);
}

} // namespace
