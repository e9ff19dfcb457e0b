#include "tests/host/sound/loudness.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "tests/host/sound/biquad.h"

namespace kavo::sound::analysis {

namespace {

constexpr double pi = std::numbers::pi;
constexpr double rate = 48000.0;

// ITU-R BS.1770-4, tables 1 and 2.
std::vector<double> k_weighted_squares(Samples interleaved, size_t channel) {
  Biquad shelf({1.53512485958697, -2.69169618940638, 1.19839281085285},
               {1.0, -1.69065929318241, 0.73248077421585});
  Biquad low_cut({1.0, -2.0, 1.0}, {1.0, -1.99004745483398, 0.99007225036621});
  std::vector<double> squares;
  for (size_t i = channel; i < interleaved.size(); i += 2) {
    const double weighted = low_cut.process(shelf.process(interleaved[i]));
    squares.push_back(weighted * weighted);
  }
  return squares;
}

double gated_mean(const std::vector<double>& powers, double gate) {
  double sum = 0.0;
  int count = 0;
  for (const double power : powers) {
    if (power <= gate)
      continue;
    sum += power;
    ++count;
  }
  return count == 0 ? 0.0 : sum / count;
}

double lufs(double power) {
  return -0.691 + power_decibels(power);
}
double power_of_lufs(double level) {
  return std::pow(10.0, (level + 0.691) / 10.0);
}

// Blackman-windowed sinc, `reach` samples to each side, for the points between two samples.
class Interpolator {
public:
  Interpolator() {
    for (size_t phase = 0; phase < phases; ++phase)
      for (size_t tap = 0; tap < taps; ++tap)
        taps_[phase][tap] =
            weight(static_cast<double>(tap) - (reach - 1) - static_cast<double>(phase) / phases);
  }

  // The loudest point from sample `at` of a channel to the next one.
  double loudest_from(Samples interleaved, size_t channel, size_t at) const {
    double loudest = 0.0;
    for (const auto& weights : taps_) {
      double sum = 0.0;
      for (size_t tap = 0; tap < taps; ++tap)
        sum += weights[tap] * interleaved[2 * (at + tap + 1 - reach) + channel];
      loudest = std::max(loudest, std::abs(sum));
    }
    return loudest;
  }

  static constexpr size_t phases = 16;
  static constexpr size_t reach = 24;
  static constexpr size_t taps = 2 * reach;

private:
  static double weight(double x) {
    const double sinc = x == 0.0 ? 1.0 : std::sin(pi * x) / (pi * x);
    const double turn = pi * x / reach;
    return std::abs(x) >= reach ? 0.0
                                : sinc * (0.42 + 0.5 * std::cos(turn) + 0.08 * std::cos(2 * turn));
  }

  std::array<std::array<double, taps>, phases> taps_{};
};

} // namespace

double loudness(Samples interleaved) {
  constexpr size_t block = 19200, hop = 4800; // 400 ms, overlapping by three quarters
  const auto left = k_weighted_squares(interleaved, 0);
  const auto right = k_weighted_squares(interleaved, 1);
  std::vector<double> powers;
  for (size_t start = 0; start + block <= left.size(); start += hop) {
    double sum = 0.0;
    for (size_t i = start; i < start + block; ++i)
      sum += left[i] + right[i];
    powers.push_back(sum / block);
  }
  const double absolute_gate = power_of_lufs(-70.0);
  const double relative_gate = power_of_lufs(lufs(gated_mean(powers, absolute_gate)) - 10.0);
  return lufs(gated_mean(powers, std::max(absolute_gate, relative_gate)));
}

double ungated_loudness(Samples interleaved) {
  double sum = 0.0;
  for (const size_t channel : {0, 1})
    for (const double square : k_weighted_squares(interleaved, channel))
      sum += square;
  return lufs(sum / (static_cast<double>(interleaved.size()) / 2));
}

std::vector<float> high_passed(Samples interleaved, double frequency) {
  std::vector<float> passed(interleaved.size());
  for (const size_t channel : {0, 1}) {
    Biquad filter = high_pass(frequency / rate, std::numbers::sqrt2 / 2);
    for (size_t i = channel; i < interleaved.size(); i += 2)
      passed[i] = static_cast<float>(filter.process(interleaved[i]));
  }
  return passed;
}

// Where the samples themselves are far below the loudest there is nothing to find between them: a
// sum of windowed sincs exceeds the loudest of its samples by less than a factor of four.
double true_peak(Samples interleaved) {
  static const Interpolator interpolator;
  constexpr size_t reach = Interpolator::reach;
  const size_t frames = interleaved.size() / 2;
  double loudest = peak(interleaved);
  for (const size_t channel : {0, 1})
    for (size_t i = reach - 1; i + reach < frames; ++i) {
      const double near = std::max(std::abs(interleaved[2 * i + channel]),
                                   std::abs(interleaved[2 * i + 2 + channel]));
      if (near > loudest / 4)
        loudest = std::max(loudest, interpolator.loudest_from(interleaved, channel, i));
    }
  return decibels(loudest);
}

} // namespace kavo::sound::analysis
