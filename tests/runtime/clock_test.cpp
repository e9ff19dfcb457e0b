// The system's clock, and others in its place.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <ctime>
#include <fstream>
#include <string>

#include "runtime/clock.h"

namespace kavo::test {
namespace {

TEST(Tick, CountsMillisecondsWithAFractionFromTheStart) {
  const double first = qor_tick();
  EXPECT_GT(first, 0.0);
  double later = qor_tick();
  while (later == first)
    later = qor_tick();
  EXPECT_GT(later, first);
  EXPECT_NE(later, std::floor(later)) << "a fraction of exactly zero twice is a clock of whole ms";
}

double milliseconds_of(clockid_t clock) {
  timespec now = {};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) * 1000 + static_cast<double>(now.tv_nsec) / 1e6;
}

// The 22nd field of the process's status, in ticks since the machine was started.
double start_of_this_process_ms() {
  std::ifstream status("/proc/self/stat");
  std::string word;
  while (!word.ends_with(')'))
    status >> word;
  for (int field = 3; field <= 22; ++field)
    status >> word;
  return std::stod(word) * 1000 / static_cast<double>(sysconf(_SC_CLK_TCK));
}

TEST(Tick, IsAtMostTheAgeOfTheProcess) {
  const double tick = qor_tick();
  EXPECT_LE(tick, milliseconds_of(CLOCK_BOOTTIME) - start_of_this_process_ms());
}

TEST(Sleep, LastsAtLeastAsLongAsAsked) {
  const double before = qor_tick();
  qor_sleep(20);
  EXPECT_GE(qor_tick() - before, 20.0);
}

struct ClockOfATest {
  double now_ms = 1e6;
  uint32_t asked_ms = 0;
};

double tick(void* context) {
  return static_cast<ClockOfATest*>(context)->now_ms;
}

void sleep(void* context, uint32_t milliseconds) {
  static_cast<ClockOfATest*>(context)->asked_ms = milliseconds;
}

class ReplacedClock : public testing::Test {
protected:
  ~ReplacedClock() override { qor_set_clock(nullptr); }

  ClockOfATest clock;
};

TEST_F(ReplacedClock, TicksAndSleepsWithItsContext) {
  const qor_clock functions = {.tick = tick, .sleep = sleep, .context = &clock};
  qor_set_clock(&functions);
  EXPECT_EQ(qor_tick(), 1e6);
  clock.now_ms = -3.5;
  EXPECT_EQ(qor_tick(), -3.5) << "it may go back";
  qor_sleep(4'000'000'000U);
  EXPECT_EQ(clock.asked_ms, 4'000'000'000U);
}

TEST_F(ReplacedClock, IsCopied) {
  qor_clock functions = {.tick = tick, .sleep = sleep, .context = &clock};
  qor_set_clock(&functions);
  functions = {};
  EXPECT_EQ(qor_tick(), 1e6);
}

TEST_F(ReplacedClock, GivesWayToTheSystems) {
  const double before = qor_tick();
  const qor_clock functions = {.tick = tick, .sleep = sleep, .context = &clock};
  qor_set_clock(&functions);
  qor_set_clock(nullptr);
  const double after = qor_tick();
  EXPECT_GE(after, before) << "the system's went on meanwhile";
  EXPECT_NE(after, 1e6);
  qor_sleep(1);
  EXPECT_EQ(clock.asked_ms, 0U);
}

TEST_F(ReplacedClock, LeavesAMissingFunctionToTheSystem) {
  const qor_clock no_sleep = {.tick = tick, .sleep = nullptr, .context = &clock};
  qor_set_clock(&no_sleep);
  qor_sleep(1);
  EXPECT_EQ(qor_tick(), 1e6);
  const qor_clock no_tick = {.tick = nullptr, .sleep = sleep, .context = &clock};
  qor_set_clock(&no_tick);
  EXPECT_NE(qor_tick(), 1e6);
  qor_sleep(7);
  EXPECT_EQ(clock.asked_ms, 7U);
}

} // namespace
} // namespace kavo::test
