#include "runtime/dates.h"

#include <algorithm>
#include <cmath>
#include <ctime>

#include "runtime/array.h"
#include "runtime/internal/array_slots.h"
#include "runtime/internal/calendar.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/numbers.h"
#include "runtime/internal/strings.h"

namespace {

using qor::DateTime;

char unit_letter(const char* unit) {
  const char letter = qor::text_of(unit).empty() ? '\0' : *unit;
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

int64_t* field_of_unit(DateTime& date, char letter) {
  switch (letter) {
  case 'Y':
    return &date.year;
  case 'M':
    return &date.month;
  case 'D':
    return &date.day;
  case 'H':
    return &date.hour;
  case 'N':
    return &date.minute;
  case 'S':
    return &date.second;
  default:
    return nullptr;
  }
}

double seconds_of_unit(char letter) {
  switch (letter) {
  case 'D':
    return 86400;
  case 'H':
    return 3600;
  case 'N':
    return 60;
  default:
    return 1;
  }
}

int64_t field_in_text(const char* date, int64_t DateTime::*field) {
  const auto read = qor::read_date(qor::text_of(date));
  return read ? (*read).*field : 0;
}

// strftime says 0 both for no room and for no text, so the buffer grows to a bound.
qor::String by_format(const qor::String& format, const std::tm& fields) {
  constexpr size_t longest_result = 255;
  constexpr size_t longest_buffer = 1 << 20;
  for (size_t size = 1024 + format.size(); size <= longest_buffer; size *= 4) {
    qor::String text(size, '\0');
    const auto length = std::strftime(text.data(), size, format.c_str(), &fields);
    if (length > 0)
      return text.substr(0, std::min(length, longest_result));
  }
  return "";
}

bool to_fields(int64_t epoch, double offset, std::tm& fields) {
  const auto seconds = static_cast<std::time_t>(epoch);
  if (std::isnan(offset))
    return localtime_r(&seconds, &fields) != nullptr;
  std::time_t moved = 0;
  const bool is_too_far =
      __builtin_add_overflow(seconds, qor::truncate_to_int64(offset * 3600), &moved);
  return !is_too_far && gmtime_r(&moved, &fields) != nullptr;
}

} // namespace

char* qor_now() {
  return qor_cvdate_num(qor_now_epoch());
}

double qor_now_epoch() {
  return static_cast<double>(std::time(nullptr));
}

char* qor_date_str(double epoch) {
  const auto text = qor::full_text(qor::local_date(epoch));
  return qor::new_string(text.substr(0, text.find(' ')));
}

char* qor_time_str(double epoch) {
  const auto text = qor::full_text(qor::local_date(epoch));
  return qor::new_string(text.substr(text.find(' ') + 1));
}

char* qor_cvdate_num(double epoch) {
  return qor::new_string(qor::full_text(qor::local_date(epoch)));
}

int64_t qor_year(double epoch) {
  return qor::local_date(epoch).year;
}
int64_t qor_month(double epoch) {
  return qor::local_date(epoch).month;
}
int64_t qor_day(double epoch) {
  return qor::local_date(epoch).day;
}
int64_t qor_hour(double epoch) {
  return qor::local_date(epoch).hour;
}
int64_t qor_minute(double epoch) {
  return qor::local_date(epoch).minute;
}
int64_t qor_second(double epoch) {
  return qor::local_date(epoch).second;
}
int64_t qor_weekday(double epoch) {
  return qor::weekday_of(epoch);
}

int64_t qor_year_str(const char* date) {
  return field_in_text(date, &DateTime::year);
}
int64_t qor_month_str(const char* date) {
  return field_in_text(date, &DateTime::month);
}
int64_t qor_day_str(const char* date) {
  return field_in_text(date, &DateTime::day);
}
int64_t qor_hour_str(const char* date) {
  return field_in_text(date, &DateTime::hour);
}
int64_t qor_minute_str(const char* date) {
  return field_in_text(date, &DateTime::minute);
}
int64_t qor_second_str(const char* date) {
  return field_in_text(date, &DateTime::second);
}

char* qor_cvdate(const char* date) {
  const auto read = qor::read_date(qor::text_of(date));
  return qor::new_string(read ? qor::full_text(*read) : "");
}

QorArray* qor_cvdate_arr(const QorArray* dates) {
  auto* result = qor::new_string_array(qor_array_len(dates));
  for (int64_t i = 0; i < result->length; ++i)
    qor::set_string(result, i, qor_cvdate(qor_array_get_str(dates, i)));
  return result;
}

char* qor_format_date(const char* date, const char* format, double offset) {
  const auto read = qor::read_date(qor::text_of(date));
  std::tm fields{};
  if (!read || !to_fields(qor::epoch_of_local(*read), offset, fields))
    return qor::new_string("");
  const qor::String pattern(qor::text_of(format));
  return qor::new_string(by_format(pattern.empty() ? "%Y-%m-%d %H:%M:%S" : pattern, fields));
}

char* qor_dateadd(const char* unit, const char* date, double amount) {
  // Beyond this the year leaves its range whatever the unit is; sums stay within 64 bits.
  constexpr int64_t most = 100'000'000'000'000'000;
  auto read = qor::read_date(qor::text_of(date));
  if (!read)
    return qor::new_string("");
  if (auto* field = field_of_unit(*read, unit_letter(unit)))
    *field += std::clamp(qor::truncate_to_int64(amount), -most, most);
  const auto result = qor::normalised(*read);
  return qor::new_string(result ? qor::full_text(*result) : "");
}

double qor_datediff(const char* unit, const char* a, const char* b) {
  const auto first = qor::read_date(qor::text_of(a));
  const auto second = qor::read_date(qor::text_of(b));
  if (!first || !second)
    return 0.0;
  const auto seconds = qor::epoch_of_local(*second) - qor::epoch_of_local(*first);
  return static_cast<double>(seconds) / seconds_of_unit(unit_letter(unit));
}

QorArray* qor_datediff_vec(const char* unit, const QorArray* a, const QorArray* b) {
  auto* result = qor::new_uninitialised_array(std::min(qor_array_len(a), qor_array_len(b)), 0);
  for (int64_t i = 0; i < result->length; ++i)
    result->data[i] = qor_datediff(unit, qor_array_get_str(a, i), qor_array_get_str(b, i));
  return result;
}
