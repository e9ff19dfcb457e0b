// Dates: reading, adding, formatting whatever the text and the amount.
#include <cmath>
#include <cstdlib>
#include <ctime>

#include "runtime/dates.h"
#include "tests/fuzz/input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool is_set = setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1) == 0;
  kavo::fuzz::require(is_set, "the time zone is set");
  kavo::fuzz::Input input(data, size);
  const auto amount = input.value<double>();
  const auto unit = input.text();
  const auto date = input.text();
  const auto format = input.text(200);
  const kavo::fuzz::Text full(qor_cvdate(date.c_str()));
  const kavo::fuzz::Text again(qor_cvdate(full.get()));
  kavo::fuzz::require(std::strcmp(full.get(), again.get()) == 0, "the full form is stable");
  const kavo::fuzz::Text sum(qor_dateadd(unit.c_str(), date.c_str(), amount));
  const kavo::fuzz::Text kept(qor_dateadd("", sum.get(), 0));
  kavo::fuzz::require(std::strcmp(sum.get(), kept.get()) == 0, "a sum is a date");
  const kavo::fuzz::Text formatted(qor_format_date(date.c_str(), format.c_str(), amount));
  kavo::fuzz::require(std::strlen(formatted.get()) <= 255, "the limit holds");
  const double forth = qor_datediff(unit.c_str(), date.c_str(), sum.get());
  kavo::fuzz::require(forth == -qor_datediff(unit.c_str(), sum.get(), date.c_str()),
                      "there and back");
  kavo::fuzz::require(qor_month(amount) >= 1 && qor_month(amount) <= 12, "a month");
  kavo::fuzz::require(qor_weekday(amount) >= 0 && qor_weekday(amount) <= 6, "a weekday");
  return 0;
}
