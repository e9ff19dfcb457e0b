// Plays through all screens for many frames with the music on, and fails when memory grew by more
// than one percent after the first ten thousand, or when the sound was not there.
//
//   kavo_soak [frames]
//
// Chance, time, keys and the sound card are scripted, so that every run is the same: the clock
// moves only when the game sleeps, and the card takes as much sound as the clock has moved.
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "tests/fakes/fake_clock.h"
#include "tests/fakes/stage.h"
#include "tests/soak/memory.h"
#include "tests/soak/play.h"
#include "tests/soak/sound_card.h"

namespace {

using kavo::soak::resident_bytes;
using kavo::soak::SoundCard;
using kavo::soak::SoundTaken;
using kavo::test::FakeClock;
using kavo::test::Visitor;

constexpr int64_t warm_up_frames = 10'000;
constexpr int64_t default_frames = 1'000'000;

// The sanitizers keep what was freed for a while, to find who still uses it.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool is_memory_judged = false;
#else
constexpr bool is_memory_judged = true;
#endif

struct Memory {
  int64_t warm_bytes = 0;
  int64_t final_bytes = 0;
};

bool did_memory_stay(const Memory& memory) {
  const auto warm = static_cast<double>(memory.warm_bytes);
  const double growth = 100.0 * (static_cast<double>(memory.final_bytes) - warm) / warm;
  std::printf("resident after %lld frames: %lld KiB, at the end: %lld KiB (%+.2f %%)\n",
              static_cast<long long>(warm_up_frames),
              static_cast<long long>(memory.warm_bytes / 1024),
              static_cast<long long>(memory.final_bytes / 1024), growth);
  if (memory.warm_bytes > 0 && memory.final_bytes > 0 && growth <= 1.0)
    return true;
  std::puts("FAILED: memory grew by more than 1 %, or could not be read");
  return false;
}

// The card is open from start to end and takes nine tenths of the time at the very least.
bool was_heard(const SoundTaken& sound, const FakeClock& clock) {
  constexpr float audible = 0.05f;
  const double seconds = static_cast<double>(sound.frames) / kavo::soak::sound_rate;
  const double played = clock.now_ms / 1000.0;
  std::printf("%.0f s of sound in %.0f s of play, peak %.2f\n", seconds, played,
              static_cast<double>(sound.peak));
  if (seconds >= 0.9 * played && sound.peak >= audible)
    return true;
  std::puts("FAILED: the synthesizer did not play all the time");
  return false;
}

} // namespace

int main(int argc, char** argv) {
  const int64_t frames = argc < 2 ? default_frames : kavo::soak::whole_number(argv[1]);
  if (argc > 2 || frames == 0) {
    std::fprintf(stderr, "usage: kavo_soak [frames]\n");
    return 2;
  }
  SoundTaken taken;
  SoundCard* card = nullptr;
  kavo::test::stage().make_sound_output = [&] {
    auto made = std::make_unique<SoundCard>(taken);
    card = made.get();
    return made;
  };
  const FakeClock& clock = kavo::test::fake_clock();
  Visitor visitor(5, frames);
  Memory memory;
  kavo::soak::play(visitor, [&] {
    card->play_until(clock.now_ms);
    if (visitor.frames() == warm_up_frames)
      memory.warm_bytes = resident_bytes();
    if (visitor.frames() == frames)
      memory.final_bytes = resident_bytes();
  });
  kavo::soak::tell_what_was_played(visitor);
  const bool is_well_kept =
      !is_memory_judged || frames <= warm_up_frames || did_memory_stay(memory);
  return was_heard(taken, clock) && is_well_kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
