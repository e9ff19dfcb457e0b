#include "bench/desktop/presents.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "host/desktop/window.h"

namespace kavo::bench {

namespace {

constexpr int presents = 300;

double thread_seconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// Any picture that has changed everywhere since the last one.
void draw_something(kavo::host::Canvas& canvas, int frame) {
  for (int y = 0; y < canvas.height(); ++y) {
    canvas.set_colour(static_cast<uint32_t>(frame * 7919 + y * 257));
    canvas.fill_rectangle(0, y, canvas.width(), 1);
  }
}

} // namespace

double present_seconds(const std::string& display_name, int scale) {
  setenv("DISPLAY", display_name.c_str(), 1);
  unsetenv("WAYLAND_DISPLAY");
  kavo::host::Canvas canvas(660, 800);
  kavo::host::Window window({canvas.width(), canvas.height(), "bench", static_cast<double>(scale)});
  std::vector<double> seconds;
  for (int frame = 0; frame < presents; ++frame) {
    draw_something(canvas, frame);
    const double start = thread_seconds();
    window.present(canvas);
    seconds.push_back(thread_seconds() - start);
  }
  std::nth_element(seconds.begin(), seconds.begin() + presents / 2, seconds.end());
  return seconds[presents / 2];
}

} // namespace kavo::bench
