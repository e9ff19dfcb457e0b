// Music and effects together: the listener's levels, how the music steps back, and what a small
// loudspeaker lets one hear.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "host/command_error.h"
#include "host/sound/pitch.h"
#include "tests/host/sound/analysis.h"
#include "tests/host/sound/loudness.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

using analysis::Samples;

constexpr double rate = 48000.0;
constexpr double small_speaker = 200.0; // Hz

struct Effect {
  const char* name;
  const char* command;
  double seconds;
};
constexpr Effect effects[] = {{"lock", "SOUND.PLAY 3 c3", 0.104},
                              {"clear", "SOUND.PLAY 4 g4", 0.094},
                              {"tip", "SOUND.PLAY 5 c2", 0.3},
                              {"over", "SOUND.PLAY 5 c1", 0.3}};

std::vector<float> music_loop_alone() {
  Studio studio;
  studio.set_up_music();
  studio.render(3 * 737'280);
  const auto& all = studio.interleaved();
  return {all.end() - 2 * 737'280, all.end()};
}

std::vector<float> effect_alone(const Effect& effect) {
  Studio studio;
  studio.set_up_music();
  studio.run("SOUND.NOTE \"~\" 1");
  studio.run(effect.command);
  studio.render(std::llround(effect.seconds * rate));
  studio.finish();
  return studio.interleaved();
}

// What small loudspeakers are good for

TEST(Effects, AreHeardFromASmallSpeakerAndNotTooLoudFromALargeOne) {
  const auto music = music_loop_alone();
  const double full = analysis::ungated_loudness(music);
  const double small = analysis::ungated_loudness(analysis::high_passed(music, small_speaker));
  for (const auto& effect : effects) {
    const auto alone = effect_alone(effect);
    const double over = analysis::ungated_loudness(alone) - full;
    const double over_small =
        analysis::ungated_loudness(analysis::high_passed(alone, small_speaker)) - small;
    EXPECT_GE(over_small, -8.0) << effect.name;
    EXPECT_LE(over, 1.0) << effect.name;
    analysis::report((std::string(effect.name) + " against the music (LU)").c_str(), over);
    analysis::report((std::string(effect.name) + " … from 200 Hz up (LU)").c_str(), over_small);
  }
}

TEST(Effects, KeepThePitchOfTheirNotes) {
  for (const std::string note : {"c1", "c2", "c3", "g3", "g4"}) {
    Studio studio;
    studio.run("SOUND.VOICE 3 SAW 0.004 0.01 1 0.1\nSOUND.VOICE 3 SAW 0.004 2 1 0.1");
    studio.run("SOUND.PLAY 3 " + note);
    studio.render(48'000);
    const auto samples = studio.left();
    EXPECT_LE(std::abs(analysis::cents_off(Samples(samples).subspan(9600, 36'000),
                                           frequency_of(note_named(note)) / rate)),
              0.2)
        << note;
  }
}

// Struck, a low note has more partials; in a pattern it is the wave and nothing else.
TEST(Effects, PatternsStayPure) {
  const auto second_harmonic = [](const std::string& how) {
    Studio studio;
    studio.run("SOUND.VOICE 3 SINE 0.004 2 1 0.1");
    studio.run(how);
    studio.render(48'000);
    const auto samples = studio.left();
    const auto spectrum = analysis::power_spectrum(Samples(samples).subspan(9600, 32'768));
    const double pitch = frequency_of(note_named("c3")) / rate;
    return analysis::decibels(analysis::amplitude_at(spectrum, 2 * pitch) /
                              analysis::amplitude_at(spectrum, pitch));
  };
  EXPECT_LE(second_harmonic("SOUND.NOTE \"~, ~, ~, c3/8\" 1"), -100.0);
  EXPECT_GE(second_harmonic("SOUND.PLAY 3 c3"), -10.0);
}

// The listener's levels

std::vector<float> with_levels(const Levels& levels) {
  Studio studio;
  studio.set_up_music();
  studio.player().levels(levels);
  for (const auto& effect : effects) {
    studio.run(effect.command);
    studio.render(24'000);
  }
  return studio.interleaved();
}

std::vector<float> without(std::vector<float> samples, const std::vector<float>& others) {
  for (size_t i = 0; i < samples.size(); ++i)
    samples[i] -= others[i];
  return samples;
}

TEST(Levels, OfZeroAreExactSilence) {
  EXPECT_EQ(analysis::peak(with_levels({.master = 0.0})), 0.0);
  EXPECT_EQ(analysis::peak(with_levels({.music = 0.0, .effects = 0.0})), 0.0);
  Studio music_only;
  music_only.set_up_music();
  music_only.render(4 * 24'000);
  EXPECT_EQ(with_levels({.effects = 0.0}), music_only.interleaved());
}

TEST(Levels, AreFactorsOfTheirOwnBus) {
  const auto effects_only = with_levels({.music = 0.0});
  const auto half = with_levels({.music = 0.0, .effects = 0.5});
  EXPECT_GT(analysis::peak(effects_only), 0.1);
  for (size_t i = 0; i < half.size(); ++i)
    ASSERT_EQ(half[i], 0.5f * effects_only[i]) << i;
  const auto all_half = with_levels({.master = 0.5});
  const auto all = with_levels({});
  for (size_t i = 0; i < all.size(); ++i)
    ASSERT_EQ(all_half[i], 0.5f * all[i]) << i;
}

TEST(Levels, OfZeroAreReachedWithinTenMilliseconds) {
  for (const Levels& levels : {Levels{.music = 0.0}, Levels{.master = 0.0}}) {
    Studio studio;
    studio.set_up_music();
    studio.render(100'000);
    studio.player().levels(levels);
    studio.render(48'000);
    const Samples samples = studio.interleaved();
    EXPECT_GT(analysis::peak(samples.subspan(2 * 90'000, 20'000)), 0.1);
    EXPECT_EQ(analysis::peak(samples.subspan(2 * (100'000 + 480))), 0.0)
        << "the room is silent too";
  }
}

// A tone of 200 Hz: whatever is heard above 8 kHz is the step.
TEST(Levels, AnyStepIsWithoutAClick) {
  double worst = -200.0;
  for (const std::string& how :
       {std::string("SOUND.NOTE \"g3/64\" 1"), std::string("SOUND.PLAY 0 g5")}) {
    Studio studio;
    studio.run("SOUND.VOICE 0 SINE 0.02 50 1 0.1\nSOUND.GAIN 0 0.6\n" + how);
    studio.render(48'000);
    for (const double level : {0.0, 1.0, 0.5, 0.9, 0.1, 1.0, 0.0, 1.0}) {
      studio.player().levels({.music = level});
      studio.render(3000);
      studio.player().levels({.effects = level});
      studio.render(3000);
      studio.player().levels({.master = level});
      studio.render(3000);
    }
    // As a slider sends them: a new one before the last has been reached.
    for (int i = 0; i <= 100; ++i) {
      studio.player().levels({.music = 0.01 * i, .effects = 0.01 * i, .master = 1 - 0.01 * i});
      studio.render(200);
    }
    worst = std::max(worst, analysis::loudest_above(studio.left(), 8000.0 / rate, 240, 48'000));
  }
  EXPECT_LE(worst, -80.0);
  analysis::report("steps of the levels, clicks above 8 kHz (dBFS)", worst);
}

TEST(Levels, AreTheListenersAndOutliveAShutdown) {
  Studio studio;
  studio.player().levels({.master = 0.0});
  studio.run("SOUND.SHUTDOWN\nSOUND.INIT");
  studio.set_up_music();
  studio.render(48'000);
  EXPECT_EQ(analysis::peak(studio.interleaved()), 0.0);
}

TEST(Levels, OutOfRangeAreRefused) {
  Studio studio;
  EXPECT_THROW(studio.player().levels({.music = 1.01}), host::CommandError);
  EXPECT_THROW(studio.player().levels({.effects = -0.01}), host::CommandError);
  EXPECT_THROW(studio.player().levels({.master = std::nan("")}), host::CommandError);
}

// How the music steps back

// The music's level in dB of what it would be, every 5 ms: what is heard with the effects less the
// effects by themselves. The music is a tone, so that it has a level at any time.
std::vector<double> ducking(const std::vector<int64_t>& strikes, const std::string& command,
                            int64_t frames) {
  const auto render = [&](const char* gain, bool is_struck) {
    Studio studio;
    studio.set_up_music();
    studio.run("SOUND.VOICE 0 SINE 0.01 0.01 1 0.1\nSOUND.FILTER 0 0\nSOUND.REVERBSEND 0 0\n"
               "SOUND.NOTE \"a4/64\" 1\nSOUND.GAIN 1 0\nSOUND.GAIN 0 " +
               std::string(gain));
    int64_t now = 0;
    for (const int64_t strike : strikes) {
      studio.render(strike - now);
      now = strike;
      if (is_struck)
        studio.run(command);
    }
    studio.render(frames - now);
    studio.finish();
    return studio.left();
  };
  const auto ducked = without(render("0.5", true), render("0", true));
  const auto plain = render("0.5", false);
  std::vector<double> levels;
  for (size_t i = 0; i + 240 <= plain.size(); i += 240)
    levels.push_back(
        analysis::decibels(analysis::root_mean_square(Samples(ducked).subspan(i, 240)) /
                           analysis::root_mean_square(Samples(plain).subspan(i, 240))));
  return levels;
}

TEST(Ducking, TheMusicStepsBackByThreeDecibelsAndComesBack) {
  for (const auto& effect : effects) {
    const auto levels = ducking({48'000}, effect.command, 96'000);
    const auto at = [&](double seconds) { return levels[static_cast<size_t>(seconds * 200)]; };
    EXPECT_EQ(at(0.99), 0.0) << effect.name;
    EXPECT_LE(at(1.0 + 0.02), -2.8) << effect.name;
    const double deepest = *std::min_element(levels.begin(), levels.end());
    EXPECT_NEAR(deepest, -3.0, 0.05) << effect.name;
    EXPECT_LE(at(1.0 + effect.seconds + 0.05), -1.0) << "back too soon: " << effect.name;
    EXPECT_NEAR(at(1.0 + effect.seconds + 0.30), 0.0, 0.01) << effect.name;
    analysis::report((std::string(effect.name) + ", the music steps back (dB)").c_str(), deepest);
  }
}

TEST(Ducking, AShortEffectMovesTheMusicLess) {
  const auto levels =
      ducking({48'000}, "SOUND.VOICE 4 SQUARE 0.001 0.002 0 0.002\nSOUND.PLAY 4 g4", 96'000);
  const double deepest = *std::min_element(levels.begin(), levels.end());
  EXPECT_GE(deepest, -2.9);
  EXPECT_LE(deepest, -0.3);
}

TEST(Ducking, EffectsInQuickSuccessionDoNotMakeItPump) {
  std::vector<int64_t> strikes;
  for (int64_t i = 0; i < 40; ++i)
    strikes.push_back(48'000 + 2880 * i);
  double worst = 0.0;
  for (const std::string command : {"SOUND.PLAY 3 c3", "SOUND.PLAY 4 g4",
                                    "SOUND.VOICE 4 SQUARE 0.004 0.02 0 0.01\nSOUND.PLAY 4 g4"}) {
    const auto levels = ducking(strikes, command, 48'000 + 2880 * 40);
    const auto [low, high] = std::minmax_element(levels.begin() + 210, levels.end());
    EXPECT_LE(*high - *low, 1.0) << command;
    EXPECT_LE(*high, -1.5) << command;
    worst = std::max(worst, *high - *low);
  }
  analysis::report("effects every 60 ms, the music moves (dB)", worst);
}

TEST(Ducking, EffectsThatAreNotHeardLeaveTheMusicAlone) {
  const auto levels = ducking({24'000, 48'000}, "SOUND.PLAY 4 g4\nSOUND.GAIN 4 0", 96'000);
  EXPECT_EQ(*std::min_element(levels.begin() + 205, levels.end()), 0.0);
}

} // namespace
} // namespace kavo::sound
