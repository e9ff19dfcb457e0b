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

double system_tick(void*) {
  const auto start = start_instant();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void system_sleep(void*, uint32_t milliseconds) {
  const timespec duration{.tv_sec = milliseconds / 1000,
                          .tv_nsec = static_cast<long>(milliseconds % 1000) * 1'000'000};
  nanosleep(&duration, nullptr);
}

constexpr qor_clock system_clock = {.tick = system_tick, .sleep = system_sleep, .context = nullptr};

constinit qor_clock current = system_clock;

} // namespace

double qor_tick() {
  return current.tick(current.context);
}

void qor_sleep(uint32_t milliseconds) {
  current.sleep(current.context, milliseconds);
}

void qor_set_clock(const qor_clock* clock) {
  current = clock != nullptr ? *clock : system_clock;
  if (current.tick == nullptr)
    current.tick = system_tick;
  if (current.sleep == nullptr)
    current.sleep = system_sleep;
}

qor_clock qor_clock_in_use() {
  return current;
}
