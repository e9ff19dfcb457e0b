// Whole-array arithmetic, comparisons, mathematical functions, reductions and statistics.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <string>

#include "runtime/array_math.h"
#include "runtime/array_statistics.h"
#include "tests/runtime/values.h"
#include "tests/support/rounds.h"

namespace {

using kavo::test::Numbers;
using kavo::test::numbers;
using kavo::test::Rows;
using kavo::test::rows;
using kavo::test::Strings;
using kavo::test::strings;
using kavo::test::take_numbers;
using kavo::test::take_rows;
using kavo::test::take_strings;

constexpr double infinity = std::numeric_limits<double>::infinity();
const double nan = std::nan("");

Numbers op(const Numbers& a, const Numbers& b, int64_t code) {
  return take_numbers(qor_array_binop(numbers(a).get(), numbers(b).get(), code));
}

TEST(Binop, AddsSubtractsAndMultiplies) {
  EXPECT_EQ(op({1, 2}, {10, 20}, QOR_OP_ADD), (Numbers{11, 22}));
  EXPECT_EQ(op({1, 2}, {10, 20}, QOR_OP_SUBTRACT), (Numbers{-9, -18}));
  EXPECT_EQ(op({1, 2}, {10, 20}, QOR_OP_MULTIPLY), (Numbers{10, 40}));
}

TEST(Binop, DividingByZeroGivesZero) {
  EXPECT_EQ(op({6, 7}, {0, 2}, QOR_OP_DIVIDE), (Numbers{0, 3.5}));
  EXPECT_EQ(op({6, nan}, {-0.0, 0}, QOR_OP_DIVIDE), (Numbers{0, 0}));
}

TEST(Binop, WorksOnTheBitsOfIntegers) {
  EXPECT_EQ(op({6.9, -1}, {3, 255}, QOR_OP_AND), (Numbers{2, 255}));
  EXPECT_EQ(op({6, 1}, {3, 8}, QOR_OP_OR), (Numbers{7, 9}));
  EXPECT_EQ(op({6, 1}, {3, 1}, QOR_OP_XOR), (Numbers{5, 0}));
}

TEST(Binop, ShiftsModulo64) {
  EXPECT_EQ(op({1, 1, 3}, {4, 64, -63}, QOR_OP_SHIFT_LEFT), (Numbers{16, 1, 6}));
  EXPECT_EQ(op({-8, 16, 5}, {1, 66, 0}, QOR_OP_SHIFT_RIGHT), (Numbers{-4, 4, 5}));
}

TEST(Binop, RemainderOfMinusOneIsZeroForEveryElement) {
  EXPECT_EQ(op({7, -7, -9.3e18, 0}, {-1, -1, -1, -1}, QOR_OP_REMAINDER), (Numbers{0, 0, 0, 0}));
}

TEST(Binop, RemainderHasTheSignOfTheDividend) {
  EXPECT_EQ(op({7, -7, 7, 5}, {3, 3, -3, 0}, QOR_OP_REMAINDER), (Numbers{1, -1, 1, 0}));
}

TEST(Binop, RaisesToPowers) {
  EXPECT_EQ(op({2, 9, 2}, {10, 0.5, -1}, QOR_OP_POWER), (Numbers{1024, 3, 0.5}));
}

TEST(Binop, AnUnknownCodeGivesZero) {
  EXPECT_EQ(op({1, 2}, {3, 4}, 11), (Numbers{0, 0}));
  EXPECT_EQ(op({1, 2}, {3, 4}, -1), (Numbers{0, 0}));
}

TEST(Binop, HasTheShorterLengthAndNoFlags) {
  EXPECT_EQ(op({1, 2, 3}, {1}, QOR_OP_ADD), Numbers{2});
  EXPECT_EQ(take_numbers(qor_array_binop(nullptr, numbers({1}).get(), QOR_OP_ADD)), Numbers{});
  auto bools = numbers({1, 0});
  qor_array_set_bool_elems(bools.get());
  EXPECT_EQ(kavo::test::own(qor_array_binop(bools.get(), bools.get(), QOR_OP_ADD))->flags, 0U);
}

TEST(Binop, ConcatenatesStrings) {
  const auto a = strings({"a", "b", "c"});
  const auto b = strings({"x", "y"});
  EXPECT_EQ(take_strings(qor_array_binop(a.get(), b.get(), QOR_OP_ADD)), (Strings{"ax", "by"}));
  EXPECT_EQ(take_strings(qor_array_binop(a.get(), b.get(), QOR_OP_MULTIPLY)), (Strings{"", ""}));
  const auto result = kavo::test::own_deep(qor_array_binop(a.get(), b.get(), QOR_OP_ADD));
  EXPECT_EQ(result->flags, QOR_FLAG_NESTED | QOR_FLAG_STRINGS);
}

TEST(Binop, TakesAStringBesideANumberAsZero) {
  EXPECT_EQ(
      take_numbers(qor_array_binop(strings({"5", "6"}).get(), numbers({1, 2}).get(), QOR_OP_ADD)),
      (Numbers{1, 2}));
}

TEST(Binop, GoesThroughRows) {
  const auto a = rows({{1, 2}, {3}});
  const auto b = rows({{10, 20}, {30}});
  EXPECT_EQ(take_rows(qor_array_binop(a.get(), b.get(), QOR_OP_ADD)), (Rows{{11, 22}, {33}}));
  EXPECT_EQ(kavo::test::own_deep(qor_array_binop(a.get(), b.get(), QOR_OP_ADD))->flags,
            QOR_FLAG_NESTED);
}

TEST(Binop, TakesANumberBesideARowAsARowOfIt) {
  const auto a = rows({{1, 2}, {3}});
  const auto b = numbers({10, 20});
  EXPECT_EQ(take_rows(qor_array_binop(a.get(), b.get(), QOR_OP_SUBTRACT)), (Rows{{-9, -8}, {-17}}));
  EXPECT_EQ(take_rows(qor_array_binop(b.get(), a.get(), QOR_OP_SUBTRACT)), (Rows{{9, 8}, {17}}));
}

TEST(ScalarOp, KeepsTheOrderOfTheOperands) {
  const auto a = numbers({1, 4});
  EXPECT_EQ(take_numbers(qor_array_scalar_op(a.get(), 2, QOR_OP_SUBTRACT, 0)), (Numbers{-1, 2}));
  EXPECT_EQ(take_numbers(qor_array_scalar_op(a.get(), 2, QOR_OP_SUBTRACT, 1)), (Numbers{1, -2}));
  EXPECT_EQ(take_numbers(qor_array_scalar_op(a.get(), 2, QOR_OP_DIVIDE, 1)), (Numbers{2, 0.5}));
  EXPECT_EQ(take_numbers(qor_array_scalar_op(a.get(), 2, QOR_OP_SHIFT_LEFT, 1)), (Numbers{4, 32}));
  EXPECT_EQ(take_numbers(qor_array_scalar_op(a.get(), 3, QOR_OP_REMAINDER, 1)), (Numbers{0, 3}));
  EXPECT_EQ(take_numbers(qor_array_scalar_op(a.get(), 2, QOR_OP_POWER, 1)), (Numbers{2, 16}));
  EXPECT_EQ(take_numbers(qor_array_scalar_op(nullptr, 2, QOR_OP_ADD, 0)), Numbers{});
}

TEST(ScalarOp, GoesThroughRows) {
  EXPECT_EQ(take_rows(qor_array_scalar_op(rows({{1}, {2, 3}}).get(), 10, QOR_OP_SUBTRACT, 1)),
            (Rows{{9}, {8, 7}}));
}

TEST(Comparison, HasEightCodes) {
  const std::array<Numbers, 9> expected{{{0, 1, 0, 0},
                                         {1, 0, 1, 1},
                                         {0, 1, 1, 0},
                                         {1, 1, 1, 1},
                                         {1, 0, 0, 0},
                                         {1, 1, 0, 0},
                                         {0, 0, 1, 0},
                                         {0, 1, 1, 0},
                                         {0, 0, 0, 0}}};
  const auto a = numbers({0, 2, 3, nan});
  for (size_t code = 0; code < expected.size(); ++code) {
    auto want = expected[code];
    if (code == QOR_CMP_BOTH)
      want[3] = 1; // NaN is not zero
    EXPECT_EQ(take_numbers(qor_array_cmp_scalar(a.get(), 2, static_cast<int64_t>(code))), want)
        << code;
  }
}

TEST(Comparison, OfArraysHasTheShorterLength) {
  EXPECT_EQ(take_numbers(
                qor_array_cmp_arr(numbers({1, 2, 3}).get(), numbers({2, 2}).get(), QOR_CMP_LESS)),
            (Numbers{1, 0}));
  EXPECT_EQ(take_rows(qor_array_cmp_arr(rows({{1, 2}}).get(), rows({{1, 3}}).get(), QOR_CMP_EQUAL)),
            (Rows{{1, 0}}));
}

kavo::test::DeepArray rows_of_strings(const std::vector<Strings>& texts) {
  auto array = kavo::test::own_deep(qor_array_new(std::ssize(texts)));
  qor_array_set_nested(array.get());
  for (size_t i = 0; i < texts.size(); ++i)
    qor_array_set(array.get(), static_cast<int64_t>(i),
                  qor_slot_of(strings(texts[i]).release()).f64);
  return array;
}

std::vector<Strings> to_rows_of_strings(const QorArray* array) {
  std::vector<Strings> texts;
  for (int64_t i = 0; i < qor_array_len(array); ++i)
    texts.push_back(kavo::test::to_strings(static_cast<QorArray*>(qor_array_get_ptr(array, i))));
  return texts;
}

TEST(Binop, ConcatenatesStringsRowByRow) {
  const auto a = rows_of_strings({{"a", "b"}, {"c"}, {}});
  const auto b = rows_of_strings({{"x", "y", "z"}, {"w"}});
  const auto joined = kavo::test::own_deep(qor_array_binop(a.get(), b.get(), QOR_OP_ADD));
  EXPECT_EQ(to_rows_of_strings(joined.get()), (std::vector<Strings>{{"ax", "by"}, {"cw"}}));
  EXPECT_EQ(joined->flags, uint32_t{QOR_FLAG_NESTED});
  EXPECT_EQ(static_cast<QorArray*>(qor_array_get_ptr(joined.get(), 0))->flags,
            QOR_FLAG_NESTED | QOR_FLAG_STRINGS);
  const auto others = kavo::test::own_deep(qor_array_binop(a.get(), b.get(), QOR_OP_DIVIDE));
  EXPECT_EQ(to_rows_of_strings(others.get()), (std::vector<Strings>{{"", ""}, {""}}));
}

TEST(Comparison, OfStringsGoesIntoRows) {
  const auto a = rows_of_strings({{"a", "b"}, {"c"}});
  const auto b = rows_of_strings({{"a", "c"}, {"b"}});
  EXPECT_EQ(kavo::test::take_rows(qor_array_cmp_arr(a.get(), b.get(), QOR_CMP_LESS)),
            (kavo::test::Rows{{0, 1}, {0}}));
}

TEST(Comparison, OfStringsIsByBytes) {
  const auto a = strings({"a", "b", "", "b"});
  EXPECT_EQ(take_numbers(qor_array_cmp_scalar_str(a.get(), "b", QOR_CMP_EQUAL)),
            (Numbers{0, 1, 0, 1}));
  EXPECT_EQ(take_numbers(qor_array_cmp_scalar_str(a.get(), "b", QOR_CMP_LESS)),
            (Numbers{1, 0, 1, 0}));
  EXPECT_EQ(take_numbers(qor_array_cmp_scalar_str(a.get(), "b", QOR_CMP_BOTH)),
            (Numbers{1, 1, 0, 1}));
  EXPECT_EQ(take_numbers(qor_array_cmp_scalar_str(a.get(), nullptr, QOR_CMP_EQUAL)),
            (Numbers{0, 0, 1, 0}));
  EXPECT_EQ(take_numbers(qor_array_cmp_scalar_str(numbers({1}).get(), "b", QOR_CMP_NOT_EQUAL)),
            Numbers{0});
  EXPECT_EQ(take_numbers(qor_array_cmp_arr(a.get(), strings({"b", "b"}).get(), QOR_CMP_LESS)),
            (Numbers{1, 0}));
}

TEST(ElementFunctions, AreThePlatformsForEveryElement) {
  struct Pair {
    QorArray* (*array)(const QorArray*);
    double (*number)(double);
  };
  const std::array<Pair, 18> pairs{{{qor_array_sin, std::sin},
                                    {qor_array_cos, std::cos},
                                    {qor_array_tan, std::tan},
                                    {qor_array_asin, std::asin},
                                    {qor_array_acos, std::acos},
                                    {qor_array_atan, std::atan},
                                    {qor_array_sinh, std::sinh},
                                    {qor_array_cosh, std::cosh},
                                    {qor_array_tanh, std::tanh},
                                    {qor_array_exp, std::exp},
                                    {qor_array_log, std::log},
                                    {qor_array_log10, std::log10},
                                    {qor_array_sqr, std::sqrt},
                                    {qor_array_abs, std::fabs},
                                    {qor_array_floor, std::floor},
                                    {qor_array_ceil, std::ceil},
                                    {qor_array_round, std::round},
                                    {qor_array_trunc, std::trunc}}};
  const Numbers inputs{-2.5, -0.5, 0, 0.3, 1, 2.5, 1e10, infinity};
  for (const auto& pair : pairs) {
    const auto results = take_numbers(pair.array(numbers(inputs).get()));
    ASSERT_EQ(results.size(), inputs.size());
    for (size_t i = 0; i < inputs.size(); ++i) {
      const double expected = pair.number(inputs[i]);
      EXPECT_TRUE(results[i] == expected || (std::isnan(results[i]) && std::isnan(expected)));
    }
    EXPECT_EQ(take_rows(pair.array(rows({{1}, {1, 1}}).get())),
              (Rows{{pair.number(1)}, {pair.number(1), pair.number(1)}}));
    EXPECT_EQ(take_numbers(pair.array(nullptr)), Numbers{});
  }
}

TEST(Reductions, SumAndMultiply) {
  EXPECT_EQ(qor_array_sum(numbers({1, 2, 3.5}).get()), 6.5);
  EXPECT_EQ(qor_array_product(numbers({2, 3, 4}).get()), 24);
  EXPECT_EQ(qor_array_dot(numbers({1, 2, 3}).get(), numbers({10, 20}).get()), 50);
}

TEST(Reductions, OfNothing) {
  EXPECT_EQ(qor_array_sum(nullptr), 0.0);
  EXPECT_EQ(qor_array_product(nullptr), 1.0);
  EXPECT_EQ(qor_array_dot(nullptr, numbers({1}).get()), 0.0);
  EXPECT_EQ(qor_array_any(nullptr), 0);
  EXPECT_EQ(qor_array_all(nullptr), 1);
  EXPECT_EQ(qor_array_count(nullptr), 0);
}

TEST(Reductions, GoThroughRowsAndSkipStrings) {
  EXPECT_EQ(qor_array_sum(rows({{1, 2}, {}, {3}}).get()), 6);
  EXPECT_EQ(qor_array_product(rows({{1, 2}, {3}}).get()), 6);
  EXPECT_EQ(qor_array_dot(rows({{1, 2}, {3}}).get(), rows({{1, 1}, {2}}).get()), 9);
  EXPECT_EQ(qor_array_count(rows({{1, 0}, {3}}).get()), 2);
  EXPECT_EQ(qor_array_sum(strings({"1"}).get()), 0);
}

TEST(Reductions, AskWhatIsNotZero) {
  EXPECT_EQ(qor_array_any(numbers({0, 0.5}).get()), 1);
  EXPECT_EQ(qor_array_any(numbers({0, -0.0}).get()), 0);
  EXPECT_EQ(qor_array_all(numbers({1, nan}).get()), 1);
  EXPECT_EQ(qor_array_all(numbers({1, 0}).get()), 0);
  EXPECT_EQ(qor_array_count(numbers({1, 0, nan}).get()), 2);
}

TEST(Reductions, OfLongArraysAreExactForIntegers) {
  for (const int64_t length : {63, 64, 65, 1000, 1001}) {
    Numbers values(static_cast<size_t>(length));
    std::iota(values.begin(), values.end(), 1.0);
    const auto array = numbers(values);
    EXPECT_EQ(qor_array_sum(array.get()), static_cast<double>(length * (length + 1) / 2));
    EXPECT_EQ(qor_array_dot(array.get(), kavo::test::own(qor_ones(length)).get()),
              qor_array_sum(array.get()));
  }
}

TEST(Statistics, StandardDeviationIsThePopulations) {
  EXPECT_EQ(qor_stdev(numbers({2, 4}).get()), 1.0);
  EXPECT_EQ(qor_array_variance(numbers({2, 4, 4, 4, 5, 5, 7, 9}).get()), 4.0);
}

TEST(Statistics, OfFewElementsIsZero) {
  for (const auto& values : {Numbers{}, Numbers{7}}) {
    EXPECT_EQ(qor_stdev(numbers(values).get()), 0.0);
    EXPECT_EQ(qor_array_variance(numbers(values).get()), 0.0);
  }
  EXPECT_EQ(qor_mean(nullptr), 0.0);
  EXPECT_EQ(qor_array_median(nullptr), 0.0);
  EXPECT_EQ(qor_stdev(nullptr), 0.0);
}

TEST(Statistics, TheMedianOfAnEvenNumberIsTheMeanOfTheTwoMiddleOnes) {
  EXPECT_EQ(qor_array_median(numbers({3, 1, 2, 4}).get()), 2.5);
}

TEST(Statistics, MeanAndMedian) {
  EXPECT_EQ(qor_mean(numbers({1, 2, 6}).get()), 3.0);
  EXPECT_EQ(qor_array_median(numbers({3, 1, 2}).get()), 2.0);
  EXPECT_EQ(qor_array_median(rows({{3, 1}, {2}}).get()), 2.0);
  EXPECT_EQ(qor_mean(rows({{3, 1}, {2}}).get()), 2.0);
}

TEST(RunningTotals, AddAndMultiplyUp) {
  EXPECT_EQ(take_numbers(qor_array_cumsum(numbers({1, 2, 3}).get())), (Numbers{1, 3, 6}));
  EXPECT_EQ(take_numbers(qor_array_cumprod(numbers({2, 3, 4}).get())), (Numbers{2, 6, 24}));
  EXPECT_EQ(take_numbers(qor_array_cumsum(nullptr)), Numbers{});
  EXPECT_EQ(take_rows(qor_array_cumsum(rows({{1, 2}, {3, 4}}).get())), (Rows{{1, 3}, {3, 7}}));
}

TEST(ArithmeticProperty, AgreesWithOneElementAtATime) {
  std::mt19937 random(1); // the same numbers every time
  for (int round = kavo::test::rounds(200); round > 0; --round) {
    Numbers a(random() % 40);
    Numbers b(a.size());
    for (size_t i = 0; i < a.size(); ++i) {
      a[i] = static_cast<double>(random() % 41) - 20;
      b[i] = static_cast<double>(random() % 9) - 4;
    }
    for (int64_t code = 0; code <= 11; ++code) {
      const auto together = op(a, b, code);
      for (size_t i = 0; i < a.size(); ++i) {
        const auto alone = op({a[i]}, {b[i]}, code)[0];
        const auto by_scalar =
            take_numbers(qor_array_scalar_op(numbers({b[i]}).get(), a[i], code, 1))[0];
        ASSERT_TRUE(together[i] == alone || std::isnan(alone)) << code;
        ASSERT_TRUE(together[i] == by_scalar || std::isnan(alone)) << code;
      }
    }
  }
}

} // namespace
