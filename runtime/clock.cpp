#include "runtime/clock.h"

#include <chrono>
#include <ctime>

namespace {

using Clock = std::chrono::steady_clock;

Clock::time_point start_instant() {
  static const auto start = Clock::now();
  return start;
}

// Read before any game code runs; other static initialisers may still ask earlier.
[[maybe_unused]] const auto read_at_load = start_instant();

} // namespace

double qor_tick() {
  const auto start = start_instant();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void qor_sleep(uint32_t milliseconds) {
  const timespec duration{.tv_sec = milliseconds / 1000,
                          .tv_nsec = static_cast<long>(milliseconds % 1000) * 1'000'000};
  nanosleep(&duration, nullptr);
}
