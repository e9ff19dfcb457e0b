#include "tests/fakes/fake_clock.h"

#include "runtime/clock.h"

namespace kavo::test {

namespace {

double tick(void* context) {
  auto& clock = *static_cast<FakeClock*>(context);
  const double now = clock.now_ms;
  clock.now_ms += clock.step_ms;
  return now;
}

void sleep(void* context, uint32_t milliseconds) {
  auto& clock = *static_cast<FakeClock*>(context);
  clock.now_ms += milliseconds;
  clock.slept_ms += milliseconds;
  if (clock.on_sleep)
    clock.on_sleep();
}

FakeClock* installed(FakeClock& clock) {
  const qor_clock functions = {.tick = tick, .sleep = sleep, .context = &clock};
  qor_set_clock(&functions);
  return &clock;
}

} // namespace

FakeClock& fake_clock() {
  static FakeClock clock;
  static FakeClock* const in_use = installed(clock);
  return *in_use;
}

} // namespace kavo::test
