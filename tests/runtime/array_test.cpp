// Arrays: making, reading, writing, joining, filtering, ownership.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "runtime/array.h"
#include "tests/fakes/binary_strings.h"
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

TEST(ArrayMaking, NewAndZerosAreZeroedAndUntagged) {
  for (const auto& array : {own(qor_array_new(3)), own(qor_zeros(3))}) {
    EXPECT_EQ(kavo::test::to_vector(array.get()), (Numbers{0, 0, 0}));
    EXPECT_EQ(array->flags, 0U);
    EXPECT_EQ(array->tags, nullptr);
    EXPECT_EQ(qor_array_get_ptr(array.get(), 0), nullptr);
  }
}

TEST(ArrayMaking, OnesAreOne) {
  EXPECT_EQ(take_numbers(qor_ones(2)), (Numbers{1, 1}));
}

TEST(ArrayMaking, ACountBelowOneGivesAnEmptyArray) {
  for (const int64_t count : {int64_t{0}, int64_t{-1}, INT64_MIN}) {
    EXPECT_EQ(take_numbers(qor_array_new(count)), Numbers{});
    EXPECT_EQ(take_numbers(qor_ones(count)), Numbers{});
  }
}

TEST(ArrayAccess, ReadingOutOfRangeGivesZero) {
  const auto array = numbers({7, 8});
  EXPECT_EQ(qor_array_get(array.get(), 1), 8);
  EXPECT_EQ(qor_array_get(array.get(), -1), 0);
  EXPECT_EQ(qor_array_get(array.get(), 2), 0);
  EXPECT_EQ(qor_array_get(nullptr, 0), 0);
}

TEST(ArrayAccess, WritingOutOfRangeChangesNothing) {
  const auto array = numbers({7, 8});
  qor_array_set(array.get(), -1, 1);
  qor_array_set(array.get(), 2, 1);
  qor_array_set(nullptr, 0, 1);
  EXPECT_EQ(kavo::test::to_vector(array.get()), (Numbers{7, 8}));
  qor_array_set(array.get(), 0, 1);
  EXPECT_EQ(kavo::test::to_vector(array.get()), (Numbers{1, 8}));
}

TEST(ArrayAccess, ReferencesOutOfRangeAreNull) {
  const auto array = rows({{1, 2}});
  EXPECT_NE(qor_array_get_ptr(array.get(), 0), nullptr);
  EXPECT_EQ(qor_array_get_ptr(array.get(), 1), nullptr);
  EXPECT_EQ(qor_array_get_ptr(array.get(), -1), nullptr);
  EXPECT_EQ(qor_array_get_ptr(nullptr, 0), nullptr);
}

TEST(ArrayAccess, StringsOutOfRangeAreOneSharedEmptyString) {
  const auto array = strings({"one"});
  EXPECT_STREQ(qor_array_get_str(array.get(), 0), "one");
  EXPECT_STREQ(qor_array_get_str(array.get(), 1), "");
  EXPECT_EQ(qor_array_get_str(array.get(), 1), qor_array_get_str(nullptr, 0));
  EXPECT_EQ(qor_array_get_str(array.get(), 0), qor_array_get_ptr(array.get(), 0)) << "not a copy";
}

TEST(ArrayAccess, LengthOfNullIsZero) {
  EXPECT_EQ(qor_array_len(nullptr), 0);
  EXPECT_EQ(qor_array_len(numbers({1, 2}).get()), 2);
}

uint32_t tag_at(const QorArray* array, int64_t index) {
  uint32_t tag = 99;
  qor_array_get_tagged(array, index, &tag);
  return tag;
}

TEST(ArrayTags, ASmallNumberInAnUntaggedArrayIsANumber) {
  const auto array = numbers({3.0, 0.0, -1.0, 1e-300});
  for (int64_t i = 0; i < 4; ++i)
    EXPECT_EQ(tag_at(array.get(), i), QOR_TAG_FLOAT64);
}

TEST(ArrayTags, AStringPointerInAStringArrayIsAString) {
  EXPECT_EQ(tag_at(strings({"one"}).get(), 0), QOR_TAG_STRING);
}

TEST(ArrayTags, ARowIsAnArray) {
  EXPECT_EQ(tag_at(rows({{1}}).get(), 0), QOR_TAG_ARRAY);
}

TEST(ArrayTags, TheReferencePatternEndsAtTheTopOfUserSpace) {
#ifdef __aarch64__
  constexpr uint64_t top = 0xFFFFFFFFFFFF;
#else
  constexpr uint64_t top = 0x7FFFFFFFFFFF;
#endif
  const auto array = numbers({std::bit_cast<double>(uint64_t{1}), std::bit_cast<double>(top),
                              std::bit_cast<double>(top + 1)});
  EXPECT_EQ(tag_at(array.get(), 0), QOR_TAG_ARRAY);
  EXPECT_EQ(tag_at(array.get(), 1), QOR_TAG_ARRAY);
  EXPECT_EQ(tag_at(array.get(), 2), QOR_TAG_FLOAT64);
}

TEST(ArrayTags, OutOfRangeIsTheNumberZero) {
  uint32_t tag = 99;
  EXPECT_EQ(qor_array_get_tagged(strings({"one"}).get(), 1, &tag), 0.0);
  EXPECT_EQ(tag, QOR_TAG_FLOAT64);
  EXPECT_EQ(qor_array_get_tagged(nullptr, 0, nullptr), 0.0);
}

TEST(ArrayTags, StoredTagsDecide) {
  const auto one = own(qor_array_append_tagged(nullptr, QOR_TAG_INT64, 5.0));
  const auto two = own(qor_array_append_tagged(one.get(), QOR_TAG_HOST, 6.0));
  EXPECT_EQ(tag_at(two.get(), 0), QOR_TAG_INT64);
  EXPECT_EQ(tag_at(two.get(), 1), QOR_TAG_HOST);
  EXPECT_EQ(qor_array_classify_elem(two.get(), 6.0), QOR_TAG_HOST);
  EXPECT_EQ(qor_array_classify_elem(two.get(), 7.0), QOR_TAG_FLOAT64);
  EXPECT_EQ(qor_array_classify_elem(nullptr, 7.0), QOR_TAG_FLOAT64);
}

TEST(ArrayTags, AValueIsClassifiedByThePatternWhereThereAreNoTags) {
  const auto array = strings({"one"});
  EXPECT_EQ(qor_array_classify_elem(array.get(), qor_array_get(array.get(), 0)), QOR_TAG_STRING);
  EXPECT_EQ(qor_array_classify_elem(nullptr, qor_array_get(array.get(), 0)), QOR_TAG_ARRAY);
}

TEST(ArrayAppend, ToNullGivesOneSlotWithoutFlags) {
  const auto array = own(qor_array_append(nullptr, 2.5));
  EXPECT_EQ(kavo::test::to_vector(array.get()), Numbers{2.5});
  EXPECT_EQ(array->flags, 0U);
  EXPECT_EQ(array->tags, nullptr);
}

TEST(ArrayAppend, LeavesTheOriginalAndKeepsFlags) {
  auto array = numbers({1, 0});
  qor_array_set_bool_elems(array.get());
  const auto longer = own(qor_array_append(array.get(), 1));
  EXPECT_EQ(kavo::test::to_vector(array.get()), (Numbers{1, 0}));
  EXPECT_EQ(kavo::test::to_vector(longer.get()), (Numbers{1, 0, 1}));
  EXPECT_EQ(longer->flags, QOR_FLAG_BOOLS);
}

TEST(ArrayAppend, CopiesTagsAndTagsTheNewSlotZero) {
  const auto one = own(qor_array_append_tagged(nullptr, QOR_TAG_HOST, 5.0));
  const auto two = own(qor_array_append(one.get(), 6.0));
  EXPECT_EQ(tag_at(two.get(), 0), QOR_TAG_HOST);
  EXPECT_EQ(tag_at(two.get(), 1), QOR_TAG_INT64);
  EXPECT_EQ(two->flags, QOR_FLAG_TAGGED);
}

TEST(ArrayAppend, TaggedGivesOlderSlotsTagZero) {
  const auto array = own(qor_array_append_tagged(numbers({1}).get(), QOR_TAG_FLOAT64, 2));
  EXPECT_EQ(tag_at(array.get(), 0), QOR_TAG_INT64);
  EXPECT_EQ(tag_at(array.get(), 1), QOR_TAG_FLOAT64);
}

TEST(ArrayAppend, ArrayToArrayUnitesFlagsAndDropsTags) {
  auto a = numbers({1});
  qor_array_set_bool_elems(a.get());
  const auto b = own(qor_array_append_tagged(nullptr, QOR_TAG_FLOAT64, 2));
  const auto both = own(qor_array_append_arr(a.get(), b.get()));
  EXPECT_EQ(kavo::test::to_vector(both.get()), (Numbers{1, 2}));
  EXPECT_EQ(both->flags, QOR_FLAG_BOOLS | QOR_FLAG_TAGGED);
  EXPECT_EQ(both->tags, nullptr);
  EXPECT_EQ(tag_at(both.get(), 1), QOR_TAG_FLOAT64) << "a tag flag without tags is harmless";
}

TEST(ArrayAppend, NullArraysAreEmpty) {
  EXPECT_EQ(take_numbers(qor_array_append_arr(nullptr, numbers({1}).get())), Numbers{1});
  EXPECT_EQ(take_numbers(qor_array_append_arr(nullptr, nullptr)), Numbers{});
}

TEST(ArrayReverse, TurnsTheOrderAndKeepsFlags) {
  const auto original = rows({{1}, {2}});
  const auto reversed = own(qor_array_reverse(original.get()));
  EXPECT_EQ(kavo::test::to_rows(reversed.get()), (Rows{{2}, {1}}));
  EXPECT_EQ(reversed->flags, QOR_FLAG_NESTED);
  EXPECT_EQ(kavo::test::to_rows(original.get()), (Rows{{1}, {2}}));
  EXPECT_EQ(take_numbers(qor_array_reverse(nullptr)), Numbers{});
}

TEST(ArrayPop, TakesTheLastSlot) {
  const auto array = numbers({1, 2});
  EXPECT_EQ(qor_array_pop(array.get()), 2);
  EXPECT_EQ(qor_array_pop(array.get()), 1);
  EXPECT_EQ(qor_array_pop(array.get()), 0);
  EXPECT_EQ(qor_array_pop(nullptr), 0);
  EXPECT_EQ(qor_array_len(array.get()), 0);
}

TEST(ArrayPop, GivesANewCopyOfAString) {
  const auto array = strings({"one", "two"});
  auto* stored = static_cast<char*>(qor_array_get_ptr(array.get(), 1));
  auto* popped = qor_array_pop_str(array.get());
  EXPECT_NE(popped, stored);
  EXPECT_EQ(kavo::test::take(popped), "two");
  EXPECT_EQ(kavo::test::to_strings(array.get()), Strings{"one"});
  qor_str_free(stored);
}

TEST(ArrayPop, OfAnEmptyStringArrayOrANullSlotIsAnEmptyString) {
  const auto array = own(qor_array_new(1));
  qor_array_set_string_elems(array.get());
  EXPECT_EQ(kavo::test::take(qor_array_pop_str(array.get())), "");
  EXPECT_EQ(kavo::test::take(qor_array_pop_str(array.get())), "");
  EXPECT_EQ(kavo::test::take(qor_array_pop_str(nullptr)), "");
}

TEST(ArrayGather, TakesASlotPerIndex) {
  const auto array = numbers({10, 20, 30});
  const auto indexes = numbers({2, 0.9, -0.9, -1, 3, std::nan(""), 1e300});
  EXPECT_EQ(take_numbers(qor_array_gather(array.get(), indexes.get())),
            (Numbers{30, 10, 10, 0, 0, 10, 0}));
  EXPECT_EQ(take_numbers(qor_array_gather(nullptr, indexes.get())), Numbers(7, 0.0));
  EXPECT_EQ(take_numbers(qor_array_gather(array.get(), nullptr)), Numbers{});
}

TEST(ArrayGather, KeepsFlags) {
  const auto array = rows({{1}, {2}});
  EXPECT_EQ(own(qor_array_gather(array.get(), numbers({1}).get()))->flags, QOR_FLAG_NESTED);
}

TEST(ArrayExtremes, AreTheSmallestAndTheLargestNumber) {
  const auto array = numbers({3, -1, 2});
  EXPECT_EQ(qor_array_min(array.get()), -1);
  EXPECT_EQ(qor_array_max(array.get()), 3);
}

TEST(ArrayExtremes, OfAnEmptyArrayAreZero) {
  EXPECT_EQ(qor_array_min(numbers({}).get()), 0.0);
  EXPECT_EQ(qor_array_max(numbers({}).get()), 0.0);
  EXPECT_EQ(qor_array_min(nullptr), 0.0);
  EXPECT_EQ(qor_array_max(nullptr), 0.0);
}

TEST(ArrayExtremes, GoThroughAllRows) {
  const auto array = rows({{}, {5, 4}, {}, {7, 6}});
  EXPECT_EQ(qor_array_min(array.get()), 4) << "an empty row has no say";
  EXPECT_EQ(qor_array_max(array.get()), 7);
}

TEST(ArrayExtremes, PreferNumbersToNaN) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(qor_array_min(numbers({nan, 2, nan, 3}).get()), 2);
  EXPECT_EQ(qor_array_max(numbers({2, nan}).get()), 2);
  EXPECT_TRUE(std::isnan(qor_array_max(numbers({nan}).get())));
}

TEST(ArrayFlags, SettersMarkTheArrayAndAcceptNull) {
  const auto array = own(qor_array_new(0));
  EXPECT_EQ(qor_array_is_nested(array.get()), 0);
  qor_array_set_bool_elems(array.get());
  EXPECT_EQ(array->flags, 4U);
  qor_array_set_nested(array.get());
  EXPECT_EQ(array->flags, 5U);
  EXPECT_EQ(qor_array_is_nested(array.get()), 1);
  qor_array_set_string_elems(array.get());
  EXPECT_EQ(array->flags, 7U);
  qor_array_set_nested(nullptr);
  qor_array_set_string_elems(nullptr);
  qor_array_set_bool_elems(nullptr);
  EXPECT_EQ(qor_array_is_nested(nullptr), 0);
}

TEST(ArrayShape, CountsEveryLevel) {
  EXPECT_EQ(take_numbers(qor_array_len_shape(rows({{1, 2, 3}, {4, 5, 6}}).get())), (Numbers{2, 3}));
  EXPECT_EQ(take_numbers(qor_array_len_shape(numbers({1, 2}).get())), Numbers{2});
  EXPECT_EQ(take_numbers(qor_array_len_shape(rows({}).get())), Numbers{0});
  EXPECT_EQ(take_numbers(qor_array_len_shape(rows({{}}).get())), (Numbers{1, 0}));
  EXPECT_EQ(take_numbers(qor_array_len_shape(strings({"a", "b"}).get())), Numbers{2});
  EXPECT_EQ(take_numbers(qor_array_len_shape(nullptr)), Numbers{0});
}

int predicate_calls = 0;

double is_positive(double value) {
  predicate_calls += 1;
  return value > 0 ? 1.0 : 0.0;
}

TEST(ArrayFilter, KeepsWhatThePredicateAccepts) {
  EXPECT_EQ(take_numbers(qor_filter_fn(is_positive, numbers({1, -2, 3}).get())), (Numbers{1, 3}));
}

TEST(ArrayFilter, CallsThePredicateTwicePerElement) {
  predicate_calls = 0;
  take_numbers(qor_filter_fn(is_positive, numbers({1, -2, 3}).get()));
  EXPECT_EQ(predicate_calls, 6);
}

TEST(ArrayFilter, PassesRowsAsBitPatternsAndKeepsThemShared) {
  const auto array = rows({{1}, {}, {2}});
  const auto has_elements = [](double slot) {
    return static_cast<double>(
        qor_array_len(static_cast<QorArray*>(qor_reference_in({.f64 = slot}))));
  };
  const auto kept = own(qor_filter_fn(has_elements, array.get()));
  EXPECT_EQ(kavo::test::to_rows(kept.get()), (Rows{{1}, {2}}));
  EXPECT_EQ(kept->flags, QOR_FLAG_NESTED);
  EXPECT_EQ(qor_array_get_ptr(kept.get(), 1), qor_array_get_ptr(array.get(), 2));
}

TEST(ArrayFilter, DropsTags) {
  const auto tagged = own(qor_array_append_tagged(nullptr, QOR_TAG_FLOAT64, 5.0));
  const auto kept = own(qor_filter_fn(is_positive, tagged.get()));
  EXPECT_EQ(kept->flags, 0U);
  EXPECT_EQ(kept->tags, nullptr);
}

TEST(ArrayFilter, OfNullIsEmptyWithoutFlags) {
  const auto kept = own(qor_filter_fn(is_positive, nullptr));
  EXPECT_EQ(qor_array_len(kept.get()), 0);
  EXPECT_EQ(kept->flags, 0U);
}

TEST(ArrayFilter, APredicateThatChangesItsMindHarmsNothing) {
  predicate_calls = 0;
  const auto only_later = [](double) { return ++predicate_calls > 2 ? 1.0 : 0.0; };
  EXPECT_EQ(take_numbers(qor_filter_fn(only_later, numbers({1, 2}).get())), Numbers{});
  predicate_calls = 0;
  const auto only_first = [](double) { return ++predicate_calls <= 2 ? 1.0 : 0.0; };
  EXPECT_EQ(take_numbers(qor_filter_fn(only_first, numbers({1, 2}).get())), (Numbers{0, 0}));
}

TEST(ArrayOwnership, ADeepCopySharesNothing) {
  const auto original = rows({{1, 2}, {3}});
  const auto copy = kavo::test::own_deep(qor_array_copy_deep(original.get()));
  qor_array_set(static_cast<QorArray*>(qor_array_get_ptr(original.get(), 0)), 0, 9);
  EXPECT_EQ(kavo::test::to_rows(copy.get()), (Rows{{1, 2}, {3}}));
  EXPECT_EQ(qor_array_copy_deep(nullptr), nullptr);
}

TEST(ArrayOwnership, ADeepCopyFollowsTags) {
  const auto name = kavo::test::take(qor_str_concat("na", "me"));
  auto* text = qor_str_concat(name.c_str(), "");
  const auto one = own(qor_array_append_tagged(nullptr, QOR_TAG_STRING, qor_slot_of(text).f64));
  const auto two = kavo::test::own_deep(qor_array_append_tagged(one.get(), QOR_TAG_FLOAT64, 2.5));
  const auto copy = kavo::test::own_deep(qor_array_copy_deep(two.get()));
  EXPECT_EQ(tag_at(copy.get(), 0), QOR_TAG_STRING);
  EXPECT_STREQ(qor_array_get_str(copy.get(), 0), "name");
  EXPECT_NE(qor_array_get_ptr(copy.get(), 0), text);
  EXPECT_EQ(qor_array_get(copy.get(), 1), 2.5);
}

TEST(ArrayOwnership, FreeingDeepForgetsByteStrings) {
  auto array = kavo::test::own_deep(qor_array_new(2));
  qor_array_set_string_elems(array.get());
  qor_array_set(array.get(), 0, qor_slot_of(qor_chr(0)).f64);
  const auto copy = kavo::test::own_deep(qor_array_copy_deep(array.get()));
  EXPECT_EQ(kavo::fakes::registered_strings(), 2U);
  EXPECT_EQ(qor_len_str(qor_array_get_str(copy.get(), 0)), 1);
  array.reset();
  EXPECT_EQ(kavo::fakes::registered_strings(), 1U);
}

TEST(ArrayOwnership, FreeingNullIsFine) {
  qor_array_free(nullptr);
  qor_array_free_deep(nullptr);
  qor_str_free(nullptr);
}

} // namespace
