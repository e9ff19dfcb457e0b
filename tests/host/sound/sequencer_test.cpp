// Notes against the sample clock.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "host/sound/sequencer.h"
#include "tests/host/sound/analysis.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

struct Struck {
  int64_t frame;
  int64_t gate;
  const ScoreNote* note;
};

// Walks `frames` frames in blocks, as the engine does.
std::vector<Struck> walk(Sequencer& sequencer, int64_t frames, int64_t block,
                         int64_t first_frame = 0) {
  std::vector<Struck> struck;
  for (int64_t start = 0; start < frames; start += block) {
    const int64_t end = std::min(start + block, frames);
    for (int64_t at = start; at < end;) {
      int64_t gate = 0;
      while (const ScoreNote* note = sequencer.next_due(gate))
        struck.push_back({first_frame + at, gate, note});
      const int64_t run = sequencer.frames_before_next(end - at);
      sequencer.advance(run);
      at += run;
    }
  }
  return struck;
}

Sequencer playing(const Score& score, int rate, int64_t millibeats, bool loops = true) {
  Sequencer sequencer;
  sequencer.prepare(rate);
  sequencer.set_tempo(millibeats);
  sequencer.play(&score, loops);
  return sequencer;
}

TEST(Sequencer, IsNotASampleOffInMoreThanAnHourOfMusic) {
  const Score score = read_score(music_pattern());
  auto sequencer = playing(score, 48000, 125'000);
  const auto struck = walk(sequencer, int64_t{61} * 60 * 48000, 512);
  ASSERT_EQ(struck.size(), 22'875U);
  int64_t off = 0;
  for (size_t i = 0; i < struck.size(); ++i) {
    const auto& note = score.notes[i % 96];
    const auto loop = static_cast<int64_t>(i / 96);
    // A bar is 92,160 frames, and every onset is a whole frame.
    const int64_t frame =
        loop * music_loop + note.onset.numerator() * 92'160 / note.onset.denominator();
    off += struck[i].frame != frame || struck[i].note != &note;
    off += struck[i].gate != note.length.numerator() * 92'160 / note.length.denominator();
  }
  EXPECT_EQ(off, 0);
  analysis::report("notes struck off their frame in 61 minutes", static_cast<double>(off));
}

TEST(Sequencer, StrikesAtTheNearestFrameAtAnyTempoAndRate) {
  const Score score = read_score("c4 d4 e4, c3*7");
  for (const int rate : {44100, 48000, 96000}) {
    for (const int64_t millibeats : {int64_t{1000}, int64_t{123'457}, int64_t{999'999}}) {
      auto sequencer = playing(score, rate, millibeats);
      const auto struck = walk(sequencer, int64_t{60} * rate, 512);
      const long double cycle = 240'000.0L * rate / static_cast<long double>(millibeats);
      for (size_t i = 0; i < struck.size(); ++i) {
        const auto loop = static_cast<long double>(i / score.notes.size());
        const auto& onset = score.notes[i % score.notes.size()].onset;
        const long double exact =
            cycle * (loop + static_cast<long double>(onset.numerator()) /
                                static_cast<long double>(onset.denominator()));
        ASSERT_LE(std::abs(static_cast<long double>(struck[i].frame) - exact), 0.5001L)
            << rate << " " << millibeats << " " << i;
      }
    }
  }
}

TEST(Sequencer, DoesNotDependOnTheBlocks) {
  const Score score = read_score(music_pattern());
  auto one = playing(score, 48000, 133'337);
  const auto expected = walk(one, 2 * music_loop, 1);
  for (const int64_t block : {7, 512, 4096, 100'000}) {
    auto sequencer = playing(score, 48000, 133'337);
    const auto struck = walk(sequencer, 2 * music_loop, block);
    ASSERT_EQ(struck.size(), expected.size());
    for (size_t i = 0; i < struck.size(); ++i)
      ASSERT_TRUE(struck[i].frame == expected[i].frame && struck[i].gate == expected[i].gate);
  }
}

TEST(Sequencer, KeepsItsPlaceInTheBarWhenTheTempoChanges) {
  const Score score = read_score("c4 d4 e4 f4");
  auto sequencer = playing(score, 48000, 60'000); // a beat is 48,000 frames
  auto struck = walk(sequencer, 72'000, 512);     // to the middle of d4
  sequencer.set_tempo(120'000);
  const auto faster = walk(sequencer, 48'000, 512, 72'000);
  ASSERT_EQ(struck.size(), 2U);
  ASSERT_EQ(faster.size(), 2U);
  EXPECT_EQ(faster[0].frame, 72'000 + 12'000);
  EXPECT_EQ(faster[1].frame, 72'000 + 12'000 + 24'000);
}

TEST(Sequencer, PlaysOnceWhenItDoesNotLoop) {
  const Score score = read_score("c4 d4");
  auto sequencer = playing(score, 48000, 120'000, false);
  EXPECT_EQ(walk(sequencer, 10 * 96'000, 512).size(), 2U);
}

TEST(Sequencer, IsSilentWithoutNotes) {
  const Score score = read_score("~");
  auto sequencer = playing(score, 48000, 120'000);
  EXPECT_TRUE(walk(sequencer, 480'000, 512).empty());
  sequencer.play(nullptr, true);
  EXPECT_TRUE(walk(sequencer, 480'000, 512).empty());
}

} // namespace
} // namespace kavo::sound
