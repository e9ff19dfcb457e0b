// Plays with a sound device whose thread is real, for the thread sanitizer to watch.
//
//   kavo_soak_threads <seconds>
//
// The clock runs ten times as fast as it should, and so does SDL's disk driver, which writes to
// nowhere: a minute holds ten minutes of play and of sound. SDL_AUDIODRIVER picks another driver.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <thread>

#include "host/desktop/sdl_output.h"
#include "runtime/clock.h"
#include "tests/fakes/stage.h"
#include "tests/soak/play.h"

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr double hurry = 10.0;

const Clock::time_point start = Clock::now();

double tick(void*) {
  return hurry * Milliseconds(Clock::now() - start).count();
}

void sleep(void*, uint32_t milliseconds) {
  std::this_thread::sleep_for(Milliseconds(milliseconds / hurry));
}

constexpr qor_clock hurried_clock = {.tick = tick, .sleep = sleep, .context = nullptr};

} // namespace

int main(int argc, char** argv) {
  const int64_t seconds = argc == 2 ? kavo::soak::whole_number(argv[1]) : 0;
  if (seconds == 0) {
    std::fprintf(stderr, "usage: kavo_soak_threads <seconds>\n");
    return 2;
  }
  setenv("SDL_AUDIODRIVER", "disk", 0);
  setenv("SDL_DISKAUDIOFILE", "/dev/null", 0);
  setenv("SDL_DISKAUDIODELAY", "1", 0);
  kavo::test::stage().make_sound_output = [] { return std::make_unique<kavo::sound::SdlOutput>(); };
  qor_set_clock(&hurried_clock);
  kavo::test::Visitor visitor(5, std::numeric_limits<int64_t>::max());
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  kavo::soak::play(visitor, [&] {
    if (Clock::now() >= end)
      visitor.leave();
  });
  kavo::soak::tell_what_was_played(visitor);
  std::printf("%lld s with a sound device of its own thread\n", static_cast<long long>(seconds));
}
