#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "host/sound/reverb.h"
#include "tests/host/sound/analysis.h"

namespace kavo::sound {
namespace {

struct Stereo {
  std::vector<float> left;
  std::vector<float> right;
};

Stereo reverberate(const std::vector<float>& in, const ReverbSettings& settings, int rate,
                   size_t block = 512) {
  Reverb reverb;
  reverb.prepare(rate);
  reverb.set(settings);
  Stereo out = {std::vector<float>(in.size()), std::vector<float>(in.size())};
  for (size_t done = 0; done < in.size(); done += block) {
    const auto frames = static_cast<int64_t>(std::min(block, in.size() - done));
    reverb.process(in.data() + done, out.left.data() + done, out.right.data() + done, frames);
  }
  return out;
}

// A click after the settings have been reached, and silence behind it.
std::vector<float> click(size_t frames, size_t at) {
  std::vector<float> samples(frames);
  samples[at] = 1.0f;
  return samples;
}

double measured_seconds(const ReverbSettings& settings, int rate) {
  const auto at = static_cast<size_t>(rate / 10);
  const auto frames = static_cast<size_t>(1.5 * rate * reverberation_seconds(settings.size));
  const auto out = reverberate(click(frames, at), settings, rate);
  return analysis::reverberation_time(analysis::Samples(out.left).subspan(at), 500.0 / rate) / rate;
}

TEST(Reverb, RingsAsLongAsItsSizeSays) {
  EXPECT_NEAR(reverberation_seconds(0.7), 1.89, 0.01);
  const double seconds =
      measured_seconds({.size = 0.7, .damping = 0.3, .width = 0.8, .wet = 0.25}, 48000);
  EXPECT_NEAR(seconds, 1.89, 1.89 * 0.05);
  analysis::report("reverberation at 500 Hz (s)", seconds);
}

TEST(Reverb, RingsAsLongAtAnyRateAndOtherSizes) {
  for (const int rate : {44100, 96000})
    EXPECT_NEAR(measured_seconds({0.7, 0.3, 0.8, 0.25}, rate), 1.89, 1.89 * 0.05) << rate;
  for (const double size : {0.0, 0.3, 0.9})
    EXPECT_NEAR(measured_seconds({size, 0.0, 1.0, 1.0}, 48000) / reverberation_seconds(size), 1.0,
                0.07)
        << size;
}

TEST(Reverb, DampingShortensTheTreble) {
  const auto at = size_t{4800};
  const auto bright = reverberate(click(120000, at), {0.7, 0.0, 1.0, 1.0}, 48000);
  const auto dull = reverberate(click(120000, at), {0.7, 1.0, 1.0, 1.0}, 48000);
  const auto treble = [&](const Stereo& out) {
    return analysis::reverberation_time(analysis::Samples(out.left).subspan(at), 8000.0 / 48000.0);
  };
  EXPECT_LT(treble(dull), 0.6 * treble(bright));
}

TEST(Reverb, WidthZeroIsMonoAndWidthOneIsNot) {
  const auto mono = reverberate(click(48000, 4800), {0.5, 0.5, 0.0, 1.0}, 48000);
  EXPECT_EQ(mono.left, mono.right);
  const auto wide = reverberate(click(48000, 4800), {0.5, 0.5, 1.0, 1.0}, 48000);
  EXPECT_NE(wide.left, wide.right);
}

TEST(Reverb, FallsAsleepWhenTheTailHasDiedAndWakesAgain) {
  Reverb reverb;
  reverb.prepare(48000);
  reverb.set({0.3, 0.5, 1.0, 1.0});
  EXPECT_TRUE(reverb.is_asleep());
  auto in = click(480000, 100);
  std::vector<float> left(in.size()), right(in.size());
  reverb.process(in.data(), left.data(), right.data(), 4800);
  EXPECT_FALSE(reverb.is_asleep());
  reverb.process(in.data() + 4800, left.data() + 4800, right.data() + 4800, 475200);
  EXPECT_TRUE(reverb.is_asleep());
  EXPECT_EQ(left.back(), 0.0f);
  reverb.process(in.data(), left.data(), right.data(), 48000);
  EXPECT_FALSE(reverb.is_asleep());
}

TEST(Reverb, IsTheSameHoweverItIsCut) {
  const auto in = click(30000, 1000);
  const ReverbSettings settings = {0.3, 0.5, 0.7, 1.0};
  const auto whole = reverberate(in, settings, 48000, 30000);
  const auto cut = reverberate(in, settings, 48000, 77);
  EXPECT_EQ(whole.left, cut.left);
  EXPECT_EQ(whole.right, cut.right);
}

TEST(Reverb, StaysBoundedUnderNoiseAtItsLargest) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> any(-1.0f, 1.0f);
  std::vector<float> noise(5 * 48000);
  for (auto& sample : noise)
    sample = any(random);
  const auto out = reverberate(noise, {1.0, 0.0, 1.0, 1.0}, 48000);
  EXPECT_LE(analysis::peak(out.left), 20.0);
}

} // namespace
} // namespace kavo::sound
