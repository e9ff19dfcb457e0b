// The loudest that can be asked for: nothing exceeds the ceiling, and what is turned down for it
// keeps its shape.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "host/sound/limiter.h"
#include "tests/host/sound/analysis.h"
#include "tests/host/sound/loudness.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

using analysis::Samples;

// A pattern of one note on each of the sixteen voices, all set up alike.
void set_up_everything(Studio& studio, const std::string& patch, const std::string& note) {
  std::string pattern;
  for (int voice = 0; voice < 16; ++voice) {
    const std::string v = std::to_string(voice);
    studio.run("SOUND.VOICE " + v + " " + patch + "\nSOUND.GAIN " + v + " 4\nSOUND.REVERBSEND " +
               v + " 1");
    pattern += (voice > 0 ? ", " : "") + note;
  }
  studio.run("SOUND.REVERB 1 0 1 1\nSOUND.NOTE \"" + pattern + "\" 1");
}

TEST(Ceiling, MusicAloneStaysFarBelowIt) {
  Studio studio;
  studio.set_up_music();
  studio.render(3 * 737'280);
  const double loudest = analysis::true_peak(studio.interleaved());
  EXPECT_LE(loudest, -4.0);
  analysis::report("music, true peak (dBTP)", loudest);
}

TEST(Ceiling, FourEffectsEverySixtyMillisecondsStayBelowIt) {
  Studio studio;
  studio.set_up_music();
  for (int i = 0; i < 250; ++i) {
    studio.run("SOUND.PLAY 5 c2\nSOUND.PLAY 4 g4\nSOUND.PLAY 3 c3\nSOUND.PLAY 5 c1");
    studio.render(2880);
  }
  const double loudest = analysis::true_peak(studio.interleaved());
  EXPECT_LE(loudest, -1.0);
  analysis::report("music and effects, true peak (dBTP)", loudest);
}

TEST(Ceiling, SixteenVoicesAtTheirLoudestStayBelowIt) {
  double worst = -100.0;
  for (const std::string note : {"c2*8", "a3*16", "g6*8", "c8*8", "d9*4"}) {
    for (const std::string wave : {"SQUARE", "SAW"}) {
      Studio studio;
      set_up_everything(studio, wave + " 0 0 1 1", note);
      studio.render(96'000);
      const double loudest = analysis::true_peak(studio.interleaved());
      EXPECT_LE(loudest, -1.0) << wave << " " << note;
      worst = std::max(worst, loudest);
    }
  }
  analysis::report("sixteen voices at gain 4, true peak (dBTP)", worst);
}

TEST(Ceiling, RandomNotesAtAnyGainStayBelowIt) {
  std::mt19937 random(7);
  Studio studio;
  set_up_everything(studio, "SQUARE 0 0.05 0.5 0.1", "~");
  for (int i = 0; i < 400; ++i) {
    const std::string voice = std::to_string(random() % 16);
    studio.run("SOUND.GAIN " + voice + " " + std::to_string(random() % 5) + "\nSOUND.PLAY " +
               voice + " " + std::string(1, static_cast<char>('a' + random() % 7)) +
               std::to_string(random() % 9));
    studio.render(static_cast<int64_t>(random() % 1000));
  }
  const double loudest = analysis::true_peak(studio.interleaved());
  EXPECT_LE(loudest, -1.0);
  analysis::report("random notes, true peak (dBTP)", loudest);
}

// A steady tone at gain 3 beside one at a gain at which nothing is turned down.
TEST(Ceiling, OneVoiceAtGainThreeKeepsItsShape) {
  const auto steady = [](const std::string& wave, const std::string& note, const char* gain) {
    Studio studio;
    studio.run("SOUND.VOICE 0 " + wave + " 0.01 0.01 1 0.1\nSOUND.GAIN 0 " + gain +
               "\nSOUND.NOTE \"" + note + "/64\" 1");
    studio.render(96'000);
    const auto samples = studio.left();
    return std::vector<float>(samples.begin() + 48'000, samples.begin() + 94'000);
  };
  double worst = -200.0;
  for (const std::string wave : {"SINE", "TRIANGLE", "SQUARE", "SAW"}) {
    for (const std::string note : {"c1", "c2", "a3", "a4", "c6"}) {
      const auto loud = steady(wave, note, "3");
      const double distortion = analysis::distortion(steady(wave, note, "0.75"), loud);
      EXPECT_LE(distortion, -40.0) << wave << " " << note;
      EXPECT_GT(analysis::peak(loud), 0.8) << wave << " " << note;
      worst = std::max(worst, distortion);
    }
  }
  analysis::report("one voice at gain 3, worst distortion (dB)", worst);
}

// Powers of two change no digit of a sample: what is an eighth as loud throughout is the same to
// the bit times eight, unless something bends the louder one.
TEST(Ceiling, NothingIsDoneToTheMusicBelowIt) {
  const auto dry_music = [](double melody, double bass) {
    Studio studio;
    studio.set_up_music();
    studio.run("SOUND.REVERBSEND 0 0\nSOUND.GAIN 0 " + std::to_string(melody) + "\nSOUND.GAIN 1 " +
               std::to_string(bass));
    studio.render(737'280);
    return studio.interleaved();
  };
  const auto loud = dry_music(0.5, 0.5);
  auto soft = dry_music(0.0625, 0.0625);
  for (auto& sample : soft)
    sample *= 8.0f;
  EXPECT_EQ(loud, soft);
  EXPECT_GT(analysis::peak(loud), 0.3);
}

} // namespace
} // namespace kavo::sound
