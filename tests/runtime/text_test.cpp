// Strings: cutting, searching, comparing, padding.
#include <gtest/gtest.h>

#include <string>

#include "runtime/error.h"
#include "runtime/qorrt.h"
#include "runtime/text.h"
#include "tests/fakes/binary_strings.h"
#include "tests/runtime/values.h"

namespace {

using namespace std::string_literals;
using kavo::test::take;

class Text : public testing::Test {
protected:
  void SetUp() override { qor_err_clear(); }
  void TearDown() override {
    EXPECT_EQ(kavo::fakes::registered_strings(), 0U) << "a freed byte string is still registered";
    qor_err_clear();
  }
};

// A byte string of three bytes, the middle one NUL.
class ByteString {
public:
  ByteString() : text_(qor_str_concat("a?b", "")) {
    text_[1] = '\0';
    qorrt_register_binary(text_, 3);
  }
  ByteString(const ByteString&) = delete;
  ByteString& operator=(const ByteString&) = delete;
  ~ByteString() { qor_str_free(text_); }
  const char* get() const { return text_; }

private:
  char* text_;
};

using Concat = Text;

TEST_F(Concat, PutsOneBehindTheOther) {
  EXPECT_EQ(take(qor_str_concat("ab", "cd")), "abcd");
  EXPECT_EQ(take(qor_str_concat(nullptr, "cd")), "cd");
  EXPECT_EQ(take(qor_str_concat("ab", nullptr)), "ab");
  EXPECT_EQ(take(qor_str_concat(nullptr, nullptr)), "");
}

TEST_F(Concat, KeepsByteStringsWhole) {
  const ByteString bytes;
  EXPECT_EQ(take(qor_str_concat(bytes.get(), "c")), "a\0bc"s);
}

using Copy = Text;

TEST_F(Copy, IsNew) {
  const auto* original = "abc";
  auto* copy = qor_str_str(original);
  EXPECT_NE(copy, original);
  EXPECT_EQ(take(copy), "abc");
  EXPECT_EQ(take(qor_str_str(nullptr)), "");
}

using Length = Text;

TEST_F(Length, CountsBytes) {
  EXPECT_EQ(qor_len_str("abc"), 3);
  EXPECT_EQ(qor_len_str("ü"), 2);
  EXPECT_EQ(qor_len_str(nullptr), 0);
}

TEST_F(Length, OfAByteStringIsTheRegisteredOne) {
  EXPECT_EQ(qor_len_str(ByteString().get()), 3);
}

using Chr = Text;

TEST_F(Chr, OfZeroHasLengthOne) {
  EXPECT_EQ(take(qor_chr(0)), "\0"s);
}

TEST_F(Chr, IsTheByteOfTheLowEightBits) {
  EXPECT_EQ(take(qor_chr(65)), "A");
  EXPECT_EQ(take(qor_chr(256 + 65)), "A");
  EXPECT_EQ(take(qor_chr(-1)), "\xFF");
}

using Asc = Text;

TEST_F(Asc, IsTheFirstByte) {
  EXPECT_EQ(qor_asc("A"), 65);
  EXPECT_EQ(qor_asc("\xFF"), 255);
  EXPECT_EQ(qor_asc(""), 0);
  EXPECT_EQ(qor_asc(nullptr), 0);
}

using Mid = Text;

TEST_F(Mid, CutsFromStart) {
  EXPECT_EQ(take(qor_mid("ABCDE", 1, 3)), "BCD");
  EXPECT_EQ(take(qor_mid("ABCDE", 1, -1)), "BCDE");
  EXPECT_EQ(take(qor_mid("ABCDE", 1, 100)), "BCDE");
  EXPECT_EQ(take(qor_mid("ABCDE", 1, INT64_MAX)), "BCDE");
  EXPECT_EQ(take(qor_mid("ABCDE", 1, 0)), "");
}

TEST_F(Mid, FromTheEndIsEmptyWithoutError) {
  EXPECT_EQ(take(qor_mid("ABC", 3, 5)), "");
  EXPECT_EQ(qor_err_code(), 0);
}

TEST_F(Mid, FromPastTheEndSetsTheError) {
  EXPECT_EQ(take(qor_mid("ABC", 4, 1)), "");
  EXPECT_EQ(qor_err_code(), 1);
  EXPECT_EQ(take(qor_err_msg()), "MID: index out of range");
}

TEST_F(Mid, FromANegativeStartSetsTheError) {
  EXPECT_EQ(take(qor_mid("ABC", -1, 1)), "");
  EXPECT_EQ(qor_err_code(), 1);
}

TEST_F(Mid, OfNullIsThatOfTheEmptyString) {
  EXPECT_EQ(take(qor_mid(nullptr, 0, 1)), "");
  EXPECT_EQ(qor_err_code(), 0);
  EXPECT_EQ(take(qor_mid(nullptr, 1, 1)), "");
  EXPECT_EQ(qor_err_code(), 1);
}

TEST_F(Mid, RegistersItsResult) {
  auto* cut = qor_mid("ABC", 0, 2);
  EXPECT_EQ(qorrt_strlen(cut), 2);
  qor_str_free(cut);
}

TEST_F(Mid, CutsByteStrings) {
  const ByteString bytes;
  EXPECT_EQ(take(qor_mid(bytes.get(), 1, 2)), "\0b"s);
}

using MidLax = Text;

TEST_F(MidLax, ClampsWithoutError) {
  EXPECT_EQ(take(qor_mid_lax("ABC", -5, 2)), "AB");
  EXPECT_EQ(take(qor_mid_lax("ABC", 1, 1)), "B");
  EXPECT_EQ(take(qor_mid_lax("ABC", 9, 2)), "");
  EXPECT_EQ(take(qor_mid_lax(nullptr, 9, 2)), "");
  EXPECT_EQ(qor_err_code(), 0);
}

using Left = Text;

TEST_F(Left, IsTheFirstBytes) {
  EXPECT_EQ(take(qor_left("ABC", 2)), "AB");
  EXPECT_EQ(take(qor_left("ABC", 9)), "ABC");
  EXPECT_EQ(take(qor_left("ABC", 0)), "");
  EXPECT_EQ(take(qor_left("ABC", -1)), "ABC");
  EXPECT_EQ(take(qor_left(nullptr, 1)), "");
}

using Right = Text;

TEST_F(Right, IsTheLastBytes) {
  EXPECT_EQ(take(qor_right("ABC", 2)), "BC");
  EXPECT_EQ(take(qor_right("ABC", 0)), "");
  EXPECT_EQ(take(qor_right(nullptr, 1)), "");
  EXPECT_EQ(qor_err_code(), 0);
}

TEST_F(Right, OfAllBytesIsAPlainCopy) {
  auto* copy = qor_right("ABC", 3);
  EXPECT_LT(qorrt_strlen(copy), 0);
  EXPECT_EQ(take(copy), "ABC");
  EXPECT_EQ(take(qor_right(ByteString().get(), 9)), "a\0b"s);
}

TEST_F(Right, OfANegativeCountSetsTheError) {
  EXPECT_EQ(take(qor_right("ABC", -1)), "");
  EXPECT_EQ(take(qor_right("ABC", INT64_MIN)), "");
  EXPECT_EQ(qor_err_code(), 1);
}

using Slice = Text;

TEST_F(Slice, TakesFromEitherEndAndClamps) {
  EXPECT_EQ(take(qor_str_slice("ABC", 2, 1)), "AB");
  EXPECT_EQ(take(qor_str_slice("ABC", 2, 0)), "BC");
  EXPECT_EQ(take(qor_str_slice("ABC", 9, 0)), "ABC");
  EXPECT_EQ(take(qor_str_slice("ABC", -1, 1)), "");
  EXPECT_EQ(take(qor_str_slice(nullptr, 1, 1)), "");
  EXPECT_EQ(qor_err_code(), 0);
}

using Instr = Text;

TEST_F(Instr, FindsTheFirstOccurrence) {
  EXPECT_EQ(qor_instr("ABCABC", "BC"), 1);
  EXPECT_EQ(qor_instr("ABC", "ABC"), 0);
}

TEST_F(Instr, OfAnEmptyNeedleIsZero) {
  EXPECT_EQ(qor_instr("ABC", ""), 0);
  EXPECT_EQ(qor_instr("", ""), 0);
}

TEST_F(Instr, OfALongerNeedleIsMinusOne) {
  EXPECT_EQ(qor_instr("AB", "ABC"), -1);
}

TEST_F(Instr, OfAnAbsentNeedleOrNullIsMinusOne) {
  EXPECT_EQ(qor_instr("ABC", "X"), -1);
  EXPECT_EQ(qor_instr(nullptr, ""), -1);
  EXPECT_EQ(qor_instr("ABC", nullptr), -1);
}

TEST_F(Instr, SearchesByteStringsWhole) {
  const ByteString bytes;
  EXPECT_EQ(qor_instr(bytes.get(), "b"), 2);
  auto* zero = qor_chr(0);
  EXPECT_EQ(qor_instr(bytes.get(), zero), 1);
  qor_str_free(zero);
}

using Equality = Text;

TEST_F(Equality, ComparesLengthAndBytes) {
  EXPECT_EQ(qor_str_eq("ab", std::string("ab").c_str()), 1);
  EXPECT_EQ(qor_str_eq("ab", "abc"), 0);
  EXPECT_EQ(qor_str_ne("ab", "ac"), 1);
  EXPECT_EQ(qor_str_ne("ab", std::string("ab").c_str()), 0);
  EXPECT_EQ(qor_str_eq(ByteString().get(), "a"), 0);
}

TEST_F(Equality, OfNull) {
  EXPECT_EQ(qor_str_eq(nullptr, nullptr), 1);
  EXPECT_EQ(qor_str_eq(nullptr, ""), 0);
  EXPECT_EQ(qor_str_ne("", nullptr), 1);
}

using Comparison = Text;

TEST_F(Comparison, OrdersByUnsignedBytes) {
  EXPECT_EQ(qor_str_cmp("a", "b"), -1);
  EXPECT_EQ(qor_str_cmp("b", "a"), 1);
  EXPECT_EQ(qor_str_cmp("a", std::string("a").c_str()), 0);
  EXPECT_EQ(qor_str_cmp("\xFF", "a"), 1);
}

TEST_F(Comparison, PutsAPrefixFirst) {
  EXPECT_EQ(qor_str_cmp("ab", "abc"), -1);
  EXPECT_EQ(qor_str_cmp("abc", "ab"), 1);
  EXPECT_EQ(qor_str_cmp(ByteString().get(), "a"), 1);
}

TEST_F(Comparison, PutsNullFirst) {
  EXPECT_EQ(qor_str_cmp(nullptr, nullptr), 0);
  EXPECT_EQ(qor_str_cmp(nullptr, ""), -1);
  EXPECT_EQ(qor_str_cmp("", nullptr), 1);
}

using Case = Text;

TEST_F(Case, MapsAsciiLettersOnly) {
  EXPECT_EQ(take(qor_upper("straße [1] @z`")), "STRAßE [1] @Z`");
  EXPECT_EQ(take(qor_lower("GRÜN [1] @Z`")), "grÜn [1] @z`");
  EXPECT_EQ(take(qor_upper(nullptr)), "");
}

using Trim = Text;

TEST_F(Trim, RemovesWhiteSpaceWhereItIsAskedTo) {
  EXPECT_EQ(take(qor_trim(" \t\n\v\f\ra b ")), "a b");
  EXPECT_EQ(take(qor_ltrim("  a ")), "a ");
  EXPECT_EQ(take(qor_rtrim("  a ")), "  a");
}

TEST_F(Trim, OfNothingButWhiteSpaceIsEmpty) {
  for (auto* trim : {qor_trim, qor_ltrim, qor_rtrim}) {
    EXPECT_EQ(take(trim(" \t ")), "");
    EXPECT_EQ(take(trim("")), "");
    EXPECT_EQ(take(trim(nullptr)), "");
  }
}

using Repeat = Text;

TEST_F(Repeat, RepeatsText) {
  EXPECT_EQ(take(qor_str_repeat("ab", 3)), "ababab");
  EXPECT_EQ(take(qor_str_repeat("ab", 0)), "");
  EXPECT_EQ(take(qor_str_repeat("ab", -1)), "");
  EXPECT_EQ(take(qor_str_repeat("", INT64_MAX)), "");
  EXPECT_EQ(take(qor_str_repeat(nullptr, 3)), "");
}

TEST_F(Repeat, MakesSpaces) {
  EXPECT_EQ(take(qor_space(3)), "   ");
  EXPECT_EQ(take(qor_space(0)), "");
  EXPECT_EQ(take(qor_space(INT64_MIN)), "");
}

using Pad = Text;

TEST_F(Pad, FillsUpToTheWidth) {
  EXPECT_EQ(take(qor_lpad("7", 3, "0")), "007");
  EXPECT_EQ(take(qor_rpad("7", 3, "0")), "700");
  EXPECT_EQ(take(qor_lpad2("7", 3)), "  7");
  EXPECT_EQ(take(qor_rpad2("7", 3)), "7  ");
}

TEST_F(Pad, RepeatsAndCutsALongPad) {
  EXPECT_EQ(take(qor_lpad("7", 6, "ab")), "ababa7");
  EXPECT_EQ(take(qor_rpad("7", 6, "ab")), "7ababa");
  EXPECT_EQ(take(qor_lpad("7", 2, "abc")), "a7");
}

TEST_F(Pad, TakesAMissingPadAsASpace) {
  EXPECT_EQ(take(qor_lpad("7", 2, "")), " 7");
  EXPECT_EQ(take(qor_rpad("7", 2, nullptr)), "7 ");
  EXPECT_EQ(take(qor_rpad(nullptr, 2, "x")), "xx");
}

TEST_F(Pad, CopiesATextThatIsLongEnough) {
  EXPECT_EQ(take(qor_lpad("abc", 3, "x")), "abc");
  EXPECT_EQ(take(qor_rpad("abc", -1, "x")), "abc");
}

using Insert = Text;

TEST_F(Insert, PutsTextInAtAClampedPosition) {
  EXPECT_EQ(take(qor_insert_str("ad", "bc", 1)), "abcd");
  EXPECT_EQ(take(qor_insert_str("ad", "bc", -1)), "bcad");
  EXPECT_EQ(take(qor_insert_str("ad", "bc", 99)), "adbc");
  EXPECT_EQ(take(qor_insert_str(nullptr, nullptr, 0)), "");
}

using Ends = Text;

TEST_F(Ends, AreCompared) {
  EXPECT_EQ(qor_startswith("abc", "ab"), 1);
  EXPECT_EQ(qor_startswith("abc", "bc"), 0);
  EXPECT_EQ(qor_startswith("a", "ab"), 0);
  EXPECT_EQ(qor_endswith("abc", "bc"), 1);
  EXPECT_EQ(qor_endswith("abc", "ab"), 0);
  EXPECT_EQ(qor_startswith("abc", nullptr), 1);
  EXPECT_EQ(qor_endswith(nullptr, "a"), 0);
}

} // namespace
