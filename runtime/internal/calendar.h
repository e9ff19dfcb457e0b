// Calendar fields: read from text, and to and from the epoch.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "runtime/internal/containers.h"

namespace qor {

struct DateTime {
  int64_t year = 0;
  int64_t month = 0; // 1 to 12
  int64_t day = 0;   // from 1
  int64_t hour = 0;
  int64_t minute = 0;
  int64_t second = 0;
};

// As sscanf's "%d-%d-%d %d:%d:%d" reads it, none below three fields. Numbers saturate at 32 bits.
std::optional<DateTime> read_date(std::string_view text);

String full_text(const DateTime& date);

// Local time; UTC by the Gregorian calendar where the platform has none.
DateTime local_date(double epoch);
int64_t weekday_of(double epoch); // 0 = Sunday

// The reverse, with overflowing fields carried.
int64_t epoch_of_local(const DateTime& date);

// Fields in their ranges, carried by the local calendar; none when the year leaves 32 bits.
std::optional<DateTime> normalised(const DateTime& date);

} // namespace qor
