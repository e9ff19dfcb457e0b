// Dates: reading, adding, formatting whatever the text and the amount.
#include "runtime/dates.h"
#include "tests/fuzz/input.h"

#include <cmath>
#include <cstdlib>
#include <ctime>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static const bool is_set = setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1) == 0;
  fuzz::require(is_set, "the time zone is set");
  fuzz::Input input(data, size);
  const auto amount = input.value<double>();
  const auto unit = input.text();
  const auto date = input.text();
  const auto format = input.text(200);
  const fuzz::Text full(qor_cvdate(date.c_str()));
  const fuzz::Text again(qor_cvdate(full.get()));
  fuzz::require(std::strcmp(full.get(), again.get()) == 0, "the full form is stable");
  const fuzz::Text sum(qor_dateadd(unit.c_str(), date.c_str(), amount));
  const fuzz::Text kept(qor_dateadd("", sum.get(), 0));
  fuzz::require(std::strcmp(sum.get(), kept.get()) == 0, "a sum is a date");
  const fuzz::Text formatted(qor_format_date(date.c_str(), format.c_str(), amount));
  fuzz::require(std::strlen(formatted.get()) <= 255, "the limit holds");
  const double forth = qor_datediff(unit.c_str(), date.c_str(), sum.get());
  fuzz::require(forth == -qor_datediff(unit.c_str(), sum.get(), date.c_str()), "there and back");
  fuzz::require(qor_month(amount) >= 1 && qor_month(amount) <= 12, "a month");
  fuzz::require(qor_weekday(amount) >= 0 && qor_weekday(amount) <= 6, "a weekday");
  return 0;
}
