#include "host/sound/envelope.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/sound/elementary.h"

namespace kavo::sound {

namespace {

constexpr double steepness = 4.0;
constexpr double last = 0.018315638888734179; // exp(-steepness)
constexpr double shortest_onset = 0.0005;     // seconds, attack and decay
constexpr double shortest_release = 0.002;
constexpr int64_t forever = std::numeric_limits<int64_t>::max();

int64_t in_frames(double seconds, double shortest, int rate) {
  return std::max<int64_t>(1, std::llround(std::max(seconds, shortest) * rate));
}

} // namespace

EnvelopeShape::EnvelopeShape(const EnvelopeTimes& times, int rate)
    : attack(in_frames(times.attack, shortest_onset, rate)),
      decay(in_frames(times.decay, shortest_onset, rate)),
      release(in_frames(times.release, shortest_release, rate)), sustain(times.sustain) {}

void Envelope::start(const EnvelopeShape& shape, int64_t gate) {
  gate_ = std::max<int64_t>(gate, 1);
  decay_ = shape.decay;
  release_ = shape.release;
  sustain_ = shape.sustain;
  stage_ = Stage::idle;
  enter(Stage::attack, 1.0, shape.attack);
}

void Envelope::release() {
  if (stage_ == Stage::idle || stage_ == Stage::release)
    return;
  gate_ = forever;
  enter(Stage::release, 0.0, release_);
}

void Envelope::fade(int64_t frames) {
  if (stage_ == Stage::idle)
    return;
  gate_ = forever;
  enter(Stage::release, 0.0, frames);
}

double Envelope::level() const {
  switch (stage_) {
  case Stage::idle:
    return 0.0;
  case Stage::attack:
    return static_cast<double>(position_) / static_cast<double>(length_);
  case Stage::sustain:
    return target_;
  default:
    return target_ + (start_ - target_) * ((fall_ - last) / (1.0 - last));
  }
}

void Envelope::enter(Stage stage, double target, int64_t length) {
  start_ = level();
  stage_ = stage;
  target_ = target;
  position_ = 0;
  length_ = length;
  fall_ = 1.0;
  factor_ = exponential(-steepness / static_cast<double>(length));
}

// `start_` of the next stage is this one's target, exactly.
void Envelope::next_stage() {
  const double arrived = target_;
  if (stage_ == Stage::attack)
    enter(Stage::decay, sustain_, decay_);
  else if (stage_ == Stage::decay && sustain_ > 0.0)
    enter(Stage::sustain, sustain_, forever);
  else
    stage_ = Stage::idle;
  start_ = arrived;
}

void Envelope::process(float* levels, int64_t frames) {
  while (frames > 0 && is_active()) {
    const int64_t run = std::min({frames, length_ - position_, gate_});
    write(levels, run);
    levels += run;
    frames -= run;
    if (stage_ != Stage::sustain)
      position_ += run;
    gate_ -= run;
    if (position_ == length_)
      next_stage();
    if (gate_ == 0)
      release();
  }
  std::fill(levels, levels + frames, 0.0f);
}

void Envelope::write(float* levels, int64_t frames) {
  if (stage_ == Stage::sustain) {
    std::fill(levels, levels + frames, static_cast<float>(target_));
  } else if (stage_ == Stage::attack) {
    const double slope = 1.0 / static_cast<double>(length_);
    for (int64_t i = 0; i < frames; ++i)
      levels[i] = static_cast<float>(static_cast<double>(position_ + i) * slope);
  } else {
    const double scale = (start_ - target_) / (1.0 - last);
    const double base = target_ - scale * last;
    for (int64_t i = 0; i < frames; ++i) {
      levels[i] = static_cast<float>(base + scale * fall_);
      fall_ *= factor_;
    }
  }
}

} // namespace kavo::sound
