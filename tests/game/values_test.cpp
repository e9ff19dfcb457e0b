// How the game reads, writes and owns the runtime's values.
#include <cmath>

#include "game/values.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

using ValuesTest = GameTest;

Dynamic tagged(uint32_t tag, qor_slot slot) {
  return {slot, tag};
}

qor_slot whole(int64_t value) {
  qor_slot slot{};
  slot.i64 = value;
  return slot;
}

// ---- tagged values as numbers -------------------------------------------------------------------

TEST_F(ValuesTest, ADoubleIsReadAsItStands) {
  qor_slot slot{};
  slot.f64 = -2.25;
  EXPECT_EQ(as_number(tagged(QOR_TAG_FLOAT64, slot)), -2.25);
}

TEST_F(ValuesTest, AnIntegerIsReadUnderBothItsTags) {
  EXPECT_EQ(as_number(tagged(QOR_TAG_INT64, whole(-7))), -7.0);
  EXPECT_EQ(as_number(tagged(8, whole(-7))), -7.0);
}

TEST_F(ValuesTest, ATextIsReadByItsLeadingNumber) {
  qor_slot slot{};
  slot.str = "12.5 points";
  EXPECT_EQ(as_number(tagged(QOR_TAG_STRING, slot)), 12.5);
  slot.str = "none";
  EXPECT_EQ(as_number(tagged(QOR_TAG_STRING, slot)), 0.0);
}

TEST_F(ValuesTest, AHostValueIsReadThroughTheHost) {
  EXPECT_EQ(as_number(tagged(QOR_TAG_HOST, whole(41))), 41.5) << "the recording host adds a half";
}

TEST_F(ValuesTest, ArraysAndObjectsCountAsZero) {
  for (const auto tag :
       {uint32_t{QOR_TAG_ARRAY}, uint32_t{QOR_TAG_OBJECT}, uint32_t{QOR_TAG_FUNCREF}, 99U})
    EXPECT_EQ(as_number(tagged(tag, whole(1 << 20))), 0.0) << "tag " << tag;
}

TEST_F(ValuesTest, AnElementOutOfRangeIsTheNumberZero) {
  const Array array = numbers({5, 6});
  EXPECT_EQ(number_at(array.get(), 1), 6.0);
  EXPECT_EQ(number_at(array.get(), 2), 0.0);
  EXPECT_EQ(number_at(array.get(), -1), 0.0);
  EXPECT_EQ(number_at(nullptr, 0), 0.0);
}

TEST_F(ValuesTest, AnElementOfATextArrayIsReadAsANumber) {
  const Array array = texts(2, "30");
  EXPECT_EQ(number_at(array.get(), 0), 30.0);
  EXPECT_EQ(element(array.get(), 0).tag, QOR_TAG_STRING);
}

TEST_F(ValuesTest, NoValueCountsAsNotSet) {
  EXPECT_FALSE(is_set(0.0));
  EXPECT_FALSE(is_set(-0.0));
  EXPECT_FALSE(is_set(std::nan("")));
  EXPECT_TRUE(is_set(-1.0));
  EXPECT_TRUE(is_set(1e-300));
}

// ---- matrices -----------------------------------------------------------------------------------

TEST_F(ValuesTest, CellsOutsideAMatrixReadZeroAndTakeNothing) {
  const Array matrix = zero_matrix(2, 3);
  put_cell(matrix.get(), 1, 2, 9.0);
  EXPECT_EQ(cell_at(matrix.get(), 1, 2), 9.0);
  for (const auto& [row, column] : {std::pair{-1, 0}, {2, 0}, {0, -1}, {0, 3}}) {
    put_cell(matrix.get(), row, column, 5.0);
    EXPECT_EQ(cell_at(matrix.get(), row, column), 0.0);
  }
}

TEST_F(ValuesTest, ReversedRowsStandInReverseOrderAndStayTheMatrixsOwn) {
  const Array matrix = zero_matrix(3, 1);
  put_cell(matrix.get(), 0, 0, 1.0);
  const SharedRows reversed = reversed_rows(matrix);
  EXPECT_EQ(cell_at(reversed.get(), 2, 0), 1.0);
  put_cell(reversed.get(), 2, 0, 4.0);
  EXPECT_EQ(cell_at(matrix.get(), 0, 0), 4.0);
}

TEST_F(ValuesTest, AMatrixTurnedUpsideDownKeepsItsRows) {
  Array matrix = zero_matrix(3, 1);
  put_cell(matrix.get(), 0, 0, 1.0);
  matrix = reverse_rows(std::move(matrix));
  EXPECT_EQ(qor_array_len(matrix.get()), 3);
  EXPECT_EQ(cell_at(matrix.get(), 2, 0), 1.0);
}

// ---- texts --------------------------------------------------------------------------------------

TEST_F(ValuesTest, ATextPutIntoAnArrayReplacesTheOldOne) {
  const Array names = texts(2, "---");
  put_text(names.get(), 1, "ABC");
  put_text(names.get(), 2, "beyond the end");
  put_text(names.get(), -1, "before the start");
  EXPECT_STREQ(qor_array_get_str(names.get(), 0), "---");
  EXPECT_STREQ(qor_array_get_str(names.get(), 1), "ABC");
}

TEST_F(ValuesTest, ATextMayBePutIntoItsOwnSlot) {
  const Array names = texts(1, "self");
  put_text(names.get(), 0, qor_array_get_str(names.get(), 0));
  EXPECT_STREQ(qor_array_get_str(names.get(), 0), "self");
}

TEST_F(ValuesTest, LabelsJoinAWordAndANumber) {
  EXPECT_STREQ(chars(label("Level:  ", 12)), "Level:  12");
  EXPECT_STREQ(chars(label("+", -3)), "+-3");
  EXPECT_STREQ(chars(concat("a", "b")), "ab");
  EXPECT_STREQ(chars(Text()), "");
}

} // namespace
} // namespace kavo::test
