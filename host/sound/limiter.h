// A ceiling that nothing exceeds, not between the samples either: peaks are seen 1.5 ms before they
// come out, and the level is down when they do. What stays below the ceiling comes out as it went
// in, to the bit.
//
// The steps are those of the look-ahead limiter in U. Zölzer (ed.), "DAFX: Digital Audio Effects"
// (2nd ed. 2011), ch. 4.2, with peaks between samples found as ITU-R BS.1770-4, annex 2, has it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/sound/between_samples.h"
#include "host/sound/gain_smoother.h"

namespace kavo::sound {

class Limiter {
public:
  // The most frames that can be processed at a time.
  static constexpr int64_t longest_run = 512;

  void prepare(int rate);

  // How many frames later everything comes out.
  int64_t latency() const { return latency_; }

  // In place; both sides are turned down alike.
  void process(float* left, float* right, int64_t frames);

private:
  // The last `latency_` frames of a side, and behind them the ones to come.
  using Line = std::vector<float>;

  bool is_transparent(int64_t frames) const;
  void find_peaks(int64_t frames);
  void turn_down(float* left, float* right, int64_t frames);

  int64_t latency_ = 0;
  BetweenSamples between_samples_;
  GainSmoother smoother_;
  std::array<Line, 2> lines_;
  std::array<float, longest_run> peaks_{};
};

} // namespace kavo::sound
