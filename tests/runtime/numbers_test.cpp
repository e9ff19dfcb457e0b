// Numbers as integers, as text in both locales, and the mathematical helpers.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "runtime/numbers.h"
#include "runtime/numbers_text.h"
#include "tests/runtime/values.h"
#include "tests/support/rounds.h"

namespace {

using kavo::test::take;

constexpr double infinity = std::numeric_limits<double>::infinity();
const double nan = std::nan("");

class German : public testing::Test {
protected:
  void SetUp() override { qor_setlocale("de_DE"); }
  void TearDown() override { qor_setlocale(nullptr); }
};

TEST(Int, TruncatesTowardZero) {
  EXPECT_EQ(qor_int(-0.5), 0);
  EXPECT_EQ(qor_int(-2.5), -2);
  EXPECT_EQ(qor_int(2.9), 2);
}

TEST(Int, SaturatesAndTakesNaNAsZero) {
  EXPECT_EQ(qor_int(1e300), INT64_MAX);
  EXPECT_EQ(qor_int(-infinity), INT64_MIN);
  EXPECT_EQ(qor_int(9223372036854775808.0), INT64_MAX);
  EXPECT_EQ(qor_int(-9223372036854775808.0), INT64_MIN);
  EXPECT_EQ(qor_int(nan), 0);
}

TEST(Cint, SaturatesAtTheSigned32BitRange) {
  EXPECT_EQ(qor_cint(3e9), 2147483647);
  EXPECT_EQ(qor_cint(-3e9), -2147483648);
  EXPECT_EQ(qor_cint(-1.9), -1);
  EXPECT_EQ(qor_cint(nan), 0);
}

TEST(Csng, RoundsToA32BitFloat) {
  EXPECT_EQ(qor_csng(0.1), static_cast<double>(0.1F));
  EXPECT_EQ(qor_csng(1e300), infinity);
}

TEST(Cbool, IsOneForEverythingButZero) {
  EXPECT_EQ(qor_cbool(-0.0), 0);
  EXPECT_EQ(qor_cbool(1e-300), 1);
  EXPECT_EQ(qor_cbool(nan), 1);
}

TEST(Helpers, AreThePlatformsFunctions) {
  EXPECT_EQ(qor_abs(-2.5), 2.5);
  EXPECT_EQ(qor_sqr(9.0), 3.0);
  EXPECT_TRUE(std::isnan(qor_sqr(-1.0)));
  EXPECT_EQ(qor_sin(1.0), std::sin(1.0));
  EXPECT_EQ(qor_cos(1.0), std::cos(1.0));
}

TEST(Helpers, RoundInEveryDirection) {
  EXPECT_EQ(qor_floor(-1.5), -2.0);
  EXPECT_EQ(qor_ceil(-1.5), -1.0);
  EXPECT_EQ(qor_round(-1.5), -2.0);
  EXPECT_EQ(qor_round(2.5), 3.0);
  EXPECT_EQ(qor_trunc(-1.5), -1.0);
}

TEST(RoundTo, RoundsDecimalsTiesAwayFromZero) {
  EXPECT_EQ(qor_round_p(0.125, 2), 0.13);
  EXPECT_EQ(qor_round_p(-0.125, 2), -0.13);
  EXPECT_EQ(qor_round_p(1250.0, -2), 1300.0);
  EXPECT_EQ(qor_round_p(2.5, 0), 3.0);
}

TEST(RoundTo, LeavesNumbersWithoutSuchDecimalsAlone) {
  EXPECT_EQ(qor_round_p(1e308, 5), 1e308);
  EXPECT_EQ(qor_round_p(1.5, 400), 1.5);
  EXPECT_EQ(qor_round_p(1.5, -400), 0.0);
  EXPECT_EQ(qor_round_p(infinity, 2), infinity);
}

TEST(IntToStr, WritesPlainDecimals) {
  EXPECT_EQ(take(qor_int_to_str(1000)), "1000");
  EXPECT_EQ(take(qor_int_to_str(INT64_MIN)), "-9223372036854775808");
}

TEST_F(German, IntegersAreGroupedByThrees) {
  EXPECT_EQ(take(qor_int_to_str(1000)), "1.000");
  EXPECT_EQ(take(qor_int_to_str(1234567)), "1.234.567");
  EXPECT_EQ(take(qor_int_to_str(-1000)), "-1.000");
  EXPECT_EQ(take(qor_int_to_str(999)), "999");
  EXPECT_EQ(take(qor_int_to_str(-999)), "-999");
  EXPECT_EQ(take(qor_int_to_str(0)), "0");
  EXPECT_EQ(take(qor_int_to_str(INT64_MIN)), "-9.223.372.036.854.775.808");
}

TEST(DoubleToStr, WritesWholeNumbersAsIntegers) {
  EXPECT_EQ(take(qor_double_to_str(2.0)), "2");
  EXPECT_EQ(take(qor_double_to_str(-300.0)), "-300");
  EXPECT_EQ(take(qor_double_to_str(-0.0)), "0");
  EXPECT_EQ(take(qor_double_to_str(999999999999999.0)), "999999999999999");
}

TEST(DoubleToStr, ChangesItsFormAtTheEdgesOfPlainNotation) {
  EXPECT_EQ(take(qor_double_to_str(0.0001)), "0.0001");
  EXPECT_EQ(take(qor_double_to_str(0.00009999996)), "0.0001");
  EXPECT_EQ(take(qor_double_to_str(0.0000999999)), "9.99999e-05");
  EXPECT_EQ(take(qor_double_to_str(999999.4)), "999999");
  EXPECT_EQ(take(qor_double_to_str(999999.6)), "1e+06");
  EXPECT_EQ(take(qor_double_to_str(9.9999996)), "10");
  EXPECT_EQ(take(qor_double_to_str(100000.5)), "100000") << "a tie goes to the even digit";
  EXPECT_EQ(take(qor_double_to_str(100001.5)), "100002");
}

TEST(DoubleToStr, WritesOthersInSixSignificantDigits) {
  EXPECT_EQ(take(qor_double_to_str(2.5)), "2.5");
  EXPECT_EQ(take(qor_double_to_str(0.1)), "0.1");
  EXPECT_EQ(take(qor_double_to_str(1e15)), "1e+15");
  EXPECT_EQ(take(qor_double_to_str(1e20)), "1e+20");
  EXPECT_EQ(take(qor_double_to_str(infinity)), "inf");
  EXPECT_EQ(take(qor_double_to_str(nan)), "nan");
}

TEST_F(German, DoublesHaveACommaAndGroupedIntegers) {
  EXPECT_EQ(take(qor_double_to_str(2.5)), "2,5");
  EXPECT_EQ(take(qor_double_to_str(1234567.0)), "1.234.567");
  EXPECT_EQ(take(qor_double_to_str(1.5e20)), "1,5e+20");
  EXPECT_EQ(take(qor_double_to_str(1e20)), "1e+20");
}

TEST_F(German, TheOtherConversionsStayPlain) {
  EXPECT_EQ(take(qor_str(1234.5)), "1234.5");
}

TEST(Setlocale, IsGermanForNamesThatContainDe) {
  for (const auto& [name, expected] : {std::pair{"de", "2,5"},
                                       {"DE_AT", "2,5"},
                                       {"modern", "2,5"},
                                       {"De", "2.5"},
                                       {"en", "2.5"}}) {
    qor_setlocale(name);
    EXPECT_EQ(take(qor_double_to_str(2.5)), expected) << name;
  }
  qor_setlocale("de");
  qor_setlocale(nullptr);
  EXPECT_EQ(take(qor_double_to_str(2.5)), "2.5");
}

TEST(Str, ThreeNamesTrimFixedDecimals) {
  for (auto* convert : {qor_str, qor_tostr, qor_cstr}) {
    EXPECT_EQ(take(convert(2.5)), "2.5");
    EXPECT_EQ(take(convert(100.0)), "100");
    EXPECT_EQ(take(convert(1e15)), "1000000000000000");
    EXPECT_EQ(take(convert(1e300)).size(), 63U);
  }
}

TEST(StrBool, IsAWord) {
  EXPECT_EQ(take(qor_str_bool(2)), "TRUE");
  EXPECT_EQ(take(qor_str_bool(0)), "FALSE");
}

TEST(Digits, AreWrittenWithoutLeadingZeros) {
  EXPECT_EQ(take(qor_hex(0xDEADBEEF)), "DEADBEEF");
  EXPECT_EQ(take(qor_oct(8)), "10");
  EXPECT_EQ(take(qor_bin(10)), "1010");
  for (auto* convert : {qor_hex, qor_oct, qor_bin})
    EXPECT_EQ(take(convert(0)), "0");
}

TEST(Digits, TakeAll64Bits) {
  EXPECT_EQ(take(qor_hex(UINT64_MAX)), "FFFFFFFFFFFFFFFF");
  EXPECT_EQ(take(qor_oct(UINT64_MAX)), "1777777777777777777777");
  EXPECT_EQ(take(qor_bin(UINT64_MAX)), std::string(64, '1'));
}

TEST(Val, ReadsTheLeadingNumber) {
  EXPECT_EQ(qor_val("12.5 apples"), 12.5);
  EXPECT_EQ(qor_val("  -3"), -3.0);
  EXPECT_EQ(qor_val("apples"), 0.0);
  EXPECT_EQ(qor_val(""), 0.0);
  EXPECT_EQ(qor_val(nullptr), 0.0);
}

TEST(Val, ReadsWhatAtofReads) {
  for (const char* text : {"1e400",
                           "-1e400",
                           "1e-400",
                           "4.9e-324",
                           "0x1p4",
                           "-0x10",
                           "+5",
                           ".5",
                           "5.",
                           "1e",
                           "1e+",
                           "-",
                           "inf",
                           "-nan",
                           "1_000",
                           "0",
                           "-0",
                           "00012",
                           "9007199254740993",
                           "1,5",
                           "\t7"}) {
    const double expected = std::atof(text);
    const double value = qor_val(text);
    EXPECT_TRUE(value == expected || (std::isnan(value) && std::isnan(expected))) << text;
    EXPECT_EQ(std::signbit(value), std::signbit(expected)) << text;
  }
}

std::string printf_text(const char* format, double value) {
  std::array<char, 400> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, value);
  return buffer.data();
}

// Numbers of all sizes and shapes, the same ones in every run.
template<typename Check>
void for_many_numbers(Check check) {
  std::mt19937_64 random(1); // the same numbers every time
  for (int i = kavo::test::rounds(20000); i > 0; --i) {
    check(std::bit_cast<double>(random()));
    check(static_cast<double>(static_cast<int64_t>(random()) >> (random() % 64)));
    check(static_cast<double>(random() % 2000000) / 1000.0 - 1000.0);
    check(static_cast<double>(random() % 20000001) / 2e7);
    check(static_cast<double>(random() % 20000001) * 0.05);
    const auto tie = static_cast<double>(random() % 200000000) / 128.0; // of the sixth decimal
    check(tie);
    check(std::nextafter(tie, 0.0));
    check(std::nextafter(-tie, -INFINITY));
    check(std::ldexp(static_cast<double>(random() >> 11), -70 + static_cast<int>(random() % 40)));
  }
}

TEST(DoubleToStrProperty, IsPrintfsTextForEveryNumber) {
  for_many_numbers([](double x) {
    const bool is_whole = std::fabs(x) < 1e15 && x == std::trunc(x);
    ASSERT_EQ(take(qor_double_to_str(x)),
              printf_text(is_whole ? "%.0f" : "%g", is_whole ? x + 0.0 : x));
  });
}

TEST(StrProperty, IsPrintfsTextTrimmedForEveryNumber) {
  for_many_numbers([](double x) {
    auto expected = printf_text("%.6f", x);
    if (expected.size() >= 64) {
      expected.resize(63);
    } else if (expected.find('.') != std::string::npos) {
      expected.resize(expected.find_last_not_of('0') + 1);
      if (expected.back() == '.')
        expected.pop_back();
    }
    ASSERT_EQ(take(qor_str(x)), expected);
  });
}

TEST(ValProperty, ReadsBackWhatWasWritten) {
  for_many_numbers([](double x) {
    const auto text = printf_text("%.17g", x);
    if (!std::isnan(x)) {
      ASSERT_EQ(qor_val(text.c_str()), x) << text;
    }
  });
}

} // namespace
