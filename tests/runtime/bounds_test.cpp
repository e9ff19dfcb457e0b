// The ends of every range: the smallest and largest counts, positions, amounts and numbers, where
// a careless sign or sum overflows.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "runtime/qor.h"
#include "tests/runtime/values.h"

namespace {

using kavo::test::Numbers;
using kavo::test::numbers;
using kavo::test::Strings;
using kavo::test::take;
using kavo::test::take_numbers;

constexpr int64_t lowest = INT64_MIN;
constexpr int64_t highest = INT64_MAX;
constexpr double infinity = std::numeric_limits<double>::infinity();

class Bounds : public testing::Test {
protected:
  void SetUp() override { qor_err_clear(); }
  void TearDown() override { qor_err_clear(); }
};

TEST_F(Bounds, OfIndexes) {
  const auto array = numbers({1, 2, 3});
  const auto words = kavo::test::strings({"a"});
  for (const int64_t index : {lowest, int64_t{-1}, int64_t{3}, highest}) {
    qor_array_set(array.get(), index, 9);
    EXPECT_EQ(qor_array_get(array.get(), index), 0.0);
    EXPECT_EQ(qor_array_get_ptr(words.get(), index), nullptr);
    EXPECT_STREQ(qor_array_get_str(words.get(), index), "");
    EXPECT_EQ(qor_array_get_tagged(array.get(), index, nullptr), 0.0);
  }
  EXPECT_EQ(kavo::test::to_vector(array.get()), (Numbers{1, 2, 3}));
  EXPECT_EQ(take_numbers(qor_array_gather(
                array.get(), numbers({-infinity, -1, -0.9, 2.9, 3, infinity, NAN}).get())),
            (Numbers{0, 0, 1, 3, 0, 0, 1}));
}

TEST_F(Bounds, OfLengths) {
  for (const int64_t length : {lowest, int64_t{-1}, int64_t{0}}) {
    EXPECT_EQ(take_numbers(qor_array_new(length)), Numbers{});
    EXPECT_EQ(take_numbers(qor_zeros(length)), Numbers{});
    EXPECT_EQ(take_numbers(qor_ones(length)), Numbers{});
    EXPECT_EQ(take_numbers(qor_iota(length)), Numbers{});
    EXPECT_EQ(take_numbers(qor_iota3(length, 1, 1)), Numbers{});
    EXPECT_EQ(take_numbers(qor_linspace(0, 1, length)), Numbers{});
    EXPECT_EQ(take(qor_space(length)), "");
    EXPECT_EQ(take(qor_str_repeat("a", length)), "");
    EXPECT_EQ(take(qor_lpad("a", length, "b")), "a");
    EXPECT_EQ(take(qor_rpad("a", length, "b")), "a");
    EXPECT_EQ(take(qor_lpad2("a", length)), "a");
    EXPECT_EQ(take(qor_rpad2("a", length)), "a");
  }
}

TEST_F(Bounds, OfWhatIsTakenAndDropped) {
  const auto array = numbers({1, 2, 3});
  const Numbers all{1, 2, 3};
  for (const int64_t n : {lowest, int64_t{-3}, int64_t{3}, highest}) {
    EXPECT_EQ(take_numbers(qor_array_take(array.get(), n)), all) << n;
    EXPECT_EQ(take_numbers(qor_array_drop(array.get(), n)), Numbers{}) << n;
    EXPECT_EQ(take_numbers(qor_take_n(array.get(), n)), n < 0 ? Numbers{} : all) << n;
    EXPECT_EQ(take_numbers(qor_drop_n(array.get(), n)), n < 0 ? all : Numbers{}) << n;
  }
}

TEST_F(Bounds, OfOperationCodes) {
  const auto ends = numbers({-infinity, -1e300, -1, 0, 1, 1e300, infinity, NAN});
  for (const int64_t code : {lowest, int64_t{-1}, int64_t{11}, highest}) {
    EXPECT_EQ(take_numbers(qor_array_binop(ends.get(), ends.get(), code)), Numbers(8, 0.0));
    EXPECT_EQ(take_numbers(qor_array_scalar_op(ends.get(), 1, code, 1)), Numbers(8, 0.0));
    EXPECT_EQ(take_numbers(qor_array_cmp_scalar(ends.get(), 1, code)), Numbers(8, 0.0));
    EXPECT_EQ(take_numbers(qor_array_cmp_arr(ends.get(), ends.get(), code)), Numbers(8, 0.0));
  }
}

TEST_F(Bounds, OfIntegerOperations) {
  const auto low = numbers({-infinity});
  const auto high = numbers({infinity});
  const auto result = [&](const QorArray* a, const QorArray* b, int64_t code) {
    return take_numbers(qor_array_binop(a, b, code)).front();
  };
  EXPECT_EQ(result(low.get(), numbers({-1}).get(), QOR_OP_REMAINDER), 0.0);
  EXPECT_EQ(result(low.get(), numbers({NAN}).get(), QOR_OP_REMAINDER), 0.0);
  EXPECT_EQ(result(low.get(), high.get(), QOR_OP_AND), 0.0);
  EXPECT_EQ(result(low.get(), high.get(), QOR_OP_OR), -1.0);
  EXPECT_EQ(result(low.get(), high.get(), QOR_OP_XOR), -1.0);
  EXPECT_EQ(result(low.get(), numbers({63}).get(), QOR_OP_SHIFT_RIGHT), -1.0);
  EXPECT_EQ(result(low.get(), numbers({1}).get(), QOR_OP_SHIFT_LEFT), 0.0);
  EXPECT_EQ(result(numbers({1}).get(), low.get(), QOR_OP_SHIFT_LEFT), 1.0) << "a multiple of 64";
  EXPECT_EQ(result(numbers({1}).get(), high.get(), QOR_OP_SHIFT_LEFT), -9223372036854775808.0);
}

TEST_F(Bounds, OfCuts) {
  for (const int64_t n : {lowest, int64_t{-1}, int64_t{3}, highest}) {
    EXPECT_EQ(take(qor_mid("abc", 0, n)), "abc") << n;
    EXPECT_EQ(take(qor_mid_lax("abc", 1, n)), "bc") << n;
    EXPECT_EQ(take(qor_left("abc", n)), "abc") << n;
    EXPECT_EQ(take(qor_str_slice("abc", n, 1)), n < 0 ? "" : "abc") << n;
    EXPECT_EQ(take(qor_str_slice("abc", n, 0)), n < 0 ? "" : "abc") << n;
    EXPECT_EQ(take(qor_mid_lax("abc", n, 2)), n < 0 ? "ab" : "") << n;
    EXPECT_EQ(take(qor_insert_str("abc", "-", n)), n < 0 ? "-abc" : "abc-") << n;
  }
  EXPECT_EQ(qor_err_code(), 0);
  for (const int64_t start : {lowest, int64_t{-1}, int64_t{4}, highest}) {
    qor_err_clear();
    EXPECT_EQ(take(qor_mid("abc", start, highest)), "");
    EXPECT_EQ(qor_err_code(), 1) << start;
  }
  qor_err_clear();
  EXPECT_EQ(take(qor_right("abc", highest)), "abc");
  EXPECT_EQ(qor_err_code(), 0);
  EXPECT_EQ(take(qor_right("abc", lowest)), "");
  EXPECT_EQ(qor_err_code(), 1);
}

TEST_F(Bounds, OfNumbersAsText) {
  EXPECT_EQ(take(qor_int_to_str(lowest)), "-9223372036854775808");
  EXPECT_EQ(take(qor_int_to_str(highest)), "9223372036854775807");
  EXPECT_EQ(take(qor_double_to_str(infinity)), "inf");
  EXPECT_EQ(take(qor_double_to_str(-infinity)), "-inf");
  EXPECT_EQ(take(qor_double_to_str(5e-324)), "4.94066e-324");
  EXPECT_EQ(take(qor_str(-5e-324)), "-0");
  EXPECT_EQ(take(qor_str(999999.9999996)), "1000000");
  EXPECT_EQ(take(qor_hex(UINT64_MAX)), "FFFFFFFFFFFFFFFF");
  EXPECT_EQ(take(qor_oct(UINT64_MAX)), "1777777777777777777777");
  EXPECT_EQ(take(qor_bin(UINT64_MAX)), std::string(64, '1'));
  qor_setlocale("de");
  EXPECT_EQ(take(qor_int_to_str(lowest)), "-9.223.372.036.854.775.808");
  qor_setlocale(nullptr);
}

TEST_F(Bounds, OfPlaceholders) {
  const qor_slot low{.i64 = lowest};
  EXPECT_EQ(take(qor_format1("{d}", infinity)), "9223372036854775807");
  EXPECT_EQ(take(qor_format1("{d}", -infinity)), "-9223372036854775808");
  EXPECT_EQ(take(qor_format1("{d}", NAN)), "0");
  EXPECT_EQ(take(qor_format1("{x}", -infinity)), "8000000000000000");
  EXPECT_EQ(take(qor_format1_t("{}", "i", low)), "-9.22337e+18");
  EXPECT_EQ(take(qor_format1("{99999999999999999999}", 1)).size(), 255U);
  EXPECT_EQ(take(qor_format1("{.99999999999999999999}", 1)).size(), 255U);
}

TEST_F(Bounds, OfWholeNumberHelpers) {
  EXPECT_EQ(qor_int(infinity), highest);
  EXPECT_EQ(qor_int(-infinity), lowest);
  EXPECT_EQ(qor_cint(-infinity), INT32_MIN);
  EXPECT_EQ(qor_gcd(lowest, 0), highest) << "2^63 is above the range";
  EXPECT_EQ(qor_gcd(lowest, highest), 1);
  EXPECT_EQ(qor_lcm(lowest, highest), highest);
  EXPECT_EQ(qor_lcm(lowest, 0), 0);
  for (const int64_t count : {lowest, int64_t{0}, int64_t{-64}}) {
    EXPECT_EQ(qor_rotl(1, count), 1U) << count;
    EXPECT_EQ(qor_rotr(1, count), 1U) << count;
    EXPECT_EQ(qor_rotl2(1, count), 1U) << count;
    EXPECT_EQ(qor_rotr2(1, count), 1U) << count;
  }
  EXPECT_EQ(qor_rotl(1, highest), uint64_t{1} << 63);
  EXPECT_EQ(qor_rotr(1, highest), 2U);
  for (const int64_t places : {lowest, int64_t{-400}, int64_t{400}, highest})
    EXPECT_EQ(qor_round_p(1234.5, places), places < 0 ? 0.0 : 1234.5) << places;
}

TEST_F(Bounds, OfRandomSeeds) {
  qor_randomseed(lowest);
  const double drawn = qor_rnd();
  qor_randomseed(0);
  EXPECT_EQ(qor_rnd(), drawn) << "the low 32 bits count";
}

TEST_F(Bounds, OfDepths) {
  qor_recursion_reset_to(lowest);
  EXPECT_EQ(qor_recursion_depth(), 0);
  qor_recursion_reset_to(highest);
  EXPECT_EQ(qor_recursion_enter(), 1);
  EXPECT_EQ(qor_recursion_depth(), highest);
  qor_recursion_reset_to(0);
}

TEST_F(Bounds, OfTags) {
  for (const uint32_t tag : {7U, 8U, 255U, 256U, UINT32_MAX})
    EXPECT_EQ(take(qor_typeof_tag(tag)), "UNKNOWN") << tag;
}

TEST_F(Bounds, OfFolding) {
  const auto add = [](double a, double b) { return a + b; };
  EXPECT_EQ(qor_reduce_fn(add, numbers({5}).get()), 5.0);
  EXPECT_EQ(qor_agg_fn(add, numbers({}).get(), infinity), infinity);
  EXPECT_EQ(qor_array_sum(numbers({infinity, 1}).get()), infinity);
  EXPECT_TRUE(std::isnan(qor_array_sum(numbers({infinity, -infinity}).get())));
  EXPECT_EQ(qor_array_min(numbers({NAN, infinity}).get()), infinity);
  EXPECT_EQ(qor_array_max(numbers({-infinity, NAN}).get()), -infinity);
}

} // namespace
