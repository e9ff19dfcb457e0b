// Walks a score in time with the sample clock, the only musical clock there is.
//
// Time is counted in ticks: a cycle has 240,000 * rate of them, and at a tempo of b thousandths
// of a beat per minute every frame lasts exactly b. So a position is an integer at any tempo, and
// a note is as exactly in time after a week as in the first bar.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/sound/score.h"

namespace kavo::sound {

class Sequencer {
public:
  void prepare(int rate);

  // In thousandths of a beat per minute; the position in the bar stays.
  void set_tempo(int64_t millibeats) { ticks_per_frame_ = millibeats; }

  // From its first cycle; null is silence. The score is borrowed.
  void play(const Score* score, bool loops);

  const Score* score() const { return score_; }

  // The next note that is due at the current frame, null when there is none (left). `gate` is
  // the number of frames for which it is held.
  const ScoreNote* next_due(int64_t& gate);

  // The frames before the next note is due, at most `limit`.
  int64_t frames_before_next(int64_t limit) const;

  void advance(int64_t frames) { position_ += frames * ticks_per_frame_; }

private:
  int64_t frames_until(int64_t tick) const;
  int64_t tick_of(const Fraction& time) const;
  int64_t next_tick() const { return loop_start_ + tick_of(next_note().onset); }
  const ScoreNote& next_note() const { return score_->notes[next_]; }

  int64_t ticks_per_cycle_ = 0;
  int64_t ticks_per_frame_ = 120'000;
  int64_t position_ = 0;   // ticks since the score began
  int64_t loop_start_ = 0; // the tick at which the loop of the next note began
  const Score* score_ = nullptr;
  size_t next_ = 0;
  bool loops_ = true;
};

} // namespace kavo::sound
