// The synthesizer as a whole, rendered without a device: time, pitch, level, switching.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "host/sound/engine.h"
#include "host/sound/pitch.h"
#include "tests/host/sound/analysis.h"
#include "tests/host/sound/loudness.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

using analysis::Samples;

constexpr double rate = 48000.0;
constexpr const char* dry = "SOUND.REVERBSEND 0 0";

std::vector<float> music(const std::string& and_then, int64_t frames, int64_t block = 512) {
  Studio studio(48000, block);
  studio.set_up_music();
  studio.run(and_then);
  studio.render(frames);
  studio.finish();
  return studio.interleaved();
}

TEST(Engine, LoopsOfTheDryMusicAreIdenticalToTheBit) {
  const auto samples = music(dry, 4 * music_loop);
  const auto loop = [&](int64_t n) { return samples.begin() + 2 * n * music_loop; };
  EXPECT_TRUE(std::equal(loop(1), loop(2), loop(2)));
  EXPECT_TRUE(std::equal(loop(2), loop(3), loop(3)));
}

TEST(Engine, BlockSizesGiveTheSameSamplesToTheBit) {
  // Loud enough for the limiter to have something to do.
  const std::string effects = "SOUND.GAIN 5 4\nSOUND.PLAY 5 c2\nSOUND.PLAY 4 g4\nSOUND.PLAY 3 c3";
  const auto expected = music(effects, 120'000, 512);
  for (const int64_t block : {1, 2, 63, 64, 480, 513, 1024, 4095, 4096})
    EXPECT_EQ(music(effects, 120'000, block), expected) << block;
}

TEST(Engine, OnsetsAreFoundWhereTheScoreHasThem) {
  double worst = 0.0;
  for (const std::string waveform : {"SINE", "SQUARE", "SAW", "TRIANGLE"}) {
    Studio studio;
    studio.run("SOUND.BPM 125\nSOUND.VOICE 0 " + waveform + " 0.001 0.05 0 0.01\n" +
               "SOUND.NOTE \"c5 ~ e5 [~ g5]\" 1");
    studio.render(92'160);
    const auto samples = studio.left();
    for (const size_t onset : {0, 46'080, 80'640}) {
      auto at = onset > 100 ? onset - 100 : 0;
      while (std::abs(samples[at]) < 1e-4f)
        ++at;
      const double seconds = std::abs(static_cast<double>(at) - static_cast<double>(onset)) / rate;
      EXPECT_LE(seconds, 0.0001) << waveform << " " << onset;
      worst = std::max(worst, 1000.0 * seconds);
    }
  }
  analysis::report("onset found in the audio, worst (ms)", worst);
}

// Each voice of the music by itself. Where the note is steady and the one before it has died
// away most: the last 145 ms of an eighth, the last 200 ms of a quarter.
TEST(Engine, EveryNoteOfTheMusicIsInTune) {
  const Score score = read_score(music_pattern());
  double worst = 0.0;
  for (int voice = 0; voice < 2; ++voice) {
    Studio studio;
    studio.set_up_music();
    studio.run(dry);
    studio.run("SOUND.GAIN " + std::to_string(1 - voice) + " 0");
    studio.render(2 * music_loop);
    studio.finish();
    const auto samples = studio.left();
    for (const auto& note : score.notes) {
      if (note.voice != voice)
        continue;
      const auto in_frames = [](const Fraction& time) {
        return static_cast<size_t>(time.numerator() * 92'160 / time.denominator());
      };
      const size_t end = music_loop + in_frames(note.onset) + in_frames(note.length);
      const size_t length = note.length == Fraction(1, 8) ? 6960 : 9600;
      const double cents = analysis::cents_off(Samples(samples).subspan(end - length, length),
                                               frequency_of(note.note) / rate);
      EXPECT_LE(std::abs(cents), 0.2) << "note " << note.note << " at " << end;
      worst = std::max(worst, std::abs(cents));
    }
  }
  analysis::report("music, worst pitch (cent)", worst);
}

TEST(Engine, PitchIsRightAtOtherRatesToo) {
  for (const int other : {44100, 96000}) {
    Studio studio(other);
    studio.run("SOUND.VOICE 0 SAW 0.01 0.01 1 0.1\nSOUND.BPM 60\nSOUND.NOTE \"a4\" 1");
    studio.render(other);
    const auto samples = studio.left();
    const auto steady = Samples(samples).subspan(static_cast<size_t>(other) / 2);
    EXPECT_LE(std::abs(analysis::cents_off(steady, 440.0 / other)), 0.2) << other;
  }
}

TEST(Engine, GainOfZeroIsSilenceWithinTenMilliseconds) {
  Studio studio;
  studio.run("SOUND.VOICE 0 SINE 0.01 0.01 1 0.1\nSOUND.GAIN 0 0.55\nSOUND.NOTE \"a3\" 1");
  studio.render(48'000);
  studio.run("SOUND.GAIN 0 0");
  studio.render(4800);
  studio.run("SOUND.GAIN 0 0.55");
  studio.render(4800);
  const auto samples = studio.left();
  EXPECT_EQ(analysis::peak(Samples(samples).subspan(48'480, 4320)), 0.0);
  const double clicks = analysis::loudest_above(samples, 8000.0 / rate, 240, 480);
  EXPECT_LE(clicks, -80.0);
  analysis::report("gain to 0 and back, clicks above 8 kHz (dBFS)", clicks);
}

TEST(Engine, AFullMixSwitchedOffDiesAway) {
  Studio studio;
  studio.set_up_music();
  studio.render(400'000);
  studio.run("SOUND.GAIN 0 0\nSOUND.GAIN 1 0");
  studio.render(150'000);
  const auto samples = studio.left();
  const auto level = [&](size_t from, size_t frames) {
    return analysis::decibels(analysis::root_mean_square(Samples(samples).subspan(from, frames)));
  };
  const double playing = level(200'000, 200'000);
  const double after_one = level(400'000 + 48'000 - 2400, 4800);
  const double after_two = level(400'000 + 96'000 - 2400, 4800);
  EXPECT_LE(after_one - playing, -50.0);
  EXPECT_LE(after_two - playing, -80.0);
  analysis::report("mix 1 s after switching off (dB)", after_one - playing);
  analysis::report("mix 2 s after switching off (dB)", after_two - playing);
}

TEST(Engine, TheMusicAloneHasItsLevel) {
  const auto samples = music("", 4 * music_loop);
  const Samples loops = Samples(samples).subspan(2 * music_loop);
  const double loudest = analysis::decibels(analysis::peak(samples));
  const double loudness = analysis::loudness(loops);
  const double direct = analysis::decibels(std::abs(analysis::mean(loops)));
  EXPECT_LE(loudest, -4.0);
  EXPECT_NEAR(loudness, -20.0, 1.0);
  EXPECT_LE(direct, -80.0);
  analysis::report("music, peak (dBFS)", loudest);
  analysis::report("loop, loudness (LUFS)", loudness);
  analysis::report("loop, direct current (dBFS)", direct);
}

TEST(Engine, ANewPatternTakesOverAtOnce) {
  Studio studio;
  studio.run("SOUND.VOICE 0 SINE 0.005 0.01 1 0.02\nSOUND.NOTE \"c5/8\" 1");
  studio.render(48'000);
  studio.run("SOUND.NOTE \"a3/8\" 1");
  studio.render(48'000);
  const auto samples = studio.left();
  const auto spectrum = analysis::power_spectrum(Samples(samples).subspan(56'000, 32'768));
  EXPECT_GT(analysis::amplitude_at(spectrum, 220.0 / rate), 0.1);
  EXPECT_LT(analysis::amplitude_at(spectrum, 523.25 / rate), 1e-4);
}

TEST(Engine, APatternThatPlaysOnceEndsInSilence) {
  Studio studio;
  studio.run("SOUND.BPM 240\nSOUND.VOICE 0 SINE 0.005 0.01 1 0.02\nSOUND.NOTE \"c5 e5\" 0");
  studio.render(48'000);
  studio.render(48'000);
  const auto samples = studio.left();
  EXPECT_GT(analysis::peak(Samples(samples).first(40'000)), 0.1);
  EXPECT_LT(analysis::peak(Samples(samples).subspan(90'000)), 1e-4);
}

TEST(Engine, TheMiddleIsInTheMiddle) {
  Studio studio;
  studio.run("SOUND.VOICE 0 SAW 0.005 0.01 1 0.02\nSOUND.NOTE \"c4 e4\" 1");
  studio.render(48'000);
  EXPECT_EQ(studio.left(), studio.right());
}

TEST(Engine, TheGamesEffectsSoundAsLongAsTheyShould) {
  const std::map<std::string, double> effects = {
      {"SOUND.PLAY 3 c3", 0.104}, {"SOUND.PLAY 4 g4", 0.094}, {"SOUND.PLAY 5 c2", 0.300}};
  for (const auto& [effect, seconds] : effects) {
    Studio studio;
    studio.set_up_music();
    studio.run("SOUND.NOTE \"~\" 1\n" + effect);
    studio.render(48'000);
    const auto samples = studio.left();
    const auto end = static_cast<size_t>(seconds * rate);
    EXPECT_GT(analysis::peak(Samples(samples).first(end / 2)), 0.05) << effect;
    // What is left behind it is the DC blocker settling.
    EXPECT_LT(analysis::loudest_above(Samples(samples).subspan(end), 20.0 / rate, 4800, 0), -60.0)
        << effect;
  }
}

} // namespace
} // namespace kavo::sound
