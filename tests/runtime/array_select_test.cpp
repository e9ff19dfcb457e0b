// Generators, order, selection, and functions applied to arrays.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

#include "runtime/array_functions.h"
#include "runtime/array_order.h"
#include "runtime/array_select.h"
#include "runtime/numbers_text.h"
#include "runtime/system.h"
#include "tests/runtime/values.h"

namespace {

using kavo::test::Numbers;
using kavo::test::numbers;
using kavo::test::own;
using kavo::test::Rows;
using kavo::test::rows;
using kavo::test::Strings;
using kavo::test::strings;
using kavo::test::take_numbers;
using kavo::test::take_rows;
using kavo::test::take_strings;

const double nan = std::nan("");

TEST(Generators, CountFromOne) {
  EXPECT_EQ(take_numbers(qor_iota(3)), (Numbers{1, 2, 3}));
  EXPECT_EQ(take_numbers(qor_iota(0)), Numbers{});
  EXPECT_EQ(take_numbers(qor_iota(-1)), Numbers{});
}

TEST(Generators, CountInSteps) {
  EXPECT_EQ(take_numbers(qor_iota3(3, 10, -2.5)), (Numbers{10, 7.5, 5}));
  EXPECT_EQ(take_numbers(qor_iota3(0, 10, 1)), Numbers{});
}

TEST(Generators, DivideADistance) {
  EXPECT_EQ(take_numbers(qor_linspace(0, 1, 5)), (Numbers{0, 0.25, 0.5, 0.75, 1}));
  EXPECT_EQ(take_numbers(qor_linspace(3, 9, 1)), Numbers{3});
  EXPECT_EQ(take_numbers(qor_linspace(3, 9, 0)), Numbers{});
}

TEST(Generators, RangesIncludeTheirEnd) {
  EXPECT_EQ(take_numbers(qor_range(1, 4, 1)), (Numbers{1, 2, 3, 4}));
  EXPECT_EQ(take_numbers(qor_range(1, 4.5, 2)), (Numbers{1, 3}));
  EXPECT_EQ(take_numbers(qor_range(4, 1, -1)), (Numbers{4, 3, 2, 1}));
  EXPECT_EQ(take_numbers(qor_range(2, 2, 1)), Numbers{2});
  EXPECT_EQ(take_numbers(qor_range(0, 0.3, 0.1)).size(), 4U);
}

TEST(Generators, RangesThatLeadAwayAreEmpty) {
  EXPECT_EQ(take_numbers(qor_range(1, 4, -1)), Numbers{});
  EXPECT_EQ(take_numbers(qor_range(1, 4, 0)), Numbers{});
  EXPECT_EQ(take_numbers(qor_range(1, 1, 0)), Numbers{});
  EXPECT_EQ(take_numbers(qor_range(1, nan, 1)), Numbers{});
}

TEST(Grade, KeepsTheOrderOfEqualValues) {
  EXPECT_EQ(take_numbers(qor_grade(numbers({5, 1, 5, 0}).get())), (Numbers{3, 1, 0, 2}));
  EXPECT_EQ(take_numbers(qor_grade(nullptr)), Numbers{});
}

TEST(Sort, IsAscendingAndKeepsFlags) {
  auto array = numbers({3, -1, 2});
  qor_array_set_bool_elems(array.get());
  const auto sorted = own(qor_array_sort(array.get()));
  EXPECT_EQ(kavo::test::to_vector(sorted.get()), (Numbers{-1, 2, 3}));
  EXPECT_EQ(sorted->flags, QOR_FLAG_BOOLS);
  EXPECT_EQ(kavo::test::to_vector(array.get()), (Numbers{3, -1, 2}));
  EXPECT_EQ(take_numbers(qor_array_sort(nullptr)), Numbers{});
}

TEST(Sort, OrdersStringsByTheirBytes) {
  const auto array = strings({"b", "", "ab", "B", "a"});
  EXPECT_EQ(kavo::test::to_strings(own(qor_array_sort(array.get())).get()),
            (Strings{"", "B", "a", "ab", "b"}));
  EXPECT_EQ(take_numbers(qor_grade(array.get())), (Numbers{1, 3, 4, 2, 0}));
}

TEST(Sort, LeavesRowsAsTheyAre) {
  const auto array = rows({{2}, {1}});
  EXPECT_EQ(kavo::test::to_rows(own(qor_array_sort(array.get())).get()), (Rows{{2}, {1}}));
  EXPECT_EQ(take_numbers(qor_grade(array.get())), (Numbers{0, 1}));
}

// The definition: an element moves only past strictly greater ones.
Numbers insertion_sorted(Numbers values) {
  for (size_t i = 1; i < values.size(); ++i)
    for (size_t j = i; j > 0 && values[j - 1] > values[j]; --j)
      std::swap(values[j - 1], values[j]);
  return values;
}

// NaN and the sign of zero made visible.
std::vector<uint64_t> bits_of(const Numbers& values) {
  std::vector<uint64_t> bits;
  for (const double value : values)
    bits.push_back(std::bit_cast<uint64_t>(value));
  return bits;
}

TEST(SortProperty, IsWhatTheInsertionSortGives) {
  std::mt19937 random(1); // the same numbers every time
  for (int round = 0; round < 30; ++round) {
    Numbers values(random() % 6000);
    for (double& value : values) {
      const auto draw = random() % 2000;
      value = draw == 0 ? nan : static_cast<double>(draw % 50) - 25;
      if (draw == 1)
        value = -0.0;
    }
    const auto sorted = take_numbers(qor_array_sort(numbers(values).get()));
    ASSERT_EQ(bits_of(sorted), bits_of(insertion_sorted(values)));
    Numbers graded;
    for (const double index : take_numbers(qor_grade(numbers(values).get())))
      graded.push_back(values[static_cast<size_t>(index)]);
    ASSERT_EQ(bits_of(graded), bits_of(sorted));
  }
}

TEST(SortProperty, IsTheStandardLibrarysStableSortWithoutNaN) {
  std::mt19937_64 random(2); // the same numbers every time
  for (const size_t length : {0U, 1U, 2U, 2047U, 2048U, 4095U, 4096U, 20000U}) {
    Numbers values(length);
    for (double& value : values)
      do
        value = std::bit_cast<double>(random());
      while (std::isnan(value));
    auto expected = values;
    std::ranges::stable_sort(expected);
    ASSERT_EQ(take_numbers(qor_array_sort(numbers(values).get())), expected);
  }
}

TEST(Shuffle, IsFisherYatesFromTheEndWithRand) {
  Numbers expected{1, 2, 3, 4, 5, 6};
  std::srand(9);
  for (size_t i = expected.size() - 1; i >= 1; --i)
    std::swap(expected[i], expected[static_cast<size_t>(std::rand()) % (i + 1)]);
  qor_randomseed(9);
  EXPECT_EQ(take_numbers(qor_array_shuffle(own(qor_iota(6)).get())), expected);
  EXPECT_EQ(take_numbers(qor_array_shuffle(nullptr)), Numbers{});
}

TEST(TakeAndDrop, CountFromTheFront) {
  const auto array = numbers({1, 2, 3});
  EXPECT_EQ(take_numbers(qor_array_take(array.get(), 2)), (Numbers{1, 2}));
  EXPECT_EQ(take_numbers(qor_array_drop(array.get(), 2)), Numbers{3});
  EXPECT_EQ(take_numbers(qor_array_take(array.get(), 9)), (Numbers{1, 2, 3}));
  EXPECT_EQ(take_numbers(qor_array_drop(array.get(), 9)), Numbers{});
  EXPECT_EQ(take_numbers(qor_array_take(nullptr, 2)), Numbers{});
}

TEST(TakeAndDrop, CountFromTheEndWhenNegative) {
  const auto array = numbers({1, 2, 3});
  EXPECT_EQ(take_numbers(qor_array_take(array.get(), -2)), (Numbers{2, 3}));
  EXPECT_EQ(take_numbers(qor_array_drop(array.get(), -2)), Numbers{1});
  EXPECT_EQ(take_numbers(qor_array_take(array.get(), INT64_MIN)), (Numbers{1, 2, 3}));
  EXPECT_EQ(take_numbers(qor_array_drop(array.get(), INT64_MIN)), Numbers{});
}

TEST(TakeAndDrop, WithNTakeNegativeAsZero) {
  const auto array = numbers({1, 2, 3});
  EXPECT_EQ(take_numbers(qor_take_n(array.get(), 1)), Numbers{1});
  EXPECT_EQ(take_numbers(qor_take_n(array.get(), -1)), Numbers{});
  EXPECT_EQ(take_numbers(qor_drop_n(array.get(), 1)), (Numbers{2, 3}));
  EXPECT_EQ(take_numbers(qor_drop_n(array.get(), -1)), (Numbers{1, 2, 3}));
}

TEST(Sets, DifferenceKeepsOrderAndRepetitions) {
  EXPECT_EQ(take_numbers(qor_array_diff(numbers({3, 1, 3, 2}).get(), numbers({1, 9}).get())),
            (Numbers{3, 3, 2}));
  const auto names = strings({"a", "b"});
  EXPECT_EQ(kavo::test::to_strings(own(qor_array_diff(names.get(), strings({"b"}).get())).get()),
            Strings{"a"});
  EXPECT_EQ(take_numbers(qor_array_diff(numbers({1}).get(), nullptr)), Numbers{1});
  EXPECT_EQ(take_numbers(qor_array_diff(numbers({1}).get(), names.get())), Numbers{1});
}

TEST(Sets, UniqueKeepsTheFirstOfEach) {
  EXPECT_EQ(take_numbers(qor_array_unique(numbers({2, 1, 2, 0, -0.0}).get())), (Numbers{2, 1, 0}));
  EXPECT_EQ(take_numbers(qor_array_unique(numbers({nan, 1, -nan}).get())).size(), 2U);
  const auto names = strings({"b", "a", "b"});
  EXPECT_EQ(kavo::test::to_strings(own(qor_array_unique_str(names.get())).get()),
            (Strings{"b", "a"}));
  EXPECT_EQ(kavo::test::to_strings(own(qor_array_unique(names.get())).get()), (Strings{"b", "a"}));
  EXPECT_EQ(take_numbers(qor_array_unique_str(numbers({1}).get())), Numbers{});
}

TEST(Searching, FindsNumbersAndStrings) {
  const auto array = numbers({5, nan, 5, -0.0});
  EXPECT_EQ(qor_array_indexof(array.get(), 5), 0);
  EXPECT_EQ(qor_array_indexof(array.get(), nan), 1);
  EXPECT_EQ(qor_array_indexof(array.get(), 0), 3);
  EXPECT_EQ(qor_array_indexof(array.get(), 6), -1);
  EXPECT_EQ(qor_array_indexof(nullptr, 6), -1);
  EXPECT_EQ(qor_array_indexof(strings({"5"}).get(), 5), -1);
  EXPECT_EQ(qor_array_has_num(array.get(), 5), 1);
  EXPECT_EQ(qor_array_has_num(array.get(), 6), 0);
  EXPECT_EQ(qor_array_has_str(strings({"a", ""}).get(), "a"), 1);
  EXPECT_EQ(qor_array_has_str(strings({"a", ""}).get(), nullptr), 1);
  EXPECT_EQ(qor_array_has_str(strings({"a"}).get(), "b"), 0);
  EXPECT_EQ(qor_array_has_str(array.get(), "5"), 0);
}

TEST(Flatten, PutsAllRowsInOne) {
  EXPECT_EQ(take_numbers(qor_array_flatten(rows({{1, 2}, {}, {3}}).get())), (Numbers{1, 2, 3}));
  EXPECT_EQ(take_numbers(qor_array_flatten(numbers({1, 2}).get())), (Numbers{1, 2}));
  EXPECT_EQ(take_numbers(qor_array_flatten(nullptr)), Numbers{});
  auto nested = kavo::test::own_deep(qor_array_new(1));
  qor_array_set_nested(nested.get());
  qor_array_set(nested.get(), 0, qor_slot_of(strings({"a", "b"}).release()).f64);
  EXPECT_EQ(kavo::test::to_strings(own(qor_array_flatten(nested.get())).get()),
            (Strings{"a", "b"}));
}

double doubled(double x) {
  return 2 * x;
}
double plus(double a, double b) {
  return a + 10 * b;
}
char* bracketed(const char* s) {
  return qor_str_concat("[", s);
}
int64_t times_length(double x, const char* s) {
  return static_cast<int64_t>(x) * qor_len_str(s);
}
char* repeated(double x, int64_t n) {
  const auto digit = kavo::test::take(qor_str(x));
  return qor_str_repeat(digit.c_str(), n);
}
char* padded(double x, int64_t width, int64_t pad) {
  const auto digit = kavo::test::take(qor_str(x));
  const auto fill = kavo::test::take(qor_chr(pad));
  return qor_lpad(digit.c_str(), width, fill.c_str());
}
double scaled(double x, int64_t n) {
  return x * static_cast<double>(n);
}
double below_three(double x) {
  return x < 3 ? 1 : 0;
}

TEST(Apply, CallsFunctionsOfEveryKind) {
  const auto array = numbers({1, 2});
  EXPECT_EQ(take_numbers(qor_array_apply_ff(doubled, array.get())), (Numbers{2, 4}));
  EXPECT_EQ(take_strings(qor_array_apply_ss(bracketed, strings({"a", "b"}).get())),
            (Strings{"[a", "[b"}));
  EXPECT_EQ(take_numbers(qor_array_apply_ifs(times_length, array.get(), "abc")), (Numbers{3, 6}));
  EXPECT_EQ(take_strings(qor_array_apply_sfi(repeated, array.get(), 3)), (Strings{"111", "222"}));
  EXPECT_EQ(take_strings(qor_array_apply_sfii(padded, array.get(), 3, '0')),
            (Strings{"001", "002"}));
  EXPECT_EQ(take_numbers(qor_array_apply_ffi(scaled, array.get(), 5)), (Numbers{5, 10}));
}

TEST(Apply, GoesThroughRows) {
  EXPECT_EQ(take_rows(qor_array_apply_ff(doubled, rows({{1}, {2, 3}}).get())), (Rows{{2}, {4, 6}}));
}

TEST(Apply, TakesNumbersForStringsAndTheReverseAsEmpty) {
  EXPECT_EQ(take_strings(qor_array_apply_ss(bracketed, numbers({1}).get())), Strings{"["});
  EXPECT_EQ(take_numbers(qor_array_apply_ff(doubled, strings({"7"}).get())), Numbers{0});
}

TEST(Apply, OfNullIsEmpty) {
  const auto array = numbers({1});
  EXPECT_EQ(take_numbers(qor_array_apply_ff(nullptr, array.get())), Numbers{});
  EXPECT_EQ(take_numbers(qor_array_apply_ff(doubled, nullptr)), Numbers{});
  EXPECT_EQ(take_strings(qor_array_apply_ss(nullptr, array.get())), Strings{});
  EXPECT_EQ(take_numbers(qor_array_apply_ifs(nullptr, array.get(), "")), Numbers{});
  EXPECT_EQ(take_strings(qor_array_apply_sfi(nullptr, array.get(), 1)), Strings{});
  EXPECT_EQ(take_strings(qor_array_apply_sfii(nullptr, array.get(), 1, 1)), Strings{});
  EXPECT_EQ(take_numbers(qor_array_apply_ffi(nullptr, array.get(), 1)), Numbers{});
  EXPECT_EQ(take_numbers(qor_select_fn(nullptr, array.get())), Numbers{});
  EXPECT_EQ(qor_agg_fn(nullptr, array.get(), 5), 0.0);
  EXPECT_EQ(qor_reduce_fn(nullptr, array.get()), 0.0);
  EXPECT_EQ(take_numbers(qor_take_while_fn(nullptr, array.get())), Numbers{});
  EXPECT_EQ(take_numbers(qor_drop_while_fn(nullptr, array.get())), Numbers{});
  EXPECT_EQ(take_rows(qor_outer_fn(nullptr, array.get(), array.get())), Rows{});
}

TEST(Select, PassesRowsAsBitPatterns) {
  const auto length = [](double slot) {
    return static_cast<double>(
        qor_array_len(static_cast<QorArray*>(qor_reference_in({.f64 = slot}))));
  };
  EXPECT_EQ(take_numbers(qor_select_fn(length, rows({{1}, {2, 3}}).get())), (Numbers{1, 2}));
  EXPECT_EQ(take_numbers(qor_select_fn(doubled, numbers({1}).get())), Numbers{2});
}

TEST(Folding, GoesFromTheFront) {
  EXPECT_EQ(qor_agg_fn(plus, numbers({1, 2}).get(), 100), 130);
  EXPECT_EQ(qor_agg_fn(plus, nullptr, 100), 100);
  EXPECT_EQ(qor_reduce_fn(plus, numbers({1, 2, 3}).get()), 51);
  EXPECT_EQ(qor_reduce_fn(plus, numbers({7}).get()), 7);
  EXPECT_EQ(qor_reduce_fn(plus, nullptr), 0);
}

TEST(While, StopsAtTheFirstRefusal) {
  const auto array = numbers({1, 2, 3, 1});
  EXPECT_EQ(take_numbers(qor_take_while_fn(below_three, array.get())), (Numbers{1, 2}));
  EXPECT_EQ(take_numbers(qor_drop_while_fn(below_three, array.get())), (Numbers{3, 1}));
  EXPECT_EQ(take_numbers(qor_take_while_fn(below_three, nullptr)), Numbers{});
}

TEST(Outer, MakesARowForEachElement) {
  EXPECT_EQ(take_rows(qor_outer_fn(plus, numbers({1, 2}).get(), numbers({1, 2, 3}).get())),
            (Rows{{11, 21, 31}, {12, 22, 32}}));
  EXPECT_EQ(take_rows(qor_outer_fn(plus, numbers({1}).get(), nullptr)), Rows{{}});
}

} // namespace
