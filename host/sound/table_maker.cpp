#include "host/sound/table_maker.h"

#include <algorithm>
#include <numbers>

#include "host/sound/elementary.h"

namespace kavo::sound {

namespace {

// Reading between samples in a straight line takes as much from harmonic k as sinc(k / N)^2 says:
// 0.4 dB at 16 kHz in the longest triangle.
double lost_by_reading(size_t k, size_t size) {
  const double turns = static_cast<double>(k) / static_cast<double>(2 * size);
  const double sinc = sine_of_turns(turns) / (2.0 * std::numbers::pi * turns);
  return sinc * sinc;
}

} // namespace

std::vector<double> TableMaker::single_cycle(std::span<const double> amplitudes, size_t size) {
  points_.assign(size, 0.0);
  for (size_t k = 1; k <= amplitudes.size(); ++k)
    points_[k] = amplitudes[k - 1] / lost_by_reading(k, size);
  transforms_.try_emplace(size, size).first->second.transform(points_, amplitudes.size() + 1);
  std::vector<double> cycle(size);
  std::transform(points_.begin(), points_.end(), cycle.begin(),
                 [](const auto& point) { return -point.imag(); });
  return cycle;
}

std::vector<float> closed(const std::vector<double>& cycle) {
  std::vector<float> samples(cycle.size() + 1);
  std::transform(cycle.begin(), cycle.end(), samples.begin(),
                 [](double sample) { return static_cast<float>(sample); });
  samples.back() = samples.front();
  return samples;
}

} // namespace kavo::sound
