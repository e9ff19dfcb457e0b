// The synthesizer on the audio thread's side: a bus for the music and the sequencer that plays it,
// a bus for the effects, before which the music steps back, and the limiter. Two threads meet here
// and nowhere else: one sends commands and collects the scores that are no longer played, the other
// renders.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "host/sound/audio_source.h"
#include "host/sound/bus.h"
#include "host/sound/command.h"
#include "host/sound/ducker.h"
#include "host/sound/fader.h"
#include "host/sound/limiter.h"
#include "host/sound/ring.h"
#include "host/sound/sequencer.h"

namespace kavo::sound {

inline constexpr size_t command_capacity = 1024;

// The level of the mix: the game's music peaks at -7 dBFS and leaves the rest to the effects.
inline constexpr float master_gain = 0.30f;

// An effect that could not be played for so long, because the device stood still, is dropped: it
// would no longer be heard as the sound of what caused it.
inline constexpr double longest_delay_of_effects = 0.2; // seconds

class Engine final : public AudioSource {
public:
  // All memory that it ever needs is taken here. Nothing is heard until the curtain opens.
  explicit Engine(int rate);

  // The commanding thread's side.

  // Takes effect at the next block; before the first block everything is in place at once, later
  // levels glide. False, and nothing sent, when the queue is full because nobody renders. A score
  // that is sent stays the caller's and must live until it comes back from retired_score, or as
  // long as the engine.
  bool send(const Command& command) { return commands_.push(command); }

  // A score that is no longer played, null when there is none.
  const Score* retired_score();

  // What the commanding thread's clock says, which plucks are compared with.
  void tell_time(double seconds) { now_.store(seconds, std::memory_order_relaxed); }

  int rate() const { return rate_; }

  // Frames rendered so far.
  int64_t frames_rendered() const { return frames_rendered_.load(std::memory_order_acquire); }
  // True when the curtain has closed and the block after that is silent.
  bool is_silenced() const { return is_silenced_.load(std::memory_order_acquire); }

  // The rendering thread's side.
  void render(float* interleaved, int64_t frames) noexcept override;

  int64_t latency() const override { return limiter_.latency(); }

private:
  // Blocks of any size are rendered in runs of at most this many frames.
  static constexpr int64_t longest_run = 512;
  static_assert(longest_run <= Bus::longest_run && longest_run <= Limiter::longest_run);
  using Run = std::array<float, longest_run>;

  void obey_commands();
  void obey(const Command& command);
  void pluck(const Command& command);
  void set_levels(const Levels& levels);
  void change_score(const Score* score, bool loops);
  int64_t play_due_notes(int64_t frames);
  void render_run(float* interleaved, int64_t frames);
  void mix_buses(int64_t frames);

  int rate_;
  Sequencer sequencer_;
  Bus music_;
  Bus effects_;
  Ducker ducker_;
  Fader master_level_{1.0f};
  Limiter limiter_;
  Fader curtain_;

  Run left_{};
  Run right_{};
  Run effects_left_{};
  Run effects_right_{};
  Run presence_{};
  Run effects_presence_{};

  Ring<Command, command_capacity> commands_;
  // Never full: at most as many scores can be under way as commands, and the one that plays.
  Ring<const Score*, 2 * command_capacity> retired_;
  std::atomic<double> now_ = 0.0;
  std::atomic<int64_t> frames_rendered_ = 0;
  std::atomic<bool> is_silenced_ = false;
};

} // namespace kavo::sound
