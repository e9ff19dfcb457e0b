// What the wave tables sound like: harmonics against the ideal series, and nothing else.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "host/sound/fourier.h"
#include "host/sound/oscillator.h"
#include "host/sound/pitch.h"
#include "host/sound/wavetable.h"
#include "tests/host/sound/analysis.h"

namespace kavo::sound {
namespace {

using std::numbers::pi;

constexpr double rate = 48000.0;
constexpr size_t points = 32768;

std::vector<float> wave(Waveform waveform, double frequency, size_t frames = points) {
  Oscillator oscillator;
  oscillator.start(WavetableBank::shared(), waveform, frequency / rate);
  std::vector<float> samples(frames);
  oscillator.process(samples.data(), static_cast<int64_t>(frames));
  return samples;
}

double aliasing(Waveform waveform, double frequency) {
  return analysis::off_harmonics(analysis::power_spectrum(wave(waveform, frequency)),
                                 frequency / rate, 16000.0 / rate);
}

// The amplitude of harmonic k of the ideal wave, from -1 to 1.
double ideal(Waveform waveform, int k) {
  switch (waveform) {
  case Waveform::saw:
    return 2.0 / (pi * k);
  case Waveform::square:
    return k % 2 == 1 ? 4.0 / (pi * k) : 0.0;
  case Waveform::triangle:
    return k % 2 == 1 ? 8.0 / (pi * pi * k * k) : 0.0;
  case Waveform::sine:
    return k == 1 ? 1.0 : 0.0;
  }
  return 0.0;
}

TEST(FourierTransform, AgreesWithItsDefinition) {
  constexpr size_t size = 64;
  std::mt19937 random(1);
  std::uniform_real_distribution<double> any(-1.0, 1.0);
  std::vector<std::complex<double>> in(size);
  for (auto& point : in)
    point = {any(random), any(random)};
  auto out = in;
  FourierTransform(size).transform(out);
  for (size_t k = 0; k < size; ++k) {
    std::complex<double> sum = 0.0;
    for (size_t n = 0; n < size; ++n)
      sum += in[n] * std::polar(1.0, -2.0 * pi * static_cast<double>(k * n) / size);
    EXPECT_NEAR(std::abs(out[k] - sum), 0.0, 1e-12) << k;
  }
}

TEST(FourierTransform, IsTheSameToTheBitWhenItKnowsOfZeros) {
  constexpr size_t size = 64;
  const FourierTransform transform(size);
  for (size_t used = 1; used <= size; ++used) {
    std::vector<std::complex<double>> all(size);
    for (size_t n = 0; n < used; ++n)
      all[n] = {static_cast<double>(n) + 0.3, 1.0 / static_cast<double>(n + 1)};
    auto pruned = all;
    transform.transform(all);
    transform.transform(pruned, used);
    EXPECT_EQ(pruned, all) << used;
  }
}

TEST(Wavetable, WaveformsHaveTheirNames) {
  EXPECT_EQ(waveform_named("SQUARE"), Waveform::square);
  EXPECT_EQ(waveform_named("SAW"), Waveform::saw);
  EXPECT_EQ(waveform_named("TRIANGLE"), Waveform::triangle);
  EXPECT_EQ(waveform_named("SINE"), Waveform::sine);
  EXPECT_FALSE(waveform_named("square"));
  EXPECT_FALSE(waveform_named(""));
}

TEST(Wavetable, AllTablesTogetherStayBelowSixMegabytes) {
  EXPECT_LT(WavetableBank::shared().bytes(), size_t{6} * 1024 * 1024);
  analysis::report("wave tables (bytes)", static_cast<double>(WavetableBank::shared().bytes()));
}

TEST(Oscillator, BeginsAtZeroAndRises) {
  for (const auto waveform :
       {Waveform::square, Waveform::saw, Waveform::triangle, Waveform::sine}) {
    const auto samples = wave(waveform, 440.0, 8);
    EXPECT_NEAR(samples[0], 0.0f, 1e-6f);
    EXPECT_GT(samples[1], 0.0f);
  }
}

// Every semitone from C1 to C8. The window needs harmonics that stand well apart.
TEST(Oscillator, SawAndSquareDoNotAliasOnAnySemitone) {
  double worst = -200.0;
  for (int note = note_named("c1"); note <= note_named("c8"); ++note) {
    for (const auto waveform : {Waveform::saw, Waveform::square}) {
      const double level = aliasing(waveform, frequency_of(note));
      EXPECT_LE(level, -90.0) << "note " << note << ", waveform " << static_cast<int>(waveform);
      worst = std::max(worst, level);
    }
  }
  analysis::report("saw and square, C1 to C8, worst aliasing (dB)", worst);
}

TEST(Oscillator, HighPitchesThatHitNoHarmonicAliasEvenLess) {
  double worst = -200.0;
  for (const double frequency : {1975.53, 3951.07, 4186.01}) {
    for (const auto waveform : {Waveform::saw, Waveform::square, Waveform::triangle}) {
      const double level = aliasing(waveform, frequency);
      EXPECT_LE(level, -100.0) << frequency;
      worst = std::max(worst, level);
    }
  }
  analysis::report("1975.53, 3951.07, 4186.01 Hz, worst aliasing (dB)", worst);
}

// Every semitone from C1 to C8, as far down as a harmonic can be told from rounding.
TEST(Oscillator, HarmonicsBelow16kHzFollowTheIdealSeries) {
  const double faintest = std::pow(10.0, -110.0 / 20.0);
  double worst = 0.0;
  for (const auto waveform : {Waveform::saw, Waveform::square, Waveform::triangle}) {
    for (int note = note_named("c1"); note <= note_named("c8"); ++note) {
      const double frequency = frequency_of(note);
      const auto spectrum = analysis::power_spectrum(wave(waveform, frequency));
      for (int k = 1; k * frequency < 16000.0; ++k) {
        if (std::abs(ideal(waveform, k)) < faintest)
          continue;
        const double off = std::abs(analysis::decibels(
            analysis::amplitude_at(spectrum, k * frequency / rate) / ideal(waveform, k)));
        EXPECT_LE(off, 0.05) << "note " << note << ", harmonic " << k << ", waveform "
                             << static_cast<int>(waveform);
        worst = std::max(worst, off);
      }
    }
  }
  analysis::report("harmonics against the ideal series, worst (dB)", worst);
}

TEST(Oscillator, IsTheSameHoweverItIsCut) {
  const auto whole = wave(Waveform::saw, 440.0, 1000);
  Oscillator oscillator;
  oscillator.start(WavetableBank::shared(), Waveform::saw, 440.0 / rate);
  std::vector<float> cut(1000);
  for (size_t i = 0; i < cut.size(); ++i)
    oscillator.process(&cut[i], 1);
  EXPECT_EQ(whole, cut);
}

} // namespace
} // namespace kavo::sound
