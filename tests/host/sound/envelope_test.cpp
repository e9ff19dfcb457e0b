// Envelopes against their formula, and the faders.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/sound/envelope.h"
#include "host/sound/fader.h"
#include "tests/host/sound/analysis.h"

namespace kavo::sound {
namespace {

constexpr int rate = 48000;

double curve(double start, double target, double u) {
  return target + (start - target) * (std::exp(-4.0 * u) - std::exp(-4.0)) / (1.0 - std::exp(-4.0));
}

// `frames` levels of a note that is held for `gate` frames.
std::vector<float> levels_of(const EnvelopeTimes& times, int64_t gate, int64_t frames,
                             int64_t block = 512) {
  Envelope envelope;
  envelope.start(EnvelopeShape(times, rate), gate);
  std::vector<float> levels(static_cast<size_t>(frames));
  for (int64_t done = 0; done < frames; done += block)
    envelope.process(levels.data() + done, std::min(block, frames - done));
  return levels;
}

double sounding_seconds(const EnvelopeTimes& times, int64_t gate) {
  const auto levels = levels_of(times, gate, 10 * rate);
  const auto last = std::find_if(levels.rbegin(), levels.rend(), [](float v) { return v != 0.0f; });
  return static_cast<double>(levels.rend() - last) / rate;
}

TEST(Envelope, FollowsItsFormulaThroughAllStages) {
  const EnvelopeTimes times = {.attack = 0.01, .decay = 0.15, .sustain = 0.3, .release = 0.25};
  const int64_t attack = 480, decay = 7200, gate = 20000, release = 12000;
  const auto levels = levels_of(times, gate, gate + release + 100);
  double worst = 0.0;
  for (int64_t i = 0; i < static_cast<int64_t>(levels.size()); ++i) {
    double expected = 0.0;
    if (i < attack)
      expected = static_cast<double>(i) / attack;
    else if (i < attack + decay)
      expected = curve(1.0, 0.3, static_cast<double>(i - attack) / decay);
    else if (i < gate)
      expected = 0.3;
    else if (i < gate + release)
      expected = curve(0.3, 0.0, static_cast<double>(i - gate) / release);
    worst = std::max(worst, std::abs(levels[static_cast<size_t>(i)] - expected));
  }
  EXPECT_LE(worst, 2e-4);
  analysis::report("envelope, worst error", worst);
}

TEST(Envelope, ReleasesFromWhereverItStands) {
  const EnvelopeTimes times = {.attack = 0.1, .decay = 0.1, .sustain = 0.5, .release = 0.1};
  const auto levels = levels_of(times, 2400, 9600);
  EXPECT_NEAR(levels[2399], 0.5, 1e-3);
  EXPECT_NEAR(levels[2400], 0.5, 1e-3);
  EXPECT_NEAR(levels[2400 + 2400], curve(0.5, 0.0, 0.5), 2e-4);
  EXPECT_EQ(levels[2400 + 4800], 0.0f);
}

TEST(Envelope, WithoutSustainEndsWhenItsDecayEnds) {
  EXPECT_NEAR(sounding_seconds({0.004, 0.1, 0.0, 0.08}, rate), 0.104, 1e-4);
  EXPECT_NEAR(sounding_seconds({0.004, 0.09, 0.0, 0.07}, rate), 0.094, 1e-4);
  EXPECT_NEAR(sounding_seconds({0.02, 0.28, 0.0, 0.3}, rate), 0.300, 1e-4);
}

TEST(Envelope, TimesOfZeroAreLongEnoughNotToClick) {
  const auto levels = levels_of({0.0, 0.0, 1.0, 0.0}, 1000, 2000);
  EXPECT_EQ(levels[0], 0.0f);
  EXPECT_NEAR(levels[12], 0.5f, 1e-6f); // attack 0.5 ms
  EXPECT_EQ(levels[24], 1.0f);
  EXPECT_EQ(levels[1000], 1.0f);
  EXPECT_GT(levels[1095], 0.0f); // release 2 ms
  EXPECT_EQ(levels[1096], 0.0f);
}

TEST(Envelope, LastsForADayWhenItIsHeld) {
  Envelope envelope;
  envelope.start(EnvelopeShape({0.01, 0.01, 0.7, 0.01}, rate), int64_t{rate} * 86400);
  std::vector<float> levels(rate);
  for (int second = 0; second < 60; ++second)
    envelope.process(levels.data(), rate);
  EXPECT_EQ(levels.back(), 0.7f);
  EXPECT_TRUE(envelope.is_active());
}

TEST(Envelope, IsTheSameHoweverItIsCut) {
  const EnvelopeTimes times = {0.01, 0.15, 0.3, 0.25};
  const auto whole = levels_of(times, 5000, 20000, 20000);
  EXPECT_EQ(levels_of(times, 5000, 20000, 1), whole);
  EXPECT_EQ(levels_of(times, 5000, 20000, 333), whole);
}

TEST(Fader, MovesInAStraightLineAndArrivesExactly) {
  Fader fader(1.0f);
  fader.move(0.0f, 480);
  for (int i = 0; i < 480; ++i)
    ASSERT_NEAR(fader.next(), 1.0 - i / 480.0, 1e-6) << i;
  EXPECT_EQ(fader.next(), 0.0f);
  EXPECT_TRUE(fader.is_shut());
}

TEST(Fader, TurnsRoundFromWhereItStands) {
  Fader fader(0.0f);
  fader.move(1.0f, 100);
  fader.skip(50);
  fader.move(0.0f, 100);
  EXPECT_FLOAT_EQ(fader.level(), 0.5f);
  fader.skip(100);
  EXPECT_EQ(fader.level(), 0.0f);
}

TEST(Fader, MovesAtOnceWithinNoFrames) {
  Fader fader(0.0f);
  fader.move(0.7f, 0);
  EXPECT_EQ(fader.level(), 0.7f);
}

} // namespace
} // namespace kavo::sound
