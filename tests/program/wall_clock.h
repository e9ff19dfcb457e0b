// The day and the time of day that the tests' program believes in.
#pragma once

namespace kavo::test {

// By how much the wall clock differs from the system's from now on, in seconds. Clocks that only
// measure go on as they were.
void set_wall_clock_ahead(double seconds);

} // namespace kavo::test
