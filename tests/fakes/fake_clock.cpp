#include "tests/fakes/fake_clock.h"

#include "runtime/clock.h"

namespace kavo::test {

FakeClock& fake_clock() {
  static FakeClock clock;
  return clock;
}

} // namespace kavo::test

extern "C" {

double qor_tick(void) {
  auto& clock = kavo::test::fake_clock();
  const double now = clock.now_ms;
  clock.now_ms += clock.step_ms;
  return now;
}

void qor_sleep(uint32_t milliseconds) {
  auto& clock = kavo::test::fake_clock();
  clock.now_ms += milliseconds;
  clock.slept_ms += milliseconds;
  if (clock.on_sleep)
    clock.on_sleep();
}
}
