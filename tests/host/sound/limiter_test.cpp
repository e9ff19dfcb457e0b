// The ceiling at the end of the mix.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "host/sound/limiter.h"
#include "tests/host/sound/analysis.h"
#include "tests/host/sound/loudness.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

using analysis::Samples;

constexpr int rate = 48000;

// What comes out of a limiter, so much earlier that it stands where it went in.
std::vector<float> limited(const std::vector<float>& interleaved, size_t block = 512) {
  Limiter limiter;
  limiter.prepare(rate);
  const auto latency = static_cast<size_t>(limiter.latency());
  std::vector<float> left, right;
  for (size_t i = 0; i < interleaved.size(); i += 2) {
    left.push_back(interleaved[i]);
    right.push_back(interleaved[i + 1]);
  }
  left.resize(left.size() + latency);
  right.resize(left.size());
  for (size_t done = 0; done < left.size(); done += block) {
    const auto frames = std::min(block, left.size() - done);
    limiter.process(&left[done], &right[done], static_cast<int64_t>(frames));
  }
  std::vector<float> out;
  for (size_t i = latency; i < left.size(); ++i) {
    out.push_back(left[i]);
    out.push_back(right[i]);
  }
  return out;
}

// Noise on both sides.
std::vector<float> noise(size_t frames, float loudest, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> any(-loudest, loudest);
  std::vector<float> samples(2 * frames);
  for (auto& sample : samples)
    sample = any(random);
  return samples;
}

std::vector<float> tone(double frequency, double amplitude, size_t frames) {
  std::vector<float> samples;
  for (size_t i = 0; i < frames; ++i)
    samples.insert(samples.end(), 2,
                   static_cast<float>(amplitude * std::sin(2.0 * std::numbers::pi * frequency *
                                                           static_cast<double>(i) / rate)));
  return samples;
}

TEST(Limiter, LooksAheadForOneToTwoMilliseconds) {
  for (const int any : {44100, 48000, 96000}) {
    Limiter limiter;
    limiter.prepare(any);
    EXPECT_GE(static_cast<double>(limiter.latency()), 0.001 * any);
    EXPECT_LE(static_cast<double>(limiter.latency()), 0.002 * any);
  }
}

TEST(Limiter, ChangesNoBitOfWhatStaysBelowItsCeiling) {
  const auto quiet = noise(48'000, 0.3f, 1);
  EXPECT_EQ(limited(quiet), quiet);
  const auto high = tone(997.0, 0.83, 48'000);
  EXPECT_EQ(limited(high), high);
  Studio studio;
  studio.set_up_music();
  studio.render(737'280);
  EXPECT_EQ(limited(studio.interleaved()), studio.interleaved());
}

TEST(Limiter, LetsGoOfALoudPassageExactly) {
  auto samples = noise(10 * 48'000, 0.3f, 2);
  for (size_t i = 0; i < 9600; ++i)
    samples[i] *= 20.0f;
  const auto out = limited(samples);
  const auto seconds_later = static_cast<ptrdiff_t>(2 * 5 * 48'000);
  EXPECT_NE(out, samples);
  EXPECT_TRUE(std::equal(out.begin() + seconds_later, out.end(), samples.begin() + seconds_later));
}

TEST(Limiter, NothingExceedsItsCeilingNotBetweenTheSamplesEither) {
  double worst = -100.0;
  const auto listen = [&](const std::vector<float>& samples) {
    worst = std::max(worst, analysis::true_peak(limited(samples)));
  };
  listen(noise(48'000, 1.0f, 3));
  listen(noise(48'000, 100.0f, 4));
  // Three and a half samples to a period: the samples miss the peaks by up to 1 dB.
  listen(tone(13'714.0, 1.4, 24'000));
  listen(tone(11'999.0, 1.5, 24'000));
  listen(tone(40.0, 30.0, 48'000));
  auto clicks = noise(48'000, 0.2f, 5);
  for (size_t i = 2000; i + 20 < clicks.size(); i += 2500)
    clicks[i] = clicks[i + 2] = i % 1000 == 0 ? -2.0f : 3.0f;
  listen(clicks);
  EXPECT_LE(worst, -1.0);
  analysis::report("limiter, true peak of noise, tones and clicks (dBTP)", worst);
}

TEST(Limiter, TurnsBothSidesDownAlike) {
  auto samples = tone(440.0, 2.0, 24'000);
  for (size_t i = 1; i < samples.size(); i += 2)
    samples[i] *= 0.25f;
  const auto out = limited(samples);
  for (size_t i = 0; i < out.size(); i += 2)
    EXPECT_EQ(out[i + 1], out[i] * 0.25f) << i;
}

TEST(Limiter, IsTheSameHoweverItIsCut) {
  auto samples = noise(20'000, 0.4f, 6);
  for (size_t i = 6000; i < 9000; ++i)
    samples[i] *= 4.0f;
  const auto whole = limited(samples, 512);
  for (const size_t block : {1, 2, 63, 480})
    EXPECT_EQ(limited(samples, block), whole) << block;
}

} // namespace
} // namespace kavo::sound
