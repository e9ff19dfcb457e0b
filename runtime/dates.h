/* Dates. They are exchanged as text in the form 2024-03-05 14:30:00 (local time), or as an epoch:
   seconds since 1970-01-01 00:00:00 UTC in a double. Local time is the platform's (TZ).

   Reading takes year-month-day hour:minute:second, of which the first three must be there and the
   rest are 0 when missing; leading white space, missing zeros and text behind are fine. Text that
   cannot be read gives "", 0 or 0.0 and no error. Strings are new and the caller's. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The current local time as date text, and as an epoch in whole seconds. */
char* qor_now(void);
double qor_now_epoch(void);

/* The local date (2024-03-05), time (14:30:00) and both of an epoch; fractions are rounded down.
   Where the platform's calendar ends, the Gregorian one goes on in UTC, to 10^17 days from the
   epoch at most; NaN counts as 0. */
char* qor_date_str(double epoch);
char* qor_time_str(double epoch);
char* qor_cvdate_num(double epoch);

/* The local calendar fields of an epoch: month and day from 1, weekday from 0 = Sunday. */
int64_t qor_year(double epoch);
int64_t qor_month(double epoch);
int64_t qor_day(double epoch);
int64_t qor_hour(double epoch);
int64_t qor_minute(double epoch);
int64_t qor_second(double epoch);
int64_t qor_weekday(double epoch);

/* The fields of date text as they stand there. */
int64_t qor_year_str(const char* date);
int64_t qor_month_str(const char* date);
int64_t qor_day_str(const char* date);
int64_t qor_hour_str(const char* date);
int64_t qor_minute_str(const char* date);
int64_t qor_second_str(const char* date);

/* Date text in the full form with its zeros; the fields stay what they are (no carrying). For an
   array: of every element, as a new string array. */
char* qor_cvdate(const char* date);
QorArray* qor_cvdate_arr(const QorArray* dates);

/* The date by a strftime format (null or empty: the full form), at most 255 bytes. With `offset`
   NaN it is written in local time; otherwise in UTC, `offset` hours (truncated to seconds) on. */
char* qor_format_date(const char* date, const char* format, double offset);

/* The date with `amount` (truncated toward zero) added in the unit whose first letter, in either
   case, is Y, M, D, H, N (minutes) or S; other units add nothing. Fields that overflow are
   carried: January 31 and a month is early March. A time that a clock change skips is moved as the
   platform moves it. "" when the year leaves the 32-bit range. */
char* qor_dateadd(const char* unit, const char* date, double amount);

/* `b` minus `a`, not rounded, in days, hours or minutes when the unit starts with D, H or N in
   either case; in seconds otherwise. For arrays: element by element, as long as the shorter. */
double qor_datediff(const char* unit, const char* a, const char* b);
QorArray* qor_datediff_vec(const char* unit, const QorArray* a, const QorArray* b);

#ifdef __cplusplus
}
#endif
