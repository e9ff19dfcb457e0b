// Dates in UTC and in Berlin, around both clock changes, and far outside the platform's calendar.
#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>
#include <random>
#include <string>

#include "runtime/dates.h"
#include "runtime/files.h"
#include "tests/runtime/values.h"

namespace {

using kavo::test::Numbers;
using kavo::test::Strings;
using kavo::test::take;
using kavo::test::take_numbers;
using kavo::test::take_strings;

constexpr double farther_than_any_calendar = 1e300;
constexpr double infinity = std::numeric_limits<double>::infinity();

class InZone : public testing::Test {
protected:
  explicit InZone(const char* zone) {
    qor_setenv("TZ", zone);
    tzset();
  }
  ~InZone() override {
    qor_setenv("TZ", nullptr);
    tzset();
  }
};

class Utc : public InZone {
protected:
  Utc() : InZone("UTC0") {}
};

// The rule of Europe/Berlin written out, so that no zone database has to be installed.
class Berlin : public InZone {
protected:
  Berlin() : InZone("CET-1CEST,M3.5.0,M10.5.0/3") {}
};

TEST_F(Utc, EpochsHaveCalendarFields) {
  const double epoch = 1709649005.75; // 2024-03-05 14:30:05.75, a Tuesday
  EXPECT_EQ(qor_year(epoch), 2024);
  EXPECT_EQ(qor_month(epoch), 3);
  EXPECT_EQ(qor_day(epoch), 5);
  EXPECT_EQ(qor_hour(epoch), 14);
  EXPECT_EQ(qor_minute(epoch), 30);
  EXPECT_EQ(qor_second(epoch), 5);
  EXPECT_EQ(qor_weekday(epoch), 2);
}

TEST_F(Utc, EpochsBecomeText) {
  EXPECT_EQ(take(qor_date_str(1709649005)), "2024-03-05");
  EXPECT_EQ(take(qor_time_str(1709649005)), "14:30:05");
  EXPECT_EQ(take(qor_cvdate_num(1709649005)), "2024-03-05 14:30:05");
}

TEST_F(Utc, FractionsBeforeTheEpochRoundDown) {
  EXPECT_EQ(take(qor_cvdate_num(-0.5)), "1969-12-31 23:59:59");
}

TEST_F(Utc, NaNCountsAsTheEpoch) {
  EXPECT_EQ(take(qor_cvdate_num(std::nan(""))), "1970-01-01 00:00:00");
  EXPECT_EQ(qor_weekday(std::nan("")), 4);
}

TEST_F(Utc, NowIsTheCurrentTime) {
  const double before = qor_now_epoch();
  const auto now = take(qor_now());
  const double after = qor_now_epoch();
  EXPECT_EQ(before, std::floor(before));
  EXPECT_GE(now, take(qor_cvdate_num(before)));
  EXPECT_LE(now, take(qor_cvdate_num(after)));
}

TEST_F(Utc, TheGregorianCalendarGoesOnWhereThePlatformEnds) {
  const double first_of_2147483648 = 67767976233532800.0;
  EXPECT_EQ(take(qor_cvdate_num(first_of_2147483648 - 86400.0)), "2147483647-12-31 00:00:00");
  EXPECT_EQ(take(qor_cvdate_num(first_of_2147483648)), "2147483648-01-01 00:00:00");
  EXPECT_EQ(qor_year(first_of_2147483648 + 366 * 86400.0), 2147483649);
}

TEST_F(Utc, TheFallbackAgreesWithThePlatformWhereBothKnowTheDate) {
  // 400 years are a whole number of weeks, and the calendar repeats.
  const double era = 146097.0 * 86400.0;
  const double beyond = era * 1e7;
  for (const double epoch : {0.0, 951782400.0, 951868800.0, 1709164800.0, 1735603200.0}) {
    EXPECT_EQ(qor_month(epoch + beyond), qor_month(epoch));
    EXPECT_EQ(qor_day(epoch + beyond), qor_day(epoch));
    EXPECT_EQ(qor_weekday(epoch + beyond), qor_weekday(epoch));
    EXPECT_EQ(qor_year(epoch + beyond), qor_year(epoch) + 4'000'000'000);
    EXPECT_EQ(qor_year(epoch - beyond), qor_year(epoch) - 4'000'000'000);
    EXPECT_EQ(qor_day(epoch - beyond), qor_day(epoch));
    EXPECT_EQ(qor_weekday(epoch - beyond), qor_weekday(epoch));
  }
}

TEST_F(Utc, EpochsBeyondEveryCalendarAreHarmless) {
  for (const double epoch :
       {farther_than_any_calendar, -farther_than_any_calendar, infinity, -infinity}) {
    EXPECT_GE(qor_month(epoch), 1);
    EXPECT_LE(qor_month(epoch), 12);
    EXPECT_GE(qor_weekday(epoch), 0);
    EXPECT_LE(qor_weekday(epoch), 6);
    EXPECT_GE(qor_hour(epoch), 0);
    EXPECT_EQ(qor_year(epoch) > 0, epoch > 0);
  }
}

TEST_F(Utc, FieldsAreReadFromText) {
  const char* date = "2024-03-05 14:30:09";
  EXPECT_EQ(qor_year_str(date), 2024);
  EXPECT_EQ(qor_month_str(date), 3);
  EXPECT_EQ(qor_day_str(date), 5);
  EXPECT_EQ(qor_hour_str(date), 14);
  EXPECT_EQ(qor_minute_str(date), 30);
  EXPECT_EQ(qor_second_str(date), 9);
}

TEST_F(Utc, AYearAloneIsNoDate) {
  EXPECT_EQ(qor_year_str("2024"), 0);
  EXPECT_EQ(qor_year_str("2024-03"), 0);
  EXPECT_EQ(qor_year_str("2024-03-"), 0);
  EXPECT_EQ(qor_year_str("yesterday"), 0);
  EXPECT_EQ(qor_year_str(""), 0);
  EXPECT_EQ(qor_year_str(nullptr), 0);
}

TEST_F(Utc, TextIsNormalisedToTheFixedForm) {
  EXPECT_EQ(take(qor_cvdate("2024-3-5")), "2024-03-05 00:00:00");
  EXPECT_EQ(take(qor_cvdate(" 2024-3-5 7:8")), "2024-03-05 07:08:00");
  EXPECT_EQ(take(qor_cvdate("2024-3-5T7:8:9")), "2024-03-05 00:00:00") << "T is no white space";
  EXPECT_EQ(take(qor_cvdate("2024-13-45 25:61:61")), "2024-13-45 25:61:61") << "no carrying";
  EXPECT_EQ(take(qor_cvdate("99999999999-1-1")), "2147483647-01-01 00:00:00");
  EXPECT_EQ(take(qor_cvdate("soon")), "");
  EXPECT_EQ(take(qor_cvdate(nullptr)), "");
}

TEST_F(Utc, ArraysAreNormalisedElementByElement) {
  const auto dates = kavo::test::strings({"2024-3-5", "soon"});
  EXPECT_EQ(take_strings(qor_cvdate_arr(dates.get())), (Strings{"2024-03-05 00:00:00", ""}));
  EXPECT_EQ(take_strings(qor_cvdate_arr(nullptr)), Strings{});
}

TEST_F(Utc, DatesAreFormatted) {
  const double local = std::nan("");
  EXPECT_EQ(take(qor_format_date("2024-3-5 7:08:09", "%d.%m.%y", local)), "05.03.24");
  EXPECT_EQ(take(qor_format_date("2024-3-5", nullptr, local)), "2024-03-05 00:00:00");
  EXPECT_EQ(take(qor_format_date("2024-3-5", "", 0)), "2024-03-05 00:00:00");
  EXPECT_EQ(take(qor_format_date("2024-3-5", "%H:%M", 1.5)), "01:30");
  EXPECT_EQ(take(qor_format_date("2024-3-5", "%H:%M:%S", 0.0004)), "00:00:01");
  EXPECT_EQ(take(qor_format_date("2024-3-5", "%F", -1)), "2024-03-04");
  EXPECT_EQ(take(qor_format_date("soon", "%F", local)), "");
  EXPECT_EQ(take(qor_format_date(nullptr, "%F", local)), "");
}

TEST_F(Utc, FormattedTextIsCutAt255Bytes) {
  EXPECT_EQ(take(qor_format_date("2024-3-5", std::string(300, 'x').c_str(), 0)),
            std::string(255, 'x'));
  EXPECT_EQ(take(qor_format_date("2024-3-5", "%500Y", 0)).size(), 255U);
  EXPECT_EQ(take(qor_format_date("2024-3-5", "%9999999Y", 0)), "");
}

TEST_F(Utc, OffsetsBeyondTheCalendarGiveNothing) {
  EXPECT_EQ(take(qor_format_date("2024-3-5", "%F", 1e300)), "");
  EXPECT_EQ(take(qor_format_date("2024-3-5", "%F", -1e300)), "");
}

TEST_F(Utc, EveryUnitIsAdded) {
  const char* date = "2024-01-01 00:00:00";
  EXPECT_EQ(take(qor_dateadd("Y", date, 1)), "2025-01-01 00:00:00");
  EXPECT_EQ(take(qor_dateadd("month", date, 13)), "2025-02-01 00:00:00");
  EXPECT_EQ(take(qor_dateadd("d", date, 60)), "2024-03-01 00:00:00");
  EXPECT_EQ(take(qor_dateadd("H", date, -1)), "2023-12-31 23:00:00");
  EXPECT_EQ(take(qor_dateadd("n", date, -1)), "2023-12-31 23:59:00");
  EXPECT_EQ(take(qor_dateadd("s", date, 86400)), "2024-01-02 00:00:00");
}

TEST_F(Utc, NAddsMinutes) {
  EXPECT_EQ(take(qor_dateadd("N", "2024-01-01 00:00:00", 90)), "2024-01-01 01:30:00");
}

TEST_F(Utc, AnUnknownUnitAddsNothing) {
  EXPECT_EQ(take(qor_dateadd("week", "2024-01-01", 1)), "2024-01-01 00:00:00");
  EXPECT_EQ(take(qor_dateadd("", "2024-01-01", 1)), "2024-01-01 00:00:00");
  EXPECT_EQ(take(qor_dateadd(nullptr, "2024-01-01", 1)), "2024-01-01 00:00:00");
}

TEST_F(Utc, AmountsAreTruncatedAndOverflowIsCarried) {
  EXPECT_EQ(take(qor_dateadd("D", "2024-01-01", -1.9)), "2023-12-31 00:00:00");
  EXPECT_EQ(take(qor_dateadd("D", "2024-01-01", std::nan(""))), "2024-01-01 00:00:00");
  EXPECT_EQ(take(qor_dateadd("M", "2024-01-31", 1)), "2024-03-02 00:00:00");
  EXPECT_EQ(take(qor_dateadd("Y", "2024-02-29", 1)), "2025-03-01 00:00:00");
  EXPECT_EQ(take(qor_dateadd("M", "2024-01-01", -25)), "2021-12-01 00:00:00");
  EXPECT_EQ(take(qor_dateadd("D", "2024-13-45 25:61:61", 0)), "2025-02-15 02:02:01");
}

TEST_F(Utc, LargeAmountsAreAddedExactly) {
  EXPECT_EQ(take(qor_dateadd("S", "1970-01-01", 1e11)), "5138-11-16 09:46:40");
  EXPECT_EQ(take(qor_dateadd("D", "1970-01-01", 1e9)), "2739877-01-03 00:00:00");
  EXPECT_EQ(take(qor_dateadd("D", "0000-03-01", -1)), "0000-02-29 00:00:00");
}

TEST_F(Utc, AYearBeyond32BitsGivesNothing) {
  for (const char* unit : {"Y", "M", "D", "H", "N", "S"})
    for (const double amount : {1e300, -1e300})
      EXPECT_EQ(take(qor_dateadd(unit, "2024-01-01", amount)), "") << unit << amount;
  EXPECT_EQ(take(qor_dateadd("Y", "soon", 1)), "");
  EXPECT_EQ(take(qor_dateadd("M", "-2147483647-01-01", -1)), "") << "it would not read back";
}

TEST_F(Utc, ALowerCaseDIsDaysToo) {
  EXPECT_EQ(qor_datediff("d", "2024-01-01", "2024-01-02"), 1.0);
}

TEST_F(Utc, DifferencesHaveUnits) {
  EXPECT_EQ(qor_datediff("H", "2024-01-01", "2024-01-02"), 24.0);
  EXPECT_EQ(qor_datediff("N", "2024-01-01", "2024-01-02"), 1440.0);
  EXPECT_EQ(qor_datediff("D", "2024-01-02", "2024-01-01 12:00"), -0.5);
}

TEST_F(Utc, DifferencesInMonthsAreSeconds) {
  for (const char* unit : {"M", "S", "Y", "week", "", static_cast<const char*>(nullptr)})
    EXPECT_EQ(qor_datediff(unit, "2024-01-01", "2024-01-02"), 86400.0);
}

TEST_F(Utc, DifferencesOfWhatIsNoDateAreZero) {
  EXPECT_EQ(qor_datediff("S", "soon", "2024-01-02"), 0.0);
  EXPECT_EQ(qor_datediff("S", "2024-01-02", "2024"), 0.0);
  EXPECT_EQ(qor_datediff("S", nullptr, nullptr), 0.0);
}

TEST_F(Utc, DifferencesOfArraysAreAsLongAsTheShorter) {
  const auto a = kavo::test::strings({"2024-01-01", "2024-01-01", "2024-01-01"});
  const auto b = kavo::test::strings({"2024-01-02", "soon"});
  EXPECT_EQ(take_numbers(qor_datediff_vec("D", a.get(), b.get())), (Numbers{1, 0}));
  EXPECT_EQ(take_numbers(qor_datediff_vec("D", a.get(), nullptr)), Numbers{});
}

TEST_F(Utc, DifferencesReachBeyondThePlatform) {
  EXPECT_EQ(qor_datediff("D", "-2147483647-01-01", "-2147483647-01-02"), 1.0);
  EXPECT_EQ(qor_datediff("D", "2147483647-12-30", "2147483647-12-31"), 1.0);
}

// On 2024-03-31 the clock went from 02:00 to 03:00, on 2024-10-27 from 03:00 back to 02:00.
TEST_F(Berlin, SpringTheDayHas23Hours) {
  EXPECT_EQ(qor_datediff("H", "2024-03-31", "2024-04-01"), 23.0);
  EXPECT_EQ(qor_datediff("N", "2024-03-31 01:59", "2024-03-31 03:00"), 1.0);
}

TEST_F(Berlin, AutumnTheDayHas25Hours) {
  EXPECT_EQ(qor_datediff("H", "2024-10-27", "2024-10-28"), 25.0);
}

TEST_F(Berlin, EpochsAreShownInSummerAndWinterTime) {
  EXPECT_EQ(take(qor_cvdate_num(1711846799)), "2024-03-31 01:59:59");
  EXPECT_EQ(take(qor_cvdate_num(1711846800)), "2024-03-31 03:00:00");
  EXPECT_EQ(take(qor_cvdate_num(1729990799)), "2024-10-27 02:59:59");
  EXPECT_EQ(take(qor_cvdate_num(1729990800)), "2024-10-27 02:00:00");
  EXPECT_EQ(qor_hour(1711846800), 3);
}

TEST_F(Berlin, AddingKeepsTheWallClock) {
  EXPECT_EQ(take(qor_dateadd("D", "2024-03-30 12:00", 1)), "2024-03-31 12:00:00");
  EXPECT_EQ(take(qor_dateadd("D", "2024-10-26 12:00", 1)), "2024-10-27 12:00:00");
}

TEST_F(Berlin, ATimeThatTheClockSkipsIsMovedByAnHour) {
  const auto moved = take(qor_dateadd("D", "2024-03-30 02:30", 1));
  EXPECT_TRUE(moved == "2024-03-31 03:30:00" || moved == "2024-03-31 01:30:00") << moved;
}

TEST_F(Berlin, OffsetsCountFromUtc) {
  EXPECT_EQ(take(qor_format_date("2024-07-01 12:00", "%H:%M", 0)), "10:00");
  EXPECT_EQ(take(qor_format_date("2024-01-01 12:00", "%H:%M", 0)), "11:00");
  EXPECT_EQ(take(qor_format_date("2024-01-01 12:00", "%H:%M", 5.5)), "16:30");
  EXPECT_EQ(take(qor_format_date("2024-07-01 12:00", "%H:%M %Z", std::nan(""))), "12:00 CEST");
}

TEST_F(Berlin, BeyondThePlatformIsUtc) {
  const double era = 146097.0 * 86400.0 * 1e7;
  EXPECT_EQ(qor_hour(era), 0);
  EXPECT_EQ(qor_hour(0.0), 1);
}

TEST_F(Utc, WhatIsWrittenReadsBackProperty) {
  std::mt19937_64 random(1); // the same dates every time
  for (int i = 0; i < 2000; ++i) {
    const auto epoch = static_cast<double>(static_cast<int64_t>(random() >> 20)) - 8e12;
    const auto text = take(qor_cvdate_num(epoch));
    ASSERT_EQ(qor_datediff("S", "1970-01-01", text.c_str()), epoch) << text;
    ASSERT_EQ(take(qor_dateadd("S", "1970-01-01", epoch)), text);
    ASSERT_EQ(take(qor_cvdate(text.c_str())), text);
  }
}

} // namespace
