#include "tests/program/wall_clock.h"

#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <ctime>

namespace {

std::atomic<std::time_t> seconds_ahead = 0;

bool is_wall_clock(clockid_t clock) {
  return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE || clock == CLOCK_TAI;
}

} // namespace

namespace kavo::test {

void set_wall_clock_ahead(double seconds) {
  seconds_ahead = static_cast<std::time_t>(seconds);
}

} // namespace kavo::test

// The libraries in the program find these before the system's.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's are reserved
extern "C" {

int clock_gettime(clockid_t clock, timespec* now) noexcept {
  const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, now));
  if (result == 0 && is_wall_clock(clock))
    now->tv_sec += seconds_ahead;
  return result;
}

std::time_t time(std::time_t* now) noexcept {
  timespec wall{};
  clock_gettime(CLOCK_REALTIME, &wall);
  if (now != nullptr)
    *now = wall.tv_sec;
  return wall.tv_sec;
}

int gettimeofday(timeval* now, void*) noexcept {
  timespec wall{};
  clock_gettime(CLOCK_REALTIME, &wall);
  *now = {.tv_sec = wall.tv_sec, .tv_usec = wall.tv_nsec / 1000};
  return 0;
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
