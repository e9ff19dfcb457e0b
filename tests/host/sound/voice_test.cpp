// Notes on one voice: how they follow each other, and how they make room.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "host/sound/pitch.h"
#include "host/sound/voice.h"
#include "tests/host/sound/analysis.h"

namespace kavo::sound {
namespace {

constexpr int rate = 48000;
constexpr double eight_khz = 8000.0 / rate;

class VoiceUnderTest {
public:
  explicit VoiceUnderTest(const Patch& patch) {
    voice.prepare(WavetableBank::shared(), nullptr, rate);
    voice.set_patch(patch);
    voice.set_gain(1.0f);
    play(rate / 100);
    samples.clear();
  }

  // Lets `frames` frames sound and keeps them.
  void play(int64_t frames) {
    std::vector<float> dry(static_cast<size_t>(frames)), send(dry.size());
    std::vector<float> presence(dry.size()), scratch(4 * dry.size());
    voice.mix_into({dry.data(), send.data(), presence.data(), scratch.data()}, frames);
    samples.insert(samples.end(), dry.begin(), dry.end());
  }

  // Above 100 Hz: below, the DC blocker is still settling.
  bool is_silent_for(int64_t frames) {
    const auto before = samples.size();
    play(frames);
    return analysis::loudest_above(samples, 100.0 / rate, 480, before + 2400) < -80.0;
  }

  Voice voice;
  std::vector<float> samples;
};

const Patch sine = {Waveform::sine, {0.005, 0.01, 1.0, 0.2}};

TEST(Voice, AReleaseRingsOnUnderTheNextNote) {
  VoiceUnderTest under({Waveform::sine, {0.005, 0.01, 1.0, 0.5}});
  under.voice.strike(60, 4800);
  under.play(4800);
  under.voice.strike(72, 48000);
  under.play(32768);
  const auto spectrum =
      analysis::power_spectrum(analysis::Samples(under.samples).subspan(4800, 8192));
  EXPECT_GT(analysis::amplitude_at(spectrum, 261.63 / rate), 0.2);
  EXPECT_NEAR(analysis::amplitude_at(spectrum, 523.25 / rate), 1.0, 0.05);
}

TEST(Voice, RetriggeringOneNoteMakesNoClick) {
  VoiceUnderTest under(sine);
  for (int i = 0; i < 20; ++i) {
    under.voice.strike(57, 2000);
    under.play(2000);
  }
  EXPECT_LE(analysis::loudest_above(under.samples, eight_khz, 240, 480), -60.0);
}

TEST(Voice, TheOldestNoteIsFadedForTheNinth) {
  VoiceUnderTest under(sine);
  const int notes[] = {60, 64, 67, 71, 74, 77, 79, 81};
  for (const int note : notes)
    under.voice.strike(note, int64_t{10} * rate);
  under.play(4800);
  under.voice.strike(84, int64_t{10} * rate);
  under.play(4800 + 32768);
  const auto spectrum =
      analysis::power_spectrum(analysis::Samples(under.samples).subspan(9600, 32768));
  EXPECT_LT(analysis::amplitude_at(spectrum, 261.63 / rate), 1e-3);
  EXPECT_NEAR(analysis::amplitude_at(spectrum, 329.63 / rate), 1.0, 0.01);
  EXPECT_NEAR(analysis::amplitude_at(spectrum, 1046.50 / rate), 1.0, 0.01);
}

// Those that were struck with it and make room have not sounded yet, and never do.
TEST(Voice, OfNineNotesAtOnceTheLastEightSound) {
  VoiceUnderTest under(sine);
  const int notes[] = {60, 64, 67, 71, 74, 77, 79, 81, 84};
  for (const int note : notes)
    under.voice.strike(note, int64_t{10} * rate);
  under.play(4800 + 32768);
  const auto spectrum =
      analysis::power_spectrum(analysis::Samples(under.samples).subspan(4800, 32768));
  for (const int note : notes)
    EXPECT_NEAR(analysis::amplitude_at(spectrum, frequency_of(note) / rate),
                note == notes[0] ? 0.0 : 1.0, 0.01)
        << note;
}

TEST(Voice, HoweverManyNotesAreStruckAtOnceTheLastOnesSound) {
  VoiceUnderTest under(sine);
  for (int note = 40; note < 90; ++note)
    under.voice.strike(note, int64_t{10} * rate);
  under.play(4800 + 32768);
  const auto spectrum =
      analysis::power_spectrum(analysis::Samples(under.samples).subspan(4800, 32768));
  EXPECT_LT(analysis::amplitude_at(spectrum, frequency_of(80) / rate), 0.01);
  EXPECT_NEAR(analysis::amplitude_at(spectrum, frequency_of(82) / rate), 1.0, 0.01);
  EXPECT_NEAR(analysis::amplitude_at(spectrum, frequency_of(89) / rate), 1.0, 0.01);
}

TEST(Voice, MakingRoomTakesTwoMilliseconds) {
  VoiceUnderTest under({Waveform::sine, {0.0, 0.0, 1.0, 10.0}});
  under.voice.strike(57, int64_t{10} * rate);
  under.play(4800);
  // Eight notes that are not heard yet: they take a minute to come up.
  under.voice.set_patch({Waveform::sine, {60.0, 0.0, 1.0, 0.0}});
  for (int i = 0; i < 8; ++i)
    under.voice.strike(60 + i, int64_t{60} * rate);
  const auto before = under.samples.size();
  under.play(96);
  EXPECT_GT(analysis::peak(analysis::Samples(under.samples).subspan(before, 48)), 0.1);
  const auto after = under.samples.size();
  under.play(48);
  EXPECT_LT(analysis::peak(analysis::Samples(under.samples).subspan(after)), 0.03);
}

TEST(Voice, ABurstOfNotesNeitherClicksNorGrowsWithoutBound) {
  VoiceUnderTest under({Waveform::sine, {0.002, 0.01, 1.0, 0.05}});
  for (int i = 0; i < 2000; ++i) {
    under.voice.strike(45 + i % 12, 4800);
    under.play(24);
  }
  EXPECT_LE(analysis::peak(under.samples), 8.0);
  EXPECT_LE(analysis::loudest_above(under.samples, eight_khz, 240, 480), -40.0);
}

TEST(Voice, APluckWithoutSustainFreesItself) {
  VoiceUnderTest under({Waveform::triangle, {0.004, 0.1, 0.0, 0.08}});
  under.voice.pluck(48);
  under.play(4992); // 104 ms
  EXPECT_GT(analysis::peak(analysis::Samples(under.samples).first(2400)), 0.5);
  EXPECT_TRUE(under.is_silent_for(4800));
}

TEST(Voice, APluckWithSustainIsReleasedAfterAttackAndDecay) {
  VoiceUnderTest under({Waveform::triangle, {0.004, 0.1, 0.5, 0.08}});
  under.voice.pluck(48);
  under.play(4992 + 3841); // and 80 ms of release
  EXPECT_TRUE(under.is_silent_for(4800));
  EXPECT_GT(analysis::peak(analysis::Samples(under.samples).subspan(4992, 960)), 0.2);
}

TEST(Voice, ANewPatchLeavesSoundingNotesAlone) {
  VoiceUnderTest one(sine), other(sine);
  one.voice.strike(60, 9600);
  other.voice.strike(60, 9600);
  one.play(1000);
  other.play(1000);
  other.voice.set_patch({Waveform::square, {0.001, 0.001, 0.0, 0.001}});
  one.play(1000);
  other.play(1000);
  EXPECT_EQ(one.samples, other.samples);
}

TEST(Voice, LetsGoOfAllNotesAtOnce) {
  VoiceUnderTest under(sine);
  under.voice.strike(60, int64_t{100} * rate);
  under.voice.strike(64, int64_t{100} * rate);
  under.play(4800);
  under.voice.release_all();
  under.play(9601);
  EXPECT_TRUE(under.is_silent_for(4800));
}

TEST(Voice, ANoteAboveHalfTheRateIsNotStruck) {
  Voice voice;
  voice.prepare(WavetableBank::shared(), nullptr, 8000);
  voice.strike(127, 1000);
  std::vector<float> dry(100), send(100), presence(100), scratch(400);
  voice.mix_into({dry.data(), send.data(), presence.data(), scratch.data()}, 100);
  EXPECT_EQ(analysis::peak(dry), 0.0);
}

} // namespace
} // namespace kavo::sound
