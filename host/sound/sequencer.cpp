#include "host/sound/sequencer.h"

#include <algorithm>

namespace kavo::sound {

void Sequencer::prepare(int rate) {
  ticks_per_cycle_ = int64_t{240'000} * rate;
  play(nullptr, false);
}

void Sequencer::play(const Score* score, bool loops) {
  score_ = score;
  loops_ = loops;
  position_ = 0;
  loop_start_ = 0;
  next_ = 0;
}

int64_t Sequencer::tick_of(const Fraction& time) const {
  return static_cast<int64_t>(int128{time.numerator()} * ticks_per_cycle_ / time.denominator());
}

// To the frame nearest to the tick.
int64_t Sequencer::frames_until(int64_t tick) const {
  const int64_t ticks = tick - position_ + ticks_per_frame_ / 2;
  return ticks < 0 ? 0 : ticks / ticks_per_frame_;
}

int64_t Sequencer::frames_before_next(int64_t limit) const {
  if (score_ == nullptr || next_ >= score_->notes.size())
    return limit;
  return std::min(limit, frames_until(next_tick()));
}

const ScoreNote* Sequencer::next_due(int64_t& gate) {
  if (frames_before_next(1) > 0)
    return nullptr;
  const ScoreNote& note = next_note();
  const int64_t tick = next_tick();
  gate = std::max<int64_t>(1, frames_until(tick + tick_of(note.length)));
  if (++next_ == score_->notes.size() && loops_) {
    next_ = 0;
    loop_start_ += score_->cycles * ticks_per_cycle_;
  }
  return &note;
}

} // namespace kavo::sound
