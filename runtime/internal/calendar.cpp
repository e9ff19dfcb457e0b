#include "runtime/internal/calendar.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "runtime/internal/containers.h"
#include "runtime/internal/numbers.h"

namespace qor {
namespace {

constexpr int64_t seconds_per_day = 86400;
constexpr int64_t days_per_era = 146097; // 400 years
constexpr int64_t epoch_shift = 719468;  // days from 0000-03-01 to 1970-01-01
constexpr double farthest_day = 1e17;    // these two keep every step within 64 bits
constexpr int64_t farthest_year = 1'000'000'000'000;

struct Division {
  int64_t quotient;
  int64_t remainder; // never negative
};

Division divide_down(int64_t value, int64_t divisor) {
  const int64_t remainder = (value % divisor + divisor) % divisor;
  return {(value - remainder) / divisor, remainder};
}

// The Gregorian calendar both ways, by years that start in March, so that the leap day is the last
// of its year: H. Hinnant, "chrono-Compatible Low-Level Date Algorithms".
DateTime date_of_day(int64_t day) {
  const auto [era, day_of_era] = divide_down(day + epoch_shift, days_per_era);
  const int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const int64_t day_of_year =
      day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const int64_t march_month = (5 * day_of_year + 2) / 153;
  const int64_t month = march_month < 10 ? march_month + 3 : march_month - 9;
  return {.year = era * 400 + year_of_era + (month <= 2 ? 1 : 0),
          .month = month,
          .day = day_of_year - (153 * march_month + 2) / 5 + 1};
}

// `month` is 1 to 12; `day` may be any.
int64_t day_of_date(int64_t year, int64_t month, int64_t day) {
  const int64_t march_year = month <= 2 ? year - 1 : year;
  const auto [era, year_of_era] = divide_down(march_year, 400);
  const int64_t march_month = month > 2 ? month - 3 : month + 9;
  const int64_t day_of_year = (153 * march_month + 2) / 5;
  const int64_t day_of_era = year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * days_per_era + day_of_era - epoch_shift + day - 1;
}

// Overflowing fields, of 10^17 at most, carried upwards without a time zone.
DateTime carried(const DateTime& date) {
  const auto minutes = divide_down(date.second, 60);
  const auto hours = divide_down(date.minute + minutes.quotient, 60);
  const auto days = divide_down(date.hour + hours.quotient, 24);
  const auto years = divide_down(date.month - 1, 12);
  const auto year = std::clamp(date.year + years.quotient, -farthest_year, farthest_year);
  auto result = date_of_day(day_of_date(year, years.remainder + 1, date.day + days.quotient));
  result.hour = days.remainder;
  result.minute = hours.remainder;
  result.second = minutes.remainder;
  return result;
}

int64_t epoch_of_utc(const DateTime& date) {
  const auto days = day_of_date(date.year, date.month, date.day);
  return days * seconds_per_day + date.hour * 3600 + date.minute * 60 + date.second;
}

bool fits_platform(int64_t year) {
  return year - 1900 >= INT32_MIN && year - 1900 <= INT32_MAX;
}

std::tm to_platform(const DateTime& date) {
  std::tm fields{};
  fields.tm_year = static_cast<int>(date.year - 1900);
  fields.tm_mon = static_cast<int>(date.month - 1);
  fields.tm_mday = static_cast<int>(date.day);
  fields.tm_hour = static_cast<int>(date.hour);
  fields.tm_min = static_cast<int>(date.minute);
  fields.tm_sec = static_cast<int>(date.second);
  fields.tm_isdst = -1; // the platform decides
  return fields;
}

DateTime from_platform(const std::tm& fields) {
  return {.year = int64_t{fields.tm_year} + 1900,
          .month = int64_t{fields.tm_mon} + 1,
          .day = fields.tm_mday,
          .hour = fields.tm_hour,
          .minute = fields.tm_min,
          .second = fields.tm_sec};
}

struct PlatformTime {
  DateTime date;
  int64_t epoch;
};

// What the platform makes of carried local fields; none outside its calendar.
std::optional<PlatformTime> platform_time(const DateTime& date) {
  if (!fits_platform(date.year))
    return {};
  auto fields = to_platform(date);
  fields.tm_wday = -1; // -1 is also an epoch; a weekday tells success
  const auto epoch = std::mktime(&fields);
  if (fields.tm_wday < 0)
    return {};
  return PlatformTime{from_platform(fields), epoch};
}

struct DayAndSecond {
  int64_t day;
  int64_t second;
};

DayAndSecond split_epoch(double epoch) {
  const double seconds = std::isnan(epoch) ? 0.0 : std::floor(epoch);
  const double day = std::clamp(std::floor(seconds / seconds_per_day), -farthest_day, farthest_day);
  const double rest = std::fmod(seconds, static_cast<double>(seconds_per_day));
  const double second = std::isnan(rest) ? 0.0 : rest + (rest < 0 ? seconds_per_day : 0);
  return {static_cast<int64_t>(day), static_cast<int64_t>(second)};
}

std::optional<std::tm> local_fields(double epoch) {
  constexpr double farthest_second = 9.2e18; // within time_t
  const auto seconds =
      static_cast<std::time_t>(truncate_to_int64(std::isnan(epoch) ? 0.0 : std::floor(epoch)));
  std::tm fields{};
  if (std::fabs(epoch) > farthest_second || localtime_r(&seconds, &fields) == nullptr)
    return {};
  return fields;
}

// Reads like sscanf: a number may follow white space and have a sign.
class DateReader {
public:
  explicit DateReader(std::string_view text) : rest_(text) {}

  bool number(int64_t& field) {
    skip_space();
    const bool is_negative = rest_.starts_with('-');
    if (is_negative || rest_.starts_with('+'))
      rest_.remove_prefix(1);
    if (rest_.empty() || !is_digit(rest_.front()))
      return false;
    int64_t value = 0;
    for (; !rest_.empty() && is_digit(rest_.front()); rest_.remove_prefix(1))
      value = std::min<int64_t>(INT32_MAX, value * 10 + (rest_.front() - '0'));
    field = is_negative ? -value : value;
    return true;
  }

  bool literal(char wanted) {
    if (!rest_.starts_with(wanted))
      return false;
    rest_.remove_prefix(1);
    return true;
  }

private:
  static bool is_digit(char c) { return c >= '0' && c <= '9'; }

  void skip_space() {
    while (!rest_.empty() && std::isspace(static_cast<unsigned char>(rest_.front())) != 0)
      rest_.remove_prefix(1);
  }

  std::string_view rest_;
};

} // namespace

std::optional<DateTime> read_date(std::string_view text) {
  DateReader reader(text);
  DateTime date;
  const bool has_date = reader.number(date.year) && reader.literal('-') &&
                        reader.number(date.month) && reader.literal('-') && reader.number(date.day);
  if (!has_date)
    return {};
  // What is there of the time counts, up to the first thing that is not a number.
  static_cast<void>(reader.number(date.hour) && reader.literal(':') && reader.number(date.minute) &&
                    reader.literal(':') && reader.number(date.second));
  return date;
}

String full_text(const DateTime& date) {
  std::array<char, 128> text{}; // six numbers of up to 20 characters
  std::snprintf(text.data(), text.size(),
                "%04" PRId64 "-%02" PRId64 "-%02" PRId64 " %02" PRId64 ":%02" PRId64 ":%02" PRId64,
                date.year, date.month, date.day, date.hour, date.minute, date.second);
  return text.data();
}

DateTime local_date(double epoch) {
  if (const auto fields = local_fields(epoch))
    return from_platform(*fields);
  const auto [day, second] = split_epoch(epoch);
  auto date = date_of_day(day);
  date.hour = second / 3600;
  date.minute = second / 60 % 60;
  date.second = second % 60;
  return date;
}

int64_t weekday_of(double epoch) {
  constexpr int64_t first_weekday = 4; // 1970-01-01 was a Thursday
  if (const auto fields = local_fields(epoch))
    return fields->tm_wday;
  return divide_down(split_epoch(epoch).day + first_weekday, 7).remainder;
}

int64_t epoch_of_local(const DateTime& date) {
  const auto whole = carried(date);
  const auto platform = platform_time(whole);
  return platform ? platform->epoch : epoch_of_utc(whole);
}

std::optional<DateTime> normalised(const DateTime& date) {
  const auto whole = carried(date);
  if (whole.year < -INT32_MAX || whole.year > INT32_MAX)
    return {};
  const auto platform = platform_time(whole);
  return platform ? platform->date : whole;
}

} // namespace qor
