// The waveform between the samples, four times as fine, as far as a peak may hide there.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kavo::sound {

class BetweenSamples {
public:
  // A point between two samples is made of as many samples to each side.
  static constexpr size_t reach = 16;

  BetweenSamples();

  // peaks[i] becomes the largest size of itself, of samples[i + reach - 1] and of the points from
  // there to the next sample, for `frames` values of i; reads frames + 2 * reach - 1 samples.
  // Points are left out where the samples are so small that none can exceed `threshold`.
  void raise_to_peaks(const float* samples, float* peaks, int64_t frames, float threshold) const;

private:
  static constexpr size_t taps = 2 * reach;
  static constexpr size_t points = 3; // at quarters, between one sample and the next

  using Weights = std::array<float, taps>;

  static constexpr int64_t at_a_time = 64;

  static void raise_to_point(const Weights& weights, const float* samples, float* peaks,
                             int64_t frames);

  std::array<Weights, points> weights_{};
  float worst_case_ = 0.0f; // no point is larger than this times the largest sample around it
};

} // namespace kavo::sound
