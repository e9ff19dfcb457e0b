#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "host/sound/filter.h"
#include "tests/host/sound/analysis.h"

namespace kavo::sound {
namespace {

constexpr int rate = 48000;

std::vector<float> sine(double frequency, size_t frames) {
  std::vector<float> samples(frames);
  for (size_t i = 0; i < frames; ++i)
    samples[i] = static_cast<float>(
        std::sin(2.0 * std::numbers::pi * frequency * static_cast<double>(i) / rate));
  return samples;
}

// The gain at `frequency` in dB once the filter has settled.
double response(double cutoff, double frequency) {
  LowPassFilter filter;
  filter.prepare(rate);
  filter.set_cutoff(cutoff);
  auto samples = sine(frequency, 16384 + 32768);
  filter.process(samples.data(), static_cast<int64_t>(samples.size()));
  const auto settled = analysis::Samples(samples).subspan(16384);
  return analysis::decibels(
      analysis::amplitude_at(analysis::power_spectrum(settled), frequency / rate));
}

TEST(LowPassFilter, IsThreeDecibelsDownAtTheCutoff) {
  double worst = 0.0;
  for (const double cutoff : {100.0, 500.0, 2000.0, 8000.0, 20000.0}) {
    const double gain = response(cutoff, cutoff);
    EXPECT_NEAR(gain, -3.0, 0.1) << cutoff;
    worst = std::max(worst, std::abs(gain + 3.0));
  }
  analysis::report("filter at its cutoff, worst distance from -3 dB", worst);
}

TEST(LowPassFilter, PassesTheBassAndFallsBy12DecibelsAnOctave) {
  EXPECT_NEAR(response(2000.0, 100.0), 0.0, 0.01);
  EXPECT_NEAR(response(500.0, 2000.0) - response(500.0, 1000.0), -11.8, 0.3);
}

TEST(LowPassFilter, LetsEverythingThroughAtZeroAndNearHalfTheRate) {
  for (const double cutoff : {0.0, -1.0, 0.49 * rate, 1e9}) {
    LowPassFilter filter;
    filter.prepare(rate);
    filter.set_cutoff(cutoff);
    const auto in = sine(10000.0, 1000);
    auto out = in;
    filter.process(out.data(), 1000);
    EXPECT_EQ(in, out) << cutoff;
  }
}

TEST(LowPassFilter, StaysFiniteWhateverItIsTurnedTo) {
  LowPassFilter filter;
  filter.prepare(rate);
  auto samples = sine(440.0, rate);
  const double cutoffs[] = {20.0, 20000.0, 0.0, 500.0, 1e-3, 23519.0, -5.0, 2000.0};
  for (size_t i = 0; i < 100; ++i) {
    filter.set_cutoff(cutoffs[i % 8]);
    filter.process(samples.data() + i * 480, 480);
  }
  EXPECT_LE(analysis::peak(samples), 2.0);
}

TEST(LowPassFilter, TurningItMakesNoClick) {
  LowPassFilter filter;
  filter.prepare(rate);
  auto samples = sine(220.0, 9600);
  filter.process(samples.data(), 2400);
  filter.set_cutoff(500.0);
  filter.process(samples.data() + 2400, 2400);
  filter.set_cutoff(3000.0);
  filter.process(samples.data() + 4800, 2400);
  filter.set_cutoff(0.0);
  filter.process(samples.data() + 7200, 2400);
  EXPECT_LE(analysis::loudest_above(samples, 8000.0 / rate, 240, 480), -80.0);
}

TEST(LowPassFilter, RingsOutToRest) {
  LowPassFilter filter;
  filter.prepare(rate);
  filter.set_cutoff(100.0);
  auto samples = sine(440.0, 4800);
  filter.process(samples.data(), 4800);
  EXPECT_FALSE(filter.is_at_rest());
  std::vector<float> silence(4 * rate);
  filter.process(silence.data(), 4 * rate);
  EXPECT_TRUE(filter.is_at_rest());
}

} // namespace
} // namespace kavo::sound
