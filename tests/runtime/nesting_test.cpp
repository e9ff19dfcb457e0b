// Arrays nested deeper than any stack, and arrays that hold themselves.
#include <gtest/gtest.h>

#include <vector>

#include "runtime/qor.h"
#include "tests/runtime/values.h"

namespace {

using kavo::test::Array;
using kavo::test::DeepArray;
using kavo::test::numbers;
using kavo::test::own;
using kavo::test::own_deep;
using kavo::test::take;
using kavo::test::take_numbers;

void put(QorArray* array, int64_t index, QorArray* row) {
  qor_array_set(array, index, qor_slot_of(row).f64);
}

// [[[ ... [7, 8] ... ]]]
DeepArray nested(int64_t depth) {
  auto* array = numbers({7, 8}).release();
  for (int64_t level = 1; level < depth; ++level) {
    auto* around = qor_array_new(1);
    qor_array_set_nested(around);
    put(around, 0, array);
    array = around;
  }
  return own_deep(array);
}

int64_t depth_of(const QorArray* array) {
  int64_t depth = 1;
  for (; qor_array_is_nested(array) == 1; ++depth)
    array = static_cast<const QorArray*>(qor_array_get_ptr(array, 0));
  return depth;
}

// Each level takes any recursion at least a hundred bytes of stack, of which there are eight
// megabytes.
constexpr int64_t deep = 100'000;

TEST(DeepArrays, AreFreedCopiedAndSummedAMillionDeep) {
  constexpr int64_t deepest = 1'000'000;
  const auto array = nested(deepest);
  const auto copy = own_deep(qor_array_copy_deep(array.get()));
  EXPECT_EQ(depth_of(copy.get()), deepest);
  EXPECT_EQ(qor_array_sum(copy.get()), 15);
}

TEST(DeepArrays, AreReducedToANumber) {
  const auto array = nested(deep);
  EXPECT_EQ(qor_array_sum(array.get()), 15);
  EXPECT_EQ(qor_array_product(array.get()), 56);
  EXPECT_EQ(qor_array_count(array.get()), 2);
  EXPECT_EQ(qor_array_all(array.get()), 1);
  EXPECT_EQ(qor_mean(array.get()), 7.5);
  EXPECT_EQ(qor_array_variance(array.get()), 0.25);
  EXPECT_EQ(qor_array_median(array.get()), 7.5);
  EXPECT_EQ(qor_array_min(array.get()), 7);
  EXPECT_EQ(qor_array_max(array.get()), 8);
}

TEST(DeepArrays, AreCalculatedWith) {
  const auto array = nested(deep);
  const auto sums = own_deep(qor_array_binop(array.get(), array.get(), QOR_OP_ADD));
  EXPECT_EQ(qor_array_sum(sums.get()), 30);
  const auto scaled = own_deep(qor_array_scalar_op(sums.get(), 2, QOR_OP_MULTIPLY, 0));
  EXPECT_EQ(qor_array_sum(scaled.get()), 60);
  const auto roots = own_deep(qor_array_abs(scaled.get()));
  EXPECT_EQ(qor_array_sum(roots.get()), 60);
  const auto totals = own_deep(qor_array_cumsum(array.get()));
  EXPECT_EQ(qor_array_max(totals.get()), 15);
  EXPECT_EQ(qor_array_dot(array.get(), array.get()), 49 + 64);
}

TEST(DeepArrays, AreFlattenedJoinedAndMeasured) {
  const auto array = nested(deep);
  EXPECT_EQ(take_numbers(qor_array_flatten(array.get())), (kavo::test::Numbers{7, 8}));
  EXPECT_EQ(take(qor_join_arr(array.get(), "-")), "7-8");
  const auto shape = own(qor_array_len_shape(array.get()));
  EXPECT_EQ(qor_array_len(shape.get()), deep);
  EXPECT_EQ(qor_array_get(shape.get(), deep - 1), 2);
}

// [[1, 2], itself, itself]
DeepArray endless() {
  auto* array = qor_array_new(3);
  qor_array_set_nested(array);
  put(array, 0, numbers({1, 2}).release());
  put(array, 1, array);
  put(array, 2, array);
  return own_deep(array);
}

TEST(AnArrayWithinItself, IsFreedOnce) {
  endless();
  // [[the outer one]]
  auto* outer = qor_array_new(1);
  auto* inner = qor_array_new(1);
  qor_array_set_nested(outer);
  qor_array_set_nested(inner);
  put(outer, 0, inner);
  put(inner, 0, outer);
  qor_array_free_deep(outer);
}

TEST(AnArrayWithinItself, CountsAsEmpty) {
  const auto array = endless();
  EXPECT_EQ(qor_array_sum(array.get()), 0);
  EXPECT_EQ(qor_array_product(array.get()), 1);
  EXPECT_EQ(qor_array_count(array.get()), 0);
  EXPECT_EQ(qor_array_min(array.get()), 0);
  EXPECT_EQ(qor_array_max(array.get()), 0);
  EXPECT_EQ(qor_array_median(array.get()), 0);
  EXPECT_EQ(take(qor_join_arr(array.get(), "-")), "");
  EXPECT_EQ(take_numbers(qor_array_len_shape(array.get())), kavo::test::Numbers{0});
  EXPECT_EQ(qor_array_dot(array.get(), array.get()), 0);
  for (auto* result : {qor_array_copy_deep(array.get()), qor_array_flatten(array.get()),
                       qor_array_cumsum(array.get()), qor_array_sqr(array.get()),
                       qor_array_binop(array.get(), array.get(), QOR_OP_ADD),
                       qor_array_scalar_op(array.get(), 1, QOR_OP_ADD, 0)})
    EXPECT_EQ(qor_array_len(own(result).get()), 0);
}

// Forty levels of rows that hold the next one twice; at the bottom the top.
TEST(AnArrayWithinItself, IsFoundHoweverItsRowsAreShared) {
  std::vector<Array> levels;
  for (int i = 0; i < 40; ++i) {
    levels.push_back(own(qor_array_new(2)));
    qor_array_set_nested(levels.back().get());
  }
  for (size_t i = 0; i < levels.size(); ++i)
    for (const int64_t slot : {0, 1})
      put(levels[i].get(), slot, levels[(i + 1) % levels.size()].get());
  EXPECT_EQ(qor_array_sum(levels.front().get()), 0);
}

TEST(NestedArrays, ANumberAmongTaggedRowsIsNoRow) {
  const auto rows = own(
      qor_array_append_tagged(nullptr, QOR_TAG_ARRAY, qor_slot_of(numbers({1, 2}).release()).f64));
  const auto mixed = own_deep(qor_array_append_tagged(rows.get(), QOR_TAG_FLOAT64, 5.0));
  qor_array_set_nested(mixed.get());
  EXPECT_EQ(qor_array_sum(mixed.get()), 3);
  EXPECT_EQ(qor_array_max(mixed.get()), 2);
}

} // namespace
