// Placeholders and what they become.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "runtime/format.h"
#include "tests/fakes/binary_strings.h"
#include "tests/runtime/values.h"

namespace {

using kavo::test::numbers;
using kavo::test::take;

std::string with(const char* format, double value) {
  return take(qor_format1(format, value));
}

TEST(Format, PutsArgumentsInOrder) {
  EXPECT_EQ(take(qor_format("{} + {} = {}", numbers({1, 2.5, 3.5}).get())), "1 + 2.5 = 3.5");
}

TEST(Format, CopiesTextWithoutPlaceholders) {
  EXPECT_EQ(take(qor_format("50 % } done", nullptr)), "50 % } done");
  EXPECT_EQ(take(qor_format(nullptr, nullptr)), "");
}

TEST(Format, TwoBracesAreOne) {
  EXPECT_EQ(with("{{{}", 1), "{1");
  EXPECT_EQ(with("{{}", 1), "{}");
}

TEST(Format, ABraceThatIsNeverClosedIsCopied) {
  EXPECT_EQ(with("a { b", 1), "a { b");
  EXPECT_EQ(with("{} { b", 1), "1 { b");
  EXPECT_EQ(with("{", 1), "{");
}

TEST(Format, PlaceholdersBeyondTheLastArgumentAreZero) {
  EXPECT_EQ(with("{} {} {.1f}", 1), "1 0 0.0");
  EXPECT_EQ(take(qor_format("{}", nullptr)), "0");
}

TEST(Format, SurplusArgumentsAreDropped) {
  EXPECT_EQ(take(qor_format2("{}", 1, 2)), "1");
}

TEST(Format, TakesOneToFourNumbers) {
  EXPECT_EQ(take(qor_format1("{}", 1)), "1");
  EXPECT_EQ(take(qor_format2("{}{}", 1, 2)), "12");
  EXPECT_EQ(take(qor_format3("{}{}{}", 1, 2, 3)), "123");
  EXPECT_EQ(take(qor_format4("{}{}{}{}", 1, 2, 3, 4)), "1234");
}

TEST(Format, WritesStringsOfAStringArray) {
  EXPECT_EQ(take(qor_format("{} and {:>3}", kavo::test::strings({"a", "b"}).get())), "a and   b");
}

TEST(FormatType, DTruncatesToAnInteger) {
  EXPECT_EQ(with("{d}", -2.9), "-2");
  EXPECT_EQ(with("{d}", 1e300), "9223372036854775807");
  EXPECT_EQ(with("{d}", std::nan("")), "0");
}

TEST(FormatType, XIsHexadecimalOfTheInteger) {
  EXPECT_EQ(with("{x}", 255.9), "ff");
  EXPECT_EQ(with("{X}", 255), "FF");
  EXPECT_EQ(with("{#x}", 255), "0xff");
  EXPECT_EQ(with("{#X}", 255), "0xFF");
  EXPECT_EQ(with("{x}", -1), "ffffffffffffffff");
}

TEST(FormatType, FHasSixDecimalsOrThePrecision) {
  EXPECT_EQ(with("{f}", 0.5), "0.500000");
  EXPECT_EQ(with("{.2f}", 0.125), "0.12") << "the nearest even, as printf";
  EXPECT_EQ(with("{.0f}", 2.5), "2");
  EXPECT_EQ(with("{.f}", 2.6), "3") << "a point without digits is precision 0";
}

TEST(FormatType, AnyOtherIsGeneralOrFixedWithAPrecision) {
  EXPECT_EQ(with("{}", 1e20), "1e+20");
  EXPECT_EQ(with("{e}", 1234567), "1.23457e+06");
  EXPECT_EQ(with("{.3}", 2.5), "2.500");
  EXPECT_EQ(with("{.1g}", 2.25), "2.2");
}

TEST(FormatPadding, AlignsRightUnlessToldOtherwise) {
  EXPECT_EQ(with("[{5}]", 42), "[   42]");
  EXPECT_EQ(with("[{>5}]", 42), "[   42]");
  EXPECT_EQ(with("[{<5}]", 42), "[42   ]");
  EXPECT_EQ(with("[{:<5}]", 42), "[42   ]");
}

TEST(FormatPadding, CentresWithTheOddByteOnTheRight) {
  EXPECT_EQ(with("[{^5}]", 42), "[ 42  ]");
}

TEST(FormatPadding, UsesTheFillByte) {
  EXPECT_EQ(with("{*>5}", 42), "***42");
  EXPECT_EQ(with("{:0>5}", 42), "00042");
  EXPECT_EQ(with("{:<<5}", 42), "42<<<");
  EXPECT_EQ(with("{::>5}", 42), ":::42");
}

TEST(FormatPadding, LeavesLongerTextAlone) {
  EXPECT_EQ(with("{2}", 12345), "12345");
}

TEST(FormatPadding, CombinesWithPrecisionPrefixAndType) {
  EXPECT_EQ(with("{:_>10.3f}", 3.14159), "_____3.142");
  EXPECT_EQ(with("{:>8#x}", 255), "    0xff");
}

TEST(FormatLimits, OnePlaceholderGivesAtMost255Bytes) {
  EXPECT_EQ(with("{300}", 7), std::string(254, ' ') + "7");
  EXPECT_EQ(with("{99999999999999999999}", 7).size(), 255U);
  EXPECT_EQ(with("{.300f}", 0.5), "0.5" + std::string(252, '0'));
  EXPECT_EQ(with("{f}", 1e300).size(), 255U);
}

TEST(FormatLimits, TheWholeTextHasAtMost4090Bytes) {
  const std::string format(5000, 'x');
  EXPECT_EQ(take(qor_format(format.c_str(), nullptr)), std::string(4090, 'x'));
  const auto filled = std::string(4089, 'x') + "{5}";
  EXPECT_EQ(with(filled.c_str(), 7).size(), 4090U);
}

TEST(FormatLimits, OfASpecification62BytesAreRead) {
  EXPECT_EQ(with(("{" + std::string(61, '0') + "5}").c_str(), 7), "    7");
  EXPECT_EQ(with(("{" + std::string(62, '0') + "5}").c_str(), 7), "7");
}

TEST(FormatTyped, WritesStrings) {
  EXPECT_EQ(take(qor_format1_t("<{}>", "s", {.str = "Ada"})), "<Ada>");
  EXPECT_EQ(take(qor_format1_t("<{:<5}>", "s", {.str = "Ada"})), "<Ada  >");
  EXPECT_EQ(take(qor_format1_t("<{}>", "s", {.str = nullptr})), "<>");
  EXPECT_EQ(take(qor_format1_t("{}", "s", {.str = std::string(300, 'x').c_str()})),
            std::string(255, 'x'));
}

TEST(FormatTyped, MixesKinds) {
  EXPECT_EQ(take(qor_format2_t("{}: {.1f}", "sf", {.str = "x"}, {.f64 = 2.25})), "x: 2.2");
  EXPECT_EQ(take(qor_format3_t("{} {} {}", "sif", {.str = "x"}, {.i64 = -3}, {.f64 = 2.5})),
            "x -3 2.5");
  EXPECT_EQ(take(qor_format4_t("{}{}{}{}", "ssss", {.str = "a"}, {.str = "b"}, {.str = "c"},
                               {.str = "d"})),
            "abcd");
}

TEST(FormatTyped, TakesAMissingLetterAsANumber) {
  EXPECT_EQ(take(qor_format2_t("{} {}", "s", {.str = "x"}, {.f64 = 2.5})), "x 2.5");
  EXPECT_EQ(take(qor_format1_t("{}", nullptr, {.f64 = 2.5})), "2.5");
}

TEST(FormatTyped, AsksAHostValueForItsTextOrItsNumber) {
  const qor_slot value{.i64 = kavo::fakes::make_host_value(42.5, "forty-two")};
  EXPECT_EQ(take(qor_format1_t("{}", "h", value)), "forty-two");
  EXPECT_EQ(take(qor_format1_t("{.2}", "h", value)), "forty-two");
  EXPECT_EQ(take(qor_format1_t("{d}", "h", value)), "42");
  EXPECT_EQ(take(qor_format1_t("{x}", "h", value)), "2a");
  EXPECT_EQ(take(qor_format1_t("{X}", "h", value)), "2A");
  EXPECT_EQ(take(qor_format1_t("{.1f}", "h", value)), "42.5");
  EXPECT_EQ(take(qor_format1_t("{g}", "h", value)), "42.5");
  EXPECT_EQ(take(qor_format1_t("{e}", "h", value)), "42.5");
}

TEST(FormatProperty, FixedTextIsPrintfs) {
  std::mt19937_64 random(1); // the same numbers every time
  for (int i = 0; i < 5000; ++i) {
    const double x =
        std::ldexp(static_cast<double>(random() % 100000) - 50000, int(random() % 80) - 40);
    const int precision = static_cast<int>(random() % 40);
    std::array<char, 256> expected{};
    std::snprintf(expected.data(), expected.size(), "%.*f", precision, x);
    const auto format = "{." + std::to_string(precision) + "f}";
    ASSERT_EQ(with(format.c_str(), x), expected.data());
  }
}

TEST(FormatProperty, WhatIsWrittenWithEnoughDecimalsReadsBack) {
  std::mt19937_64 random(2); // the same numbers every time
  for (int i = 0; i < 5000; ++i) {
    const double x = std::ldexp(static_cast<double>(random() >> 11), int(random() % 100) - 100);
    ASSERT_EQ(std::atof(with("{.200f}", x).c_str()), x);
  }
}

} // namespace
