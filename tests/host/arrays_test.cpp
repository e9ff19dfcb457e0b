// TRANSPOSE, RESHAPE, MVINS and SPLIT, with arrays of every form.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

#include "host/arrays.h"
#include "host/command.h"
#include "runtime/qorrt.h"
#include "tests/runtime/values.h"

namespace {

using kavo::host::CommandError;
using kavo::host::OwnedArray;
using kavo::host::reshaped;
using kavo::host::split;
using kavo::host::transposed;
using kavo::host::with_row_inserted;
using kavo::test::DeepArray;
using kavo::test::Numbers;
using kavo::test::numbers;
using kavo::test::Rows;
using kavo::test::rows;
using kavo::test::Strings;
using kavo::test::strings;
using kavo::test::to_rows;
using kavo::test::to_strings;
using kavo::test::to_vector;

std::string error_of(const std::function<void()>& action) {
  try {
    action();
  } catch (const CommandError& error) {
    return error.what();
  }
  return "(no error)";
}

// An array of the given arrays, which it takes over.
DeepArray nested(std::vector<QorArray*> inner) {
  auto array = kavo::test::own_deep(qor_array_new(std::ssize(inner)));
  qor_array_set_nested(array.get());
  for (int64_t i = 0; i < std::ssize(inner); ++i)
    qor_array_set(array.get(), i, qor_slot_of(inner[static_cast<size_t>(i)]).f64);
  return array;
}

// As many levels of arrays of one element.
DeepArray nest(int levels) {
  DeepArray array = kavo::test::own_deep(qor_array_new(1));
  for (int i = 1; i < levels; ++i)
    array = nested({array.release()});
  return array;
}

TEST(Transpose, TurnsRowsIntoColumns) {
  const auto result = transposed(rows({{1, 2, 3}, {4, 5, 6}}).get());
  EXPECT_EQ(to_rows(result.get()), (Rows{{1, 4}, {2, 5}, {3, 6}}));
  EXPECT_EQ(result->flags, uint32_t{QOR_FLAG_NESTED});
}

TEST(Transpose, TwiceIsNothing) {
  const Rows matrix = {{1, 2, 3}, {4, 5, 6}};
  const auto once = transposed(rows(matrix).get());
  EXPECT_EQ(to_rows(transposed(once.get()).get()), matrix);
}

TEST(Transpose, LeavesItsArgumentAlone) {
  const auto matrix = rows({{1, 2}, {3, 4}});
  auto result = transposed(matrix.get());
  qor_array_set(static_cast<QorArray*>(qor_array_get_ptr(result.get(), 0)), 0, 99);
  EXPECT_EQ(to_rows(matrix.get()), (Rows{{1, 2}, {3, 4}}));
}

TEST(Transpose, OfNothingIsNothing) {
  EXPECT_EQ(to_rows(transposed(nullptr).get()), Rows{});
  EXPECT_EQ(to_rows(transposed(rows({}).get()).get()), Rows{});
  EXPECT_EQ(to_rows(transposed(rows({{}, {}}).get()).get()), Rows{});
}

TEST(Transpose, MovesTexts) {
  const auto matrix = nested({strings({"a", "b"}).release(), strings({"c", "d"}).release()});
  const auto result = transposed(matrix.get());
  EXPECT_EQ(to_strings(static_cast<QorArray*>(qor_array_get_ptr(result.get(), 0))),
            (Strings{"a", "c"}));
}

TEST(Transpose, KeepsTheTagsOfTaggedRows) {
  QorArray* row =
      qor_array_append_tagged(nullptr, QOR_TAG_INT64, std::bit_cast<double>(int64_t{7}));
  const auto matrix = nested({row});
  const auto result = transposed(matrix.get());
  uint32_t tag = 99;
  const double slot =
      qor_array_get_tagged(static_cast<QorArray*>(qor_array_get_ptr(result.get(), 0)), 0, &tag);
  EXPECT_EQ(tag, uint32_t{QOR_TAG_INT64});
  EXPECT_EQ(std::bit_cast<int64_t>(slot), 7);
}

TEST(Transpose, RefusesRaggedRows) {
  EXPECT_EQ(error_of([] {
              transposed(rows({{1, 2}, {3}}).get());
            }),
            "argument 1 must have rows of one length, but row 0 has 2 elements and row 1 has 1");
}

TEST(Transpose, RefusesAFlatArray) {
  EXPECT_EQ(error_of([] {
              transposed(numbers({1, 2}).get());
            }),
            "argument 1 must be an array of rows, but element 0 is not a row");
}

TEST(Transpose, ANullRowIsAnEmptyOne) {
  EXPECT_EQ(to_rows(transposed(nested({nullptr, nullptr}).get()).get()), Rows{});
}

TEST(Transpose, RefusesANumberInPlaceOfARow) {
  const auto matrix = rows({{1}, {2}});
  auto broken = kavo::test::own(qor_array_append(matrix.get(), 5.0));
  EXPECT_EQ(error_of([&] { transposed(broken.get()); }),
            "argument 1 is said to hold references, but element 2 is the number 5");
}

TEST(Reshape, TakesReferencesOfEveryAddressAndNoNumberForOne) {
  const auto reshape = [](uint64_t bits) {
    auto texts = kavo::test::own(qor_array_new(1));
    qor_array_set_string_elems(texts.get());
    qor_array_set(texts.get(), 0, std::bit_cast<double>(bits));
    reshaped(texts.get(), numbers({0}).get()); // nothing is dealt out, so nothing is followed
  };
  constexpr uint64_t above_all_addresses = uint64_t{1} << 48U;
  EXPECT_EQ(error_of([&] { reshape(uint64_t{1} << 47U); }), "(no error)");
  EXPECT_EQ(error_of([&] { reshape(above_all_addresses - 1); }), "(no error)");
  EXPECT_EQ(
      error_of([&] { reshape(above_all_addresses); }),
      "argument 1 is said to hold references, but element 0 is the number 1.390671161567e-309");
}

TEST(Transpose, RefusesLengthsThatCannotBe) {
  double slot = 0.0;
  QorArray array = {.data = &slot, .length = -3, .flags = 0, .tags = nullptr};
  EXPECT_EQ(error_of([&] { transposed(&array); }),
            "argument 1 must not have a negative length, but one is -3");
  array.length = 1'000'000'000'000;
  EXPECT_EQ(error_of([&] { transposed(&array); }),
            "argument 1 must not hold more than 1048576 elements");
  array.length = std::numeric_limits<int64_t>::max();
  EXPECT_EQ(error_of([&] { transposed(&array); }),
            "argument 1 must not hold more than 1048576 elements");
  array = {.data = nullptr, .length = 2, .flags = 0, .tags = nullptr};
  EXPECT_EQ(error_of([&] { transposed(&array); }), "argument 1 has a length of 2 but no elements");
}

TEST(Reshape, RefusesSharedRowsOfNegativeLength) {
  // Thirty levels that hold the next one twice: the negative length below must not pay for them.
  QorArray below = {.data = nullptr, .length = -3, .flags = 0, .tags = nullptr};
  std::vector<kavo::test::Array> levels;
  for (int i = 0; i < 30; ++i) {
    const QorArray* next = levels.empty() ? &below : levels.back().get();
    levels.push_back(numbers({qor_slot_of(next).f64, qor_slot_of(next).f64}));
    qor_array_set_nested(levels.back().get());
  }
  EXPECT_EQ(error_of([&] { reshaped(levels.back().get(), numbers({1}).get()); }),
            "argument 1 must not have a negative length, but one is -3");
  EXPECT_EQ(error_of([&] { with_row_inserted(numbers({}).get(), 0, 0, &below); }),
            "argument 4 must not have a negative length, but one is -3");
}

TEST(Transpose, RefusesWhatIsNestedTooDeep) {
  EXPECT_EQ(error_of([] { transposed(nest(64).get()); }), "(no error)");
  EXPECT_EQ(error_of([] { transposed(nest(65).get()); }),
            "argument 1 must not be nested deeper than 64 levels");
}

TEST(Transpose, RefusesAnArrayWithinItself) {
  auto array = kavo::test::own(qor_array_new(1));
  qor_array_set_nested(array.get());
  qor_array_set(array.get(), 0, qor_slot_of(array.get()).f64);
  EXPECT_EQ(error_of([&] { transposed(array.get()); }),
            "argument 1 must not be nested deeper than 64 levels");
}

TEST(Transpose, RefusesAnArrayThatUnfoldsWithoutEnd) {
  // Thirty levels, each holding the next one twice: 2^30 elements from 31 arrays.
  std::vector<kavo::test::Array> levels;
  levels.push_back(numbers({1, 2}));
  for (int i = 0; i < 30; ++i) {
    const double below = qor_slot_of(levels.back().get()).f64;
    levels.push_back(numbers({below, below}));
    qor_array_set_nested(levels.back().get());
  }
  EXPECT_EQ(error_of([&] { transposed(levels.back().get()); }),
            "argument 1 must not hold more than 1048576 elements");
}

TEST(Reshape, MakesRowsOfZeros) {
  const auto board = reshaped(numbers({0}).get(), numbers({3, 2}).get());
  EXPECT_EQ(to_rows(board.get()), (Rows{{0, 0}, {0, 0}, {0, 0}}));
  EXPECT_TRUE(qor_array_is_nested(board.get()));
}

TEST(Reshape, OneSizeMakesAFlatArray) {
  const auto row = reshaped(numbers({0}).get(), numbers({4}).get());
  EXPECT_EQ(to_vector(row.get()), (Numbers{0, 0, 0, 0}));
  EXPECT_EQ(row->flags, 0U);
}

TEST(Reshape, RepeatsTheValuesAcrossRows) {
  EXPECT_EQ(to_rows(reshaped(numbers({1, 2, 3}).get(), numbers({2, 4}).get()).get()),
            (Rows{{1, 2, 3, 1}, {2, 3, 1, 2}}));
}

TEST(Reshape, LeavesOutWhatDoesNotFit) {
  EXPECT_EQ(to_vector(reshaped(numbers({1, 2, 3}).get(), numbers({2}).get()).get()),
            (Numbers{1, 2}));
}

TEST(Reshape, RowsAreIndependent) {
  auto board = reshaped(numbers({0}).get(), numbers({2, 2}).get());
  qor_array_set(static_cast<QorArray*>(qor_array_get_ptr(board.get(), 0)), 0, 5);
  EXPECT_EQ(to_rows(board.get()), (Rows{{5, 0}, {0, 0}}));
}

TEST(Reshape, ReadsRowsOneAfterTheOther) {
  EXPECT_EQ(to_vector(reshaped(rows({{1, 2}, {3, 4}}).get(), numbers({4}).get()).get()),
            (Numbers{1, 2, 3, 4}));
}

TEST(Reshape, CanHaveMoreThanTwoSizes) {
  const auto cube = reshaped(numbers({1, 2}).get(), numbers({2, 1, 2}).get());
  EXPECT_EQ(to_rows(static_cast<QorArray*>(qor_array_get_ptr(cube.get(), 1))), (Rows{{1, 2}}));
}

TEST(Reshape, RepeatsTextsAsCopies) {
  const auto result = reshaped(strings({"ab"}).get(), numbers({2}).get());
  EXPECT_EQ(to_strings(result.get()), (Strings{"ab", "ab"}));
  EXPECT_NE(qor_array_get_str(result.get(), 0), qor_array_get_str(result.get(), 1));
}

TEST(Reshape, ToSizeZeroIsEmpty) {
  EXPECT_EQ(to_vector(reshaped(nullptr, numbers({0}).get()).get()), Numbers{});
  EXPECT_EQ(to_rows(reshaped(numbers({1}).get(), numbers({2, 0}).get()).get()), (Rows{{}, {}}));
}

TEST(Reshape, TruncatesSizes) {
  EXPECT_EQ(reshaped(numbers({1}).get(), numbers({2.9}).get())->length, 2);
  EXPECT_EQ(reshaped(numbers({1}).get(), numbers({-0.9}).get())->length, 0);
}

TEST(Reshape, RefusesToFillFromNothing) {
  EXPECT_EQ(error_of([] { reshaped(nullptr, numbers({2}).get()); }),
            "argument 1 (values) must hold at least one value, got none");
}

TEST(Reshape, RefusesSizesThatAreNone) {
  const std::pair<double, const char*> wrong[] = {
      {-1, "-1"}, {NAN, "nan"}, {INFINITY, "inf"}, {1e300, "1e+300"}};
  for (const auto& [size, name] : wrong)
    EXPECT_EQ(
        error_of([&] {
          reshaped(numbers({1}).get(), numbers({1, size}).get());
        }),
        std::string("argument 2 (sizes) must hold numbers from 0 to 1048576, but size 1 is ") +
            name);
  EXPECT_EQ(error_of([] { reshaped(numbers({1}).get(), strings({"2"}).get()); }),
            "argument 2 (sizes) must hold numbers from 0 to 1048576, but size 0 is not a number");
}

TEST(Reshape, RefusesNoSizesAndTooMany) {
  EXPECT_EQ(error_of([] { reshaped(numbers({1}).get(), nullptr); }),
            "argument 2 (sizes) must hold 1 to 8 sizes, got 0");
  EXPECT_EQ(error_of([] { reshaped(numbers({1}).get(), kavo::test::own(qor_ones(9)).get()); }),
            "argument 2 (sizes) must hold 1 to 8 sizes, got 9");
}

TEST(Reshape, RefusesMoreThanFitsInMemory) {
  EXPECT_EQ(error_of([] {
              reshaped(numbers({1}).get(), numbers({1025, 1024}).get());
            }),
            "argument 2 (sizes) must not ask for more than 1048576 elements");
  EXPECT_EQ(error_of([] {
              reshaped(numbers({1}).get(), numbers({1048576, 1048576, 0}).get());
            }),
            "argument 2 (sizes) must not ask for more than 1048576 elements");
}

TEST(InsertRow, PutsTheRowInFrontOfThePosition) {
  const auto board = rows({{1, 1}, {2, 2}});
  const auto row = numbers({9, 9});
  EXPECT_EQ(to_rows(with_row_inserted(board.get(), 0, 0, row.get()).get()),
            (Rows{{9, 9}, {1, 1}, {2, 2}}));
  EXPECT_EQ(to_rows(with_row_inserted(board.get(), 1, 0, row.get()).get()),
            (Rows{{1, 1}, {9, 9}, {2, 2}}));
  EXPECT_EQ(to_rows(with_row_inserted(board.get(), 2, 0, row.get()).get()),
            (Rows{{1, 1}, {2, 2}, {9, 9}}));
}

TEST(InsertRow, EveryRowIsItsOwn) {
  const auto board = rows({{1, 1}});
  const auto row = numbers({0, 0});
  auto once = with_row_inserted(board.get(), 0, 0, row.get());
  auto twice = with_row_inserted(once.get(), 0, 0, row.get());
  for (int64_t i = 0; i < 3; ++i)
    qor_array_set(static_cast<QorArray*>(qor_array_get_ptr(twice.get(), i)), 0,
                  static_cast<double>(10 + i));
  EXPECT_EQ(to_rows(twice.get()), (Rows{{10, 0}, {11, 0}, {12, 1}}));
  EXPECT_EQ(to_rows(once.get()), (Rows{{0, 0}, {1, 1}}));
  EXPECT_EQ(to_rows(board.get()), (Rows{{1, 1}}));
  EXPECT_EQ(to_vector(row.get()), (Numbers{0, 0}));
}

TEST(InsertRow, IntoNothingGivesOneRow) {
  const auto row = numbers({4});
  EXPECT_EQ(to_rows(with_row_inserted(nullptr, 0, 0, row.get()).get()), (Rows{{4}}));
  EXPECT_EQ(to_rows(with_row_inserted(rows({}).get(), 0, 0, row.get()).get()), (Rows{{4}}));
  const auto flat_and_empty = numbers({});
  EXPECT_EQ(to_rows(with_row_inserted(flat_and_empty.get(), 0, 0, row.get()).get()), (Rows{{4}}));
}

TEST(InsertRow, ANullRowIsAnEmptyOne) {
  EXPECT_EQ(to_rows(with_row_inserted(nullptr, 0, 0, nullptr).get()), (Rows{{}}));
}

TEST(InsertRow, RefusesAPositionOutside) {
  const auto board = rows({{1}});
  const auto row = numbers({2});
  const std::pair<double, const char*> wrong[] = {
      {-1, "-1"}, {2, "2"}, {NAN, "nan"}, {INFINITY, "inf"}};
  for (const auto& [position, name] : wrong)
    EXPECT_EQ(error_of([&] { with_row_inserted(board.get(), position, 0, row.get()); }),
              std::string("argument 2 (position) must be 0 to 1, got ") + name);
}

TEST(InsertRow, RefusesAnotherAxis) {
  EXPECT_EQ(error_of([] { with_row_inserted(nullptr, 0, 1, nullptr); }),
            "argument 3 (axis) must be 0, which means rows, got 1");
}

TEST(InsertRow, RefusesARowOfAnotherLength) {
  EXPECT_EQ(error_of([] {
              with_row_inserted(rows({{1, 2}}).get(), 0, 0, numbers({1}).get());
            }),
            "argument 4 (row) must be as long as the other rows, 2 elements, got 1");
}

TEST(InsertRow, RefusesAFlatArrayOfRows) {
  EXPECT_EQ(error_of([] { with_row_inserted(numbers({1}).get(), 0, 0, numbers({1}).get()); }),
            "argument 1 must be an array of rows, but element 0 is not a row");
}

TEST(Split, CutsAtEverySeparator) {
  const auto result = split("a;b;;c", ";");
  EXPECT_EQ(to_strings(result.get()), (Strings{"a", "b", "", "c"}));
  EXPECT_EQ(result->flags, uint32_t{QOR_FLAG_NESTED | QOR_FLAG_STRINGS});
}

TEST(Split, KeepsEmptyPartsAtBothEnds) {
  EXPECT_EQ(to_strings(split(";a;", ";").get()), (Strings{"", "a", ""}));
  EXPECT_EQ(to_strings(split("", ";").get()), (Strings{""}));
}

TEST(Split, TakesLongSeparators) {
  EXPECT_EQ(to_strings(split("a--b-c---d", "--").get()), (Strings{"a", "b-c", "-d"}));
}

TEST(Split, KeepsNulBytes) {
  const std::string text("a\0b;c", 5);
  EXPECT_EQ(to_strings(split(text, ";").get()), (Strings{std::string("a\0b", 3), "c"}));
}

TEST(Split, TakesANulByteAsSeparator) {
  EXPECT_EQ(to_strings(split(std::string_view("a\0b", 3), std::string_view("\0", 1)).get()),
            (Strings{"a", "b"}));
}

TEST(Split, StaysLinearWhenEveryByteMisleads) {
  const std::string text(1000000, 'a');
  const auto separator = std::string(250000, 'a') + "ba"; // by a plain loop 2 * 10^11 comparisons
  EXPECT_EQ(to_strings(split(text, separator).get()), Strings{text});
}

TEST(Split, RefusesAnEmptySeparator) {
  EXPECT_EQ(error_of([] { split("a", ""); }),
            "argument 2 (separator) must be at least one character, got \"\"");
}

} // namespace
