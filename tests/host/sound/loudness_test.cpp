// The meters of loudness against signals whose figures are known.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "tests/host/sound/loudness.h"

namespace kavo::sound {
namespace {

// The same on both sides.
std::vector<float> tone(double frequency, double amplitude, size_t frames, double turns = 0.0) {
  std::vector<float> samples;
  for (size_t i = 0; i < frames; ++i)
    samples.insert(
        samples.end(), 2,
        static_cast<float>(amplitude *
                           std::sin(2.0 * std::numbers::pi *
                                    (frequency * static_cast<double>(i) / 48000.0 + turns))));
  return samples;
}

// EBU Tech 3341, test 1: a stereo tone of 1 kHz at -23 dBFS is -23 LUFS.
TEST(Loudness, OfATestToneIsItsLevel) {
  const auto samples = tone(1000.0, std::pow(10.0, -23.0 / 20.0), 20 * 48'000);
  EXPECT_NEAR(analysis::loudness(samples), -23.0, 0.1);
  EXPECT_NEAR(analysis::ungated_loudness(samples), -23.0, 0.1);
}

// A burst and silence: gates leave the silence out, the ungated figure is of all of it.
TEST(Loudness, GatesLeaveSilenceOut) {
  auto samples = tone(1000.0, 0.1, 10 * 48'000);
  samples.resize(2 * samples.size());
  EXPECT_NEAR(analysis::loudness(samples), -20.0, 0.2);
  EXPECT_NEAR(analysis::ungated_loudness(samples), -23.0, 0.2);
}

// A quarter of the rate, an eighth of a period off: the samples stand 3 dB below the peaks.
TEST(TruePeak, IsFoundBetweenTheSamples) {
  const auto samples = tone(12'000.0, 1.0, 9600, 0.125);
  EXPECT_NEAR(analysis::decibels(analysis::peak(samples)), -3.01, 0.01);
  const auto inside = analysis::Samples(samples).subspan(2000, 8000);
  EXPECT_NEAR(analysis::true_peak(inside), 0.0, 0.1);
}

TEST(HighPass, IsThreeDecibelsDownAtItsFrequency) {
  const auto level = [](double frequency) {
    const auto passed = analysis::high_passed(tone(frequency, 1.0, 48'000), 200.0);
    return analysis::decibels(
        analysis::root_mean_square(analysis::Samples(passed).subspan(48'000)) * std::sqrt(2.0));
  };
  EXPECT_NEAR(level(200.0), -3.01, 0.05);
  EXPECT_NEAR(level(50.0), -24.1, 0.1);
  EXPECT_NEAR(level(2000.0), 0.0, 0.01);
}

TEST(Distortion, IsWhatAConstantFactorDoesNotExplain) {
  const auto in = tone(100.0, 1.0, 4800);
  auto out = in;
  for (auto& sample : out)
    sample *= 0.3f;
  EXPECT_LE(analysis::distortion(in, out), -120.0);
  const auto overtone = tone(300.0, 0.003, 4800);
  for (size_t i = 0; i < out.size(); ++i)
    out[i] += overtone[i];
  EXPECT_NEAR(analysis::distortion(in, out), -40.0, 0.1);
}

} // namespace
} // namespace kavo::sound
