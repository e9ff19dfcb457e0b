// The room as the music has it: what comes back from it, by itself.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/host/sound/analysis.h"
#include "tests/host/sound/loudness.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

using analysis::Samples;

// The third and fourth loop of the music.
std::vector<float> loops(const std::string& and_then) {
  Studio studio;
  studio.set_up_music();
  studio.run(and_then);
  studio.render(4 * 737'280);
  studio.finish();
  const auto& all = studio.interleaved();
  return {all.end() - 4 * 737'280, all.end()};
}

struct Sides {
  explicit Sides(Samples interleaved) {
    for (size_t i = 0; i < interleaved.size(); i += 2) {
      left.push_back(interleaved[i]);
      right.push_back(interleaved[i + 1]);
      mid.push_back((left.back() + right.back()) / 2);
      side.push_back((left.back() - right.back()) / 2);
    }
  }

  std::vector<float> left, right, mid, side;
};

class Room : public testing::Test {
protected:
  static std::vector<float> mix(const std::string& width) {
    return loops("SOUND.REVERB 0.7 0.3 " + width + " 0.25");
  }

  std::vector<float> comes_back(const std::string& width) const {
    auto samples = mix(width);
    for (size_t i = 0; i < samples.size(); ++i)
      samples[i] -= dry[i];
    return samples;
  }

  const std::vector<float> dry = loops("SOUND.REVERBSEND 0 0");
};

TEST_F(Room, LiesTwentyFourLoudnessUnitsUnderTheMusic) {
  const double level =
      analysis::ungated_loudness(comes_back("0.8")) - analysis::ungated_loudness(dry);
  EXPECT_NEAR(level, -24.0, 2.0);
  analysis::report("the room against the music (LU)", level);
}

TEST_F(Room, HasSidesThatDiffer) {
  const Sides wide(comes_back("1"));
  const double at_full_width = analysis::correlation(wide.left, wide.right);
  EXPECT_LE(std::abs(at_full_width), 0.1);
  analysis::report("the room's sides at width 1, correlation", at_full_width);
  const Sides usual(comes_back("0.8"));
  const double correlation = analysis::correlation(usual.left, usual.right);
  EXPECT_LE(std::abs(correlation), 0.25);
  analysis::report("the room's sides at width 0.8, correlation", correlation);
  const double balance = analysis::decibels(analysis::root_mean_square(usual.left) /
                                            analysis::root_mean_square(usual.right));
  EXPECT_NEAR(balance, 0.0, 0.5);
}

// Sides that have nothing in common add up to as much power as both have.
TEST_F(Room, LosesLittleInMono) {
  for (const std::string width : {"0.8", "1"}) {
    const Sides sides(comes_back(width));
    const double both =
        std::hypot(analysis::root_mean_square(sides.left), analysis::root_mean_square(sides.right));
    const double loss = analysis::decibels(
        both / (std::sqrt(2.0) * std::sqrt(2.0) * analysis::root_mean_square(sides.mid)));
    EXPECT_LE(loss, 1.5) << width;
    analysis::report(("the room's loss in mono at width " + width + " (dB)").c_str(), loss);
  }
}

TEST_F(Room, IsHeardFromTheSides) {
  const Sides sides(mix("0.8"));
  const double level = analysis::decibels(analysis::root_mean_square(sides.side) /
                                          analysis::root_mean_square(sides.mid));
  EXPECT_GE(level, -30.0);
  analysis::report("mix, side to mid (dB)", level);
}

} // namespace
} // namespace kavo::sound
