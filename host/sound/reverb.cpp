#include "host/sound/reverb.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/sound/elementary.h"

namespace kavo::sound {

namespace {

constexpr std::array<double, 4> allpass_ms = {3.6, 5.5, 8.4, 12.7};
constexpr std::array<double, 8> line_ms = {29.0, 34.3, 39.7, 45.2, 51.1, 57.4, 64.0, 71.0};
constexpr float allpass_gain = 0.6f;
constexpr float matrix_gain = 0.35355339f; // 1 / sqrt(8): the Hadamard matrix keeps the energy
constexpr float input_gain = 0.35355339f;  // shares the input's energy among the lines
constexpr float early_gain = 0.395f;
constexpr float late_gain = 0.55f;
constexpr float inaudible = 1e-7f; // -140 dBFS

bool is_prime(size_t number) {
  for (size_t divisor = 2; divisor * divisor <= number; ++divisor)
    if (number % divisor == 0)
      return false;
  return number > 1;
}

// Prime lengths have no common multiple at which echoes would pile up.
size_t prime_length(double milliseconds, int rate) {
  auto frames = static_cast<size_t>(std::max(2.0, milliseconds * rate / 1000.0));
  while (!is_prime(frames))
    ++frames;
  return frames;
}

// The fast Walsh-Hadamard transform, unscaled.
void hadamard(std::array<float, 8>& values) {
  for (size_t half = 1; half < values.size(); half *= 2) {
    for (size_t start = 0; start < values.size(); start += 2 * half) {
      for (size_t i = start; i < start + half; ++i) {
        const float sum = values[i] + values[i + half];
        values[i + half] = values[i] - values[i + half];
        values[i] = sum;
      }
    }
  }
}

// What either side hears of the lines: all of them, with signs that have as many in common as not,
// which is what keeps the sides apart.
float one_side(const std::array<float, 8>& out) {
  return (out[1] - out[0] + out[3] - out[2]) + (out[5] - out[4] + out[7] - out[6]);
}
float other_side(const std::array<float, 8>& out) {
  return (out[0] + out[1] - out[2] - out[3]) - (out[4] + out[5] - out[6] - out[7]);
}

} // namespace

double reverberation_seconds(double size) {
  return -0.09 * std::numbers::ln10 / logarithm(0.7 + 0.28 * size);
}

void Reverb::prepare(int rate) {
  rate_ = rate;
  for (size_t i = 0; i < allpass_count; ++i)
    allpasses_[i] = {std::vector<float>(prime_length(allpass_ms[i], rate)), 0};
  for (size_t i = 0; i < line_count; ++i)
    lines_[i] = {std::vector<float>(prime_length(line_ms[i], rate)), 0};
  early_.prepare(rate);
  longest_line_ = static_cast<int64_t>(lines_.back().samples.size());
  quiet_frames_ = longest_line_;
  damped_.fill(0.0f);
  now_ = target_ = parameters_for(ReverbSettings{});
  glide_left_ = 0;
}

Reverb::Parameters Reverb::parameters_for(const ReverbSettings& settings) const {
  Parameters result;
  const double frames_to_silence = reverberation_seconds(settings.size) * rate_;
  for (size_t i = 0; i < line_count; ++i) {
    const auto length = static_cast<double>(lines_[i].samples.size());
    result.feedback[i] =
        static_cast<float>(exponential(-3.0 * std::numbers::ln10 * length / frames_to_silence));
  }
  result.damping = static_cast<float>(0.4 * settings.damping);
  result.direct = static_cast<float>(settings.wet * (0.5 + 0.5 * settings.width));
  result.cross = static_cast<float>(settings.wet * (0.5 - 0.5 * settings.width));
  return result;
}

void Reverb::set(const ReverbSettings& settings) {
  target_ = parameters_for(settings);
  glide_left_ = rate_ / 100;
  const auto frames = static_cast<float>(glide_left_);
  for (size_t i = 0; i < line_count; ++i)
    step_.feedback[i] = (target_.feedback[i] - now_.feedback[i]) / frames;
  step_.damping = (target_.damping - now_.damping) / frames;
  step_.direct = (target_.direct - now_.direct) / frames;
  step_.cross = (target_.cross - now_.cross) / frames;
}

void Reverb::settle() {
  now_ = target_;
  glide_left_ = 0;
}

void Reverb::glide() {
  if (--glide_left_ == 0) {
    now_ = target_;
    return;
  }
  for (size_t i = 0; i < line_count; ++i)
    now_.feedback[i] += step_.feedback[i];
  now_.damping += step_.damping;
  now_.direct += step_.direct;
  now_.cross += step_.cross;
}

float Reverb::smear(float in) {
  for (auto& allpass : allpasses_) {
    const float delayed = allpass.now();
    const float fed = in + allpass_gain * delayed;
    allpass.now() = fed;
    allpass.advance();
    in = delayed - allpass_gain * fed;
  }
  return in;
}

void Reverb::process(const float* in, float* left, float* right, int64_t frames) {
  for (int64_t done = 0; done < frames; done += longest_run)
    process_run(in + done, left + done, right + done, std::min(longest_run, frames - done));
}

void Reverb::process_run(const float* in, float* left, float* right, int64_t frames) {
  bool was_awake = false;
  for (int64_t i = 0; i < frames; ++i) {
    if (glide_left_ > 0)
      glide();
    const auto at = static_cast<size_t>(i);
    direct_[at] = now_.direct;
    cross_[at] = now_.cross;
    smeared_[at] = one_[at] = other_[at] = 0.0f;
    if (in[i] == 0.0f && is_asleep())
      continue;
    was_awake = true;
    smeared_[at] = process_frame(in[i], one_[at], other_[at]);
  }
  if (!was_awake)
    return;
  early_.process(smeared_.data(), early_gain, one_.data(), other_.data(), frames);
  for (int64_t i = 0; i < frames; ++i) {
    const auto at = static_cast<size_t>(i);
    left[i] += direct_[at] * one_[at] + cross_[at] * other_[at];
    right[i] += direct_[at] * other_[at] + cross_[at] * one_[at];
  }
}

// Gives what the early reflections get: exactly nothing as soon as it is inaudible, so that they
// have nothing left when the tail has died.
float Reverb::process_frame(float in, float& one, float& other) {
  const float smeared = smear(in);
  const float fed = smeared * input_gain;
  std::array<float, line_count> out;
  float loudest = std::abs(fed);
  for (size_t i = 0; i < line_count; ++i) {
    const float delayed = lines_[i].now();
    damped_[i] = delayed + now_.damping * (damped_[i] - delayed);
    out[i] = damped_[i] * now_.feedback[i];
    loudest = std::max(loudest, std::abs(out[i]));
  }
  one = late_gain * one_side(out);
  other = late_gain * other_side(out);
  hadamard(out);
  for (size_t i = 0; i < line_count; ++i) {
    lines_[i].now() = out[i] * matrix_gain + fed;
    lines_[i].advance();
  }
  quiet_frames_ = loudest < inaudible ? quiet_frames_ + 1 : 0;
  return std::abs(fed) < inaudible ? 0.0f : smeared;
}

} // namespace kavo::sound
