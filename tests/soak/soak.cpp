// Plays through all screens for many frames, with the real host library drawing offscreen, and
// fails when memory grew by more than one percent after the first ten thousand.
//
//   kavo_soak [frames]
//
// Chance, time and keys are scripted, so that every run is the same: the generator is seeded by
// QORRT_SEED, the clock moves only when the game sleeps, and the state of a key is answered here;
// offscreen nobody could press one. Every other command goes to the real library. Scores go to
// tmp/ below the current folder.
#include <dlfcn.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "game/program.h"
#include "game/state.h"
#include "tests/game/players.h"
#include "tests/soak/memory.h"

namespace {

using kavo::soak::resident_bytes;
using kavo::test::Keys;
using kavo::test::Visitor;

constexpr int64_t warm_up_frames = 10'000;
constexpr int64_t default_frames = 1'000'000;

// The run and what is measured in it.
struct Soak {
  explicit Soak(int64_t frames) : visitor(5, frames), last_frame(frames) {}

  void next_frame() {
    held = visitor.keys();
    if (visitor.frames() == warm_up_frames)
      warm_bytes = resident_bytes();
    if (visitor.frames() == last_frame)
      final_bytes = resident_bytes();
  }

  Visitor visitor;
  Keys held;
  int64_t last_frame;
  int64_t warm_bytes = 0;
  int64_t final_bytes = 0;
};

Soak* soak = nullptr;

int64_t frames_wanted(int argc, char** argv) {
  if (argc < 2)
    return default_frames;
  const std::string_view text = argv[1];
  int64_t frames = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), frames);
  const bool is_number = error == std::errc() && end == text.data() + text.size();
  return argc == 2 && is_number && frames > warm_up_frames ? frames : 0;
}

int report(const Soak& done) {
  const auto warm = static_cast<double>(done.warm_bytes);
  const double growth = 100.0 * (static_cast<double>(done.final_bytes) - warm) / warm;
  std::printf("%lld frames, %lld games, %lld names entered\n",
              static_cast<long long>(done.visitor.frames()),
              static_cast<long long>(done.visitor.games()),
              static_cast<long long>(done.visitor.names()));
  std::printf("resident after %lld frames: %lld KiB, at the end: %lld KiB (%+.2f %%)\n",
              static_cast<long long>(warm_up_frames),
              static_cast<long long>(done.warm_bytes / 1024),
              static_cast<long long>(done.final_bytes / 1024), growth);
  if (done.warm_bytes > 0 && done.final_bytes > 0 && growth <= 1.0)
    return EXIT_SUCCESS;
  std::puts("FAILED: memory grew by more than 1 %, or could not be read");
  return EXIT_FAILURE;
}

using Call = double (*)(int64_t, const char*, const void*, const uint32_t*, int64_t);

Call real_call() {
  static const auto call = reinterpret_cast<Call>(dlsym(RTLD_NEXT, "qorrt_call_typed_f64"));
  return call;
}

// The game asks for "Left" first in every frame.
double state_of(const qor_slot* slots) {
  const std::string_view key = slots->str;
  if (key == "Left")
    soak->next_frame();
  return soak->held.contains(std::string(key)) ? 1.0 : 0.0;
}

} // namespace

// Stands before the host library's own.
extern "C" double qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                                       const uint32_t* tags, int64_t n) {
  if (std::string_view(name) == "GFX.KEYSTATE")
    return state_of(static_cast<const qor_slot*>(slots));
  return real_call()(handle, name, slots, tags, n);
}

int main(int argc, char** argv) {
  const int64_t frames = frames_wanted(argc, argv);
  if (frames == 0) {
    std::fprintf(stderr, "usage: kavo_soak [frames], more than %lld\n",
                 static_cast<long long>(warm_up_frames));
    return 2;
  }
  setenv("SDL_VIDEODRIVER", "offscreen", 1);
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  setenv("QORRT_SEED", "5", 1);
  Soak run(frames);
  soak = &run;
  char* game_arguments[] = {argv[0], nullptr};
  static_cast<void>(kavo::run_program(1, game_arguments));
  if (qor_err_code() != 0)
    qor_throw_uncaught();
  kavo::release_state();
  return report(run);
}
