// What stands at the end of a voice.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "host/sound/dc_blocker.h"
#include "tests/host/sound/analysis.h"

namespace kavo::sound {
namespace {

TEST(DcBlocker, RemovesDirectCurrent) {
  DcBlocker blocker;
  blocker.prepare(48000);
  std::vector<float> samples(96000, 0.5f);
  blocker.process(samples.data(), 96000);
  EXPECT_LE(analysis::decibels(std::abs(samples.back())), -80.0);
}

TEST(DcBlocker, LeavesTheBassAlone) {
  DcBlocker blocker;
  blocker.prepare(48000);
  std::vector<float> samples(48000);
  for (size_t i = 0; i < samples.size(); ++i)
    samples[i] = static_cast<float>(
        std::sin(2.0 * std::numbers::pi * 40.0 * static_cast<double>(i) / 48000.0));
  blocker.process(samples.data(), 48000);
  EXPECT_NEAR(analysis::peak(analysis::Samples(samples).subspan(24000)), 1.0, 0.01);
}

TEST(DcBlocker, ComesToRest) {
  DcBlocker blocker;
  blocker.prepare(48000);
  std::vector<float> samples(96000);
  samples[0] = 1.0f;
  blocker.process(samples.data(), 1);
  EXPECT_FALSE(blocker.is_at_rest());
  blocker.process(samples.data() + 1, 95999);
  EXPECT_TRUE(blocker.is_at_rest());
}

} // namespace
} // namespace kavo::sound
