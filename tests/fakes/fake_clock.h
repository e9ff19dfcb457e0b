// A clock that stands still until it is told otherwise: sleeping moves it on and takes no time.
#pragma once

#include <functional>

namespace kavo::test {

struct FakeClock {
  double now_ms = 0.0;
  double slept_ms = 0.0;               // all sleeps together
  double step_ms = 0.0;                // how far every reading moves it on
  std::function<void()> on_sleep = {}; // called after every sleep
};

// From the first call on the runtime's tick and sleep ask this clock.
FakeClock& fake_clock();

} // namespace kavo::test
