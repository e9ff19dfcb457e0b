// Sixteen voices, the room that they send to, and a level. What a pattern plays is on one bus and
// what is struck by hand on another, though they share the voices' numbers and set-up: so each has
// a volume of its own, and neither takes a note from the other.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "host/sound/fader.h"
#include "host/sound/reverb.h"
#include "host/sound/score.h"
#include "host/sound/voice.h"

namespace kavo::sound {

class Bus {
public:
  // The most frames that can be rendered at a time.
  static constexpr int64_t longest_run = 512;

  // With `drive`, notes are struck through it; it is borrowed.
  void prepare(const WavetableBank& bank, const Drive* drive, int rate);

  Voice& voice(int index) { return voices_[static_cast<size_t>(index)]; }
  void release_all();

  void set_room(const ReverbSettings& settings) { room_.set(settings); }
  // From 0 to 1, for the voices and their room; reached within 10 ms.
  void set_level(float level) { level_.move(level, rate_ / 100); }

  // Whatever is on its way to another value arrives at once.
  void settle();

  // Writes the next frames. Presence is how loud the notes are meant to be, all together: it is 0
  // when none sounds, whatever the room still gives back.
  void render(float* left, float* right, float* presence, int64_t frames);

private:
  int rate_ = 48000;
  std::array<Voice, voice_count> voices_;
  Reverb room_;
  Fader level_{1.0f};
  std::array<float, longest_run> send_{};
  std::array<float, 4 * longest_run> scratch_{};
};

} // namespace kavo::sound
