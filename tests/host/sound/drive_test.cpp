// What struck notes get on top of their own partials.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "host/sound/drive.h"
#include "host/sound/oscillator.h"
#include "host/sound/pitch.h"
#include "host/sound/voice.h"
#include "tests/host/sound/analysis.h"

namespace kavo::sound {
namespace {

using analysis::Samples;

constexpr int rate = 48000;

// A struck note with a steady level.
std::vector<float> struck(Waveform waveform, int note, const Drive* drive) {
  Voice voice;
  voice.prepare(WavetableBank::shared(), drive, rate);
  voice.set_patch({waveform, {0.001, 60.0, 1.0, 1.0}});
  voice.set_gain(1.0f);
  voice.settle();
  voice.pluck(note);
  constexpr int64_t frames = 48'000;
  std::vector<float> dry(frames), send(frames), presence(frames), scratch(4 * frames);
  voice.mix_into({dry.data(), send.data(), presence.data(), scratch.data()}, frames);
  return dry;
}

std::vector<double> spectrum(Waveform waveform, int note, const Drive* drive) {
  const auto samples = struck(waveform, note, drive);
  return analysis::power_spectrum(Samples(samples).last(32'768));
}

TEST(Drive, AddsNoAliases) {
  double worst = -200.0;
  for (int note = note_named("c1"); note < note_named("c5"); ++note) {
    for (const auto waveform : {Waveform::triangle, Waveform::saw, Waveform::square}) {
      const double level = analysis::off_harmonics(spectrum(waveform, note, &Drive::shared()),
                                                   frequency_of(note) / rate, 16000.0 / rate);
      EXPECT_LE(level, -90.0) << note;
      worst = std::max(worst, level);
    }
  }
  analysis::report("struck notes, C1 to B4, worst aliasing (dB)", worst);
}

TEST(Drive, LeavesNotesFromC5OnAsTheyAre) {
  for (int note = note_named("c5"); note <= highest_note; ++note)
    EXPECT_EQ(Drive::shared().overtones(note).level, 0.0f) << note;
  EXPECT_EQ(struck(Waveform::saw, note_named("c5"), &Drive::shared()),
            struck(Waveform::saw, note_named("c5"), nullptr));
}

TEST(Drive, FadesOutTowardsHigherNotes) {
  float before = 100.0f;
  for (int note = lowest_note; note <= note_named("c5"); ++note) {
    const float level = Drive::shared().overtones(note).level;
    EXPECT_LE(level, before);
    EXPECT_LE(before - level, before == 100.0f ? 100.0f : 0.3f) << "a jump at " << note;
    before = level;
  }
}

TEST(Drive, LeavesTheFundamentalAsItIs) {
  for (const char* name : {"c0", "c1", "c2", "c3", "g4"}) {
    const int note = note_named(name);
    const double pitch = frequency_of(note) / rate;
    const double ratio =
        analysis::amplitude_at(spectrum(Waveform::sine, note, &Drive::shared()), pitch) /
        analysis::amplitude_at(spectrum(Waveform::sine, note, nullptr), pitch);
    EXPECT_NEAR(analysis::decibels(ratio), 0.0, 0.01) << name;
  }
}

// From the second harmonic of c3 on, and nothing shrill.
TEST(Drive, FillsInWhatASmallSpeakerGives) {
  const int note = note_named("c3");
  const double pitch = frequency_of(note) / rate;
  const auto driven = spectrum(Waveform::sine, note, &Drive::shared());
  const auto level = [&](int k) {
    return analysis::decibels(analysis::amplitude_at(driven, k * pitch));
  };
  for (int k = 2; k <= 5; ++k)
    EXPECT_GE(level(k), -14.0) << k;
  EXPECT_LE(level(16), -25.0);
  EXPECT_LE(level(24), -90.0);
}

TEST(Drive, TablesAreSmall) {
  EXPECT_LT(Drive::shared().bytes() + WavetableBank::shared().bytes(), size_t{5} * 1024 * 1024);
  analysis::report("tables of the drive (bytes)", static_cast<double>(Drive::shared().bytes()));
}

} // namespace
} // namespace kavo::sound
