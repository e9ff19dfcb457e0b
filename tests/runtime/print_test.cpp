// What the print functions and traces write.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "runtime/print.h"

namespace {

template<typename Write>
std::string printed(Write write) {
  testing::internal::CaptureStdout();
  write();
  std::fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

std::string printed_double(double value) {
  return printed([value] { qor_print_double(value); });
}

std::string formatted(double value) {
  std::array<char, 64> buffer{};
  qor_format_double(buffer.data(), value);
  return buffer.data();
}

TEST(PrintDouble, DropsABarePoint) {
  EXPECT_EQ(printed_double(100.0), "100");
  EXPECT_EQ(printed_double(3.0), "3");
  EXPECT_EQ(printed_double(-0.0), "-0");
}

TEST(PrintDouble, DropsTrailingZeros) {
  EXPECT_EQ(printed_double(0.1), "0.1");
  EXPECT_EQ(printed_double(2.5), "2.5");
  EXPECT_EQ(printed_double(-1234.5625), "-1234.5625");
}

TEST(PrintDouble, KeepsSixDecimals) {
  EXPECT_EQ(printed_double(1.0 / 3.0), "0.333333");
  EXPECT_EQ(printed_double(0.0000004), "0");
}

TEST(PrintDouble, OfAHugeNumberPrintsTheFirst63Characters) {
  std::array<char, 512> whole{};
  const int length = std::snprintf(whole.data(), whole.size(), "%.6f", 1e300);
  ASSERT_GT(length, 63);
  EXPECT_EQ(printed_double(1e300), std::string(whole.data(), 63));
}

TEST(PrintDouble, LeavesTextWithoutAPointAlone) {
  EXPECT_EQ(printed_double(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(printed_double(-std::numeric_limits<double>::infinity()), "-inf");
  EXPECT_EQ(printed_double(std::nan("")), "nan");
}

TEST(FormatDouble, WritesWhatPrintDoublePrints) {
  for (const double value : {0.0, -0.0, 1.5, 1e15, 123456.789, -7.25e-3, 1e300, -1e56, 1e55})
    EXPECT_EQ(formatted(value), printed_double(value));
}

TEST(FormatDouble, TrimsTextOf63BytesAndCutsTextOf64) {
  EXPECT_EQ(formatted(1e55).size(), 56U) << "63 bytes with decimals, 56 without";
  EXPECT_EQ(formatted(1e56).size(), 63U) << "64 bytes with decimals: cut, zeros and all";
}

TEST(Print, WritesStringsAsTheyAre) {
  EXPECT_EQ(printed([] { qor_print_str("100 %s\n"); }), "100 %s\n");
  EXPECT_EQ(printed([] { qor_print_str(nullptr); }), "");
}

TEST(Print, WritesIntegersInDecimal) {
  EXPECT_EQ(printed([] { qor_print_int(INT64_MIN); }), "-9223372036854775808");
}

TEST(Print, WritesTruthValuesAsWords) {
  EXPECT_EQ(printed([] { qor_print_bool(-1); }), "TRUE");
  EXPECT_EQ(printed([] { qor_print_bool(0); }), "FALSE");
  EXPECT_EQ(printed([] { qor_print_bool(int64_t{1} << 32); }), "TRUE");
}

TEST(Print, WritesSpaceAndNewline) {
  EXPECT_EQ(printed([] {
              qor_print_space();
              qor_print_nl();
            }),
            " \n");
}

TEST(Trace, NamesFileAndLine) {
  testing::internal::CaptureStderr();
  qor_trace("board.cpp", 12);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "[TRACE] board.cpp:12\n");
}

TEST(Trace, WithoutAFileNameNamesTheLineAlone) {
  testing::internal::CaptureStderr();
  qor_trace("", 7);
  qor_trace(nullptr, 8);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "[TRACE] line 7\n[TRACE] line 8\n");
}

} // namespace
