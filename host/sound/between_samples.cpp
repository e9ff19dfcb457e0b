#include "host/sound/between_samples.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/sound/elementary.h"

namespace kavo::sound {

namespace {

constexpr double pi = std::numbers::pi;

// A sinc under a Hann window that is a little wider than the reach.
double weight(double x, double reach) {
  const double window = 0.5 + 0.5 * cosine_of_turns(0.5 * x / (reach + 0.5));
  return sine_of_turns(0.5 * x) / (pi * x) * window;
}

float loudest(const float* samples, int64_t frames) {
  float result = 0.0f;
  for (int64_t i = 0; i < frames; ++i)
    result = std::max(result, std::abs(samples[i]));
  return result;
}

} // namespace

BetweenSamples::BetweenSamples() {
  for (size_t point = 0; point < points; ++point) {
    const double offset = static_cast<double>(point + 1) / (points + 1);
    float sum = 0.0f;
    for (size_t tap = 0; tap < taps; ++tap) {
      const double x = static_cast<double>(tap) - static_cast<double>(reach - 1) - offset;
      weights_[point][tap] = static_cast<float>(weight(x, reach));
      sum += std::abs(weights_[point][tap]);
    }
    worst_case_ = std::max(worst_case_, 1.0001f * sum); // the sums are rounded
  }
}

// A few frames at a time: most passages are too quiet for a peak, and are passed over.
void BetweenSamples::raise_to_peaks(const float* samples, float* peaks, int64_t frames,
                                    float threshold) const {
  for (int64_t i = 0; i < frames; ++i)
    peaks[i] = std::max(peaks[i], std::abs(samples[i + static_cast<int64_t>(reach) - 1]));
  for (int64_t start = 0; start < frames; start += at_a_time) {
    const int64_t some = std::min(at_a_time, frames - start);
    if (loudest(samples + start, some + static_cast<int64_t>(taps) - 1) * worst_case_ <= threshold)
      continue;
    for (const auto& weights : weights_)
      raise_to_point(weights, samples + start, peaks + start, some);
  }
}

// Each tap for all frames: every frame has its sum in the same order, and several are made at once.
void BetweenSamples::raise_to_point(const Weights& weights, const float* samples, float* peaks,
                                    int64_t frames) {
  std::array<float, at_a_time> sums{};
  for (size_t tap = 0; tap < taps; ++tap)
    for (int64_t i = 0; i < frames; ++i)
      sums[static_cast<size_t>(i)] += weights[tap] * samples[i + static_cast<int64_t>(tap)];
  for (int64_t i = 0; i < frames; ++i)
    peaks[i] = std::max(peaks[i], std::abs(sums[static_cast<size_t>(i)]));
}

} // namespace kavo::sound
