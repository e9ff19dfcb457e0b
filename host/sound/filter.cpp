#include "host/sound/filter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/sound/elementary.h"

namespace kavo::sound {

namespace {

constexpr float damping = std::numbers::sqrt2_v<float>; // 1 / Q

// A state that has died away would otherwise flip its sign for ever at the smallest number there
// is, and the voice would never come to rest.
float without_dust(float state) {
  return std::abs(state) < 1e-20f ? 0.0f : state;
}

} // namespace

void LowPassFilter::prepare(int rate) {
  rate_ = rate;
  warped_ = Fader(0.0f);
  share_ = Fader(0.0f);
  first_ = second_ = 0.0f;
}

void LowPassFilter::set_cutoff(double cutoff) {
  const int64_t ramp = rate_ / 100;
  if (cutoff <= 0.0 || cutoff >= 0.49 * rate_) {
    share_.move(0.0f, ramp);
    return;
  }
  const double turns = 0.5 * cutoff / rate_;
  const auto warped = static_cast<float>(sine_of_turns(turns) / cosine_of_turns(turns));
  const bool was_open = share_.level() == 0.0f;
  warped_.move(warped, was_open ? 0 : ramp);
  if (was_open)
    first_ = second_ = 0.0f;
  share_.move(1.0f, ramp);
}

LowPassFilter::Coefficients LowPassFilter::coefficients(float warped) {
  const float a1 = 1.0f / (1.0f + warped * (warped + damping));
  const float a2 = warped * a1;
  return {a1, a2, warped * a2};
}

float LowPassFilter::low_passed(float in, const Coefficients& c) {
  const float v3 = in - second_;
  const float v1 = c.a1 * first_ + c.a2 * v3;
  const float v2 = second_ + c.a2 * first_ + c.a3 * v3;
  first_ = without_dust(2.0f * v1 - first_);
  second_ = without_dust(2.0f * v2 - second_);
  return v2;
}

void LowPassFilter::process(float* samples, int64_t frames) {
  for (; frames > 0 && (warped_.is_moving() || share_.is_moving()); --frames, ++samples)
    *samples = process_moving(*samples);
  process_steady(samples, frames);
}

float LowPassFilter::process_moving(float in) {
  const float filtered = low_passed(in, coefficients(warped_.next()));
  return in + (filtered - in) * share_.next();
}

void LowPassFilter::process_steady(float* samples, int64_t frames) {
  if (share_.is_shut()) {
    first_ = second_ = 0.0f;
    return;
  }
  const Coefficients c = coefficients(warped_.level());
  for (int64_t i = 0; i < frames; ++i)
    samples[i] = low_passed(samples[i], c);
}

} // namespace kavo::sound
