// Patterns unrolled: which notes, when, how long and on which voice, as exact fractions.
#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <sstream>
#include <string>

#include "host/sound/pattern_error.h"
#include "host/sound/pitch.h"
#include "host/sound/score.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

std::string text(const Fraction& f) {
  std::string shown = std::to_string(f.numerator());
  return f.denominator() == 1 ? shown : shown + "/" + std::to_string(f.denominator());
}

// "60@0+1/2 " for C4 from 0, half a cycle long; ":1" behind the pitch when the voice is 1.
std::string played(std::string_view pattern) {
  std::string shown;
  for (const ScoreNote& note : read_score(pattern).notes)
    shown += std::to_string(note.note) + (note.voice > 0 ? ":" + std::to_string(note.voice) : "") +
             "@" + text(note.onset) + "+" + text(note.length) + " ";
  return shown;
}

std::string error_of(std::string_view pattern) {
  try {
    (void)read_score(pattern);
    return "";
  } catch (const PatternError& error) {
    return std::to_string(error.column()) + ": " + error.what();
  }
}

TEST(Fraction, IsKeptInLowestTerms) {
  EXPECT_EQ(Fraction(2, 4), Fraction(1, 2));
  EXPECT_EQ(Fraction(3, -6), Fraction(-1, 2));
  EXPECT_EQ(Fraction(1, 3) + Fraction(1, 6), Fraction(1, 2));
  EXPECT_EQ(Fraction(1, 3) - Fraction(1, 3), Fraction(0));
  EXPECT_EQ(Fraction(2, 3) * Fraction(3, 4), Fraction(1, 2));
  EXPECT_EQ(Fraction(2, 3) / Fraction(4, 3), Fraction(1, 2));
  EXPECT_LT(Fraction(1, 3), Fraction(34, 100));
  EXPECT_EQ(Fraction(-1, 2).floor(), -1);
  EXPECT_EQ(Fraction(-1, 2).ceiling(), 0);
  EXPECT_EQ(Fraction(7, 2).ceiling(), 4);
}

TEST(Fraction, SaysWhenTimeIsDividedTooFinely) {
  const Fraction fine(1, Fraction::largest_denominator);
  EXPECT_THROW((void)(fine * fine), FractionOverflow);
  EXPECT_THROW((void)(fine + Fraction(1, 2)), FractionOverflow);
  EXPECT_THROW((void)(Fraction(1) / Fraction(0)), FractionOverflow);
  EXPECT_THROW((void)(Fraction(Fraction::largest_numerator) + Fraction(1)), FractionOverflow);
}

TEST(Score, ASequenceDividesItsSpanEqually) {
  EXPECT_EQ(played("c4 e4 g4"), "60@0+1/3 64@1/3+1/3 67@2/3+1/3 ");
  EXPECT_EQ(read_score("c4 e4 g4").cycles, 1);
}

TEST(Score, AGroupSharesOneStep) {
  EXPECT_EQ(played("c4 [d4 e4]"), "60@0+1/2 62@1/2+1/4 64@3/4+1/4 ");
}

TEST(Score, ARestIsSilentAndTakesItsShare) {
  EXPECT_EQ(played("~ c4"), "60@1/2+1/2 ");
}

TEST(Score, WeightsWidenSteps) {
  EXPECT_EQ(played("c4@3 d4"), "60@0+3/4 62@3/4+1/4 ");
}

TEST(Score, CopiesTakeAShareEach) {
  EXPECT_EQ(played("c4!3 d4"), "60@0+1/4 60@1/4+1/4 60@1/2+1/4 62@3/4+1/4 ");
}

TEST(Score, WeightedCopiesTakeTheirWeightEach) {
  EXPECT_EQ(played("c4@2!2 d4"), "60@0+2/5 60@2/5+2/5 62@4/5+1/5 ");
}

TEST(Score, AFactorRunsAGroupSeveralTimesWithinItsShare) {
  EXPECT_EQ(played("[c4 d4]*2"), "60@0+1/4 62@1/4+1/4 60@1/2+1/4 62@3/4+1/4 ");
  EXPECT_EQ(played("c4 d4*2"), "60@0+1/2 62@1/2+1/4 62@3/4+1/4 ");
}

TEST(Score, ADivisorRunsAGroupOverSeveralCycles) {
  EXPECT_EQ(played("[c4 d4]/2"), "60@0+1 62@1+1 ");
  EXPECT_EQ(read_score("[c4 d4]/2").cycles, 2);
}

TEST(Score, ANoteLongerThanTheCycleIsStruckOnce) {
  EXPECT_EQ(played("c4/4"), "60@0+4 ");
  EXPECT_EQ(read_score("c4/4").cycles, 4);
  EXPECT_EQ(played("[c4 d4]/3 e4"), "60@0+3/4 64@1/2+1/2 62@5/4+3/4 64@3/2+1/2 64@5/2+1/2 ");
}

TEST(Score, AngleBracketsPlayOneStepPerCycle) {
  EXPECT_EQ(played("<c4 d4 e4>"), "60@0+1 62@1+1 64@2+1 ");
  EXPECT_EQ(read_score("<c4 d4 e4>").cycles, 3);
}

TEST(Score, AStepOfAngleBracketsSeesItsOwnCycles) {
  EXPECT_EQ(played("<<c4 d4> e4>"), "60@0+1 64@1+1 62@2+1 64@3+1 ");
}

TEST(Score, CopiesInAngleBracketsPlayForSeveralCycles) {
  EXPECT_EQ(played("<c4!2 d4>"), "60@0+1 60@1+1 62@2+1 ");
}

TEST(Score, AngleBracketsRunFasterUnderAFactor) {
  EXPECT_EQ(played("<c4 d4>*2"), "60@0+1/2 62@1/2+1/2 ");
  EXPECT_EQ(read_score("<c4 d4>*2").cycles, 1);
  EXPECT_EQ(played("<c4 d4 e4>*2"), "60@0+1/2 62@1/2+1/2 64@1+1/2 60@3/2+1/2 62@2+1/2 64@5/2+1/2 ");
}

TEST(Score, OnsetsSpreadEvenlyOverSteps) {
  EXPECT_EQ(played("c4(3,8)"), "60@0+1/8 60@3/8+1/8 60@3/4+1/8 ");
  EXPECT_EQ(played("c4(1,2,1)"), "60@1/2+1/2 ");
  EXPECT_EQ(played("c4(2,2)"), "60@0+1/2 60@1/2+1/2 ");
}

// The rule for every onset, against what the unrolling gives, for all sizes up to 16.
TEST(Score, SpreadFollowsItsRuleForAllSmallSizes) {
  for (int n = 1; n <= 16; ++n)
    for (int k = 1; k <= n; ++k)
      for (int r = 0; r < n; ++r) {
        std::string expected;
        for (int i = 0; i < n; ++i)
          if ((i + r) % n * k % n < k)
            expected += "60@" + text(Fraction(i, n)) + "+" + text(Fraction(1, n)) + " ";
        std::ostringstream pattern;
        pattern << "c4(" << k << "," << n << "," << r << ")";
        EXPECT_EQ(played(pattern.str()), expected) << pattern.str();
      }
}

TEST(Score, LayersOfThePatternPlayOnVoicesOfTheirOwn) {
  EXPECT_EQ(played("c4, e4 g4"), "60@0+1 64:1@0+1/2 67:1@1/2+1/2 ");
}

TEST(Score, BracketsAroundTheWholePatternKeepItsVoices) {
  EXPECT_EQ(played("[c4, e4]"), "60@0+1 64:1@0+1 ");
  EXPECT_EQ(played("<c4 d4, e4>"), "60@0+1 64:1@0+1 62@1+1 64:1@1+1 ");
  EXPECT_EQ(played("[c4, e4]*2"), "60@0+1/2 64:1@0+1/2 60@1/2+1/2 64:1@1/2+1/2 ");
}

TEST(Score, LayersInsideAVoiceAreAChordOnIt) {
  EXPECT_EQ(played("[c4, e4] g4"), "60@0+1/2 64@0+1/2 67@1/2+1/2 ");
  EXPECT_EQ(played("c4, [d4, e4]"), "60@0+1 62:1@0+1 64:1@0+1 ");
}

TEST(Score, LayersHaveLengthsOfTheirOwn) {
  EXPECT_EQ(read_score("<c4 d4, e4 f4 g4>").cycles, 6);
  EXPECT_EQ(read_score("<c4 d4>, <e4 f4 g4>, a4/4").cycles, 12);
}

TEST(Score, ALayerMayBeEmpty) {
  EXPECT_EQ(played(", c4"), "60:1@0+1 ");
}

TEST(Score, SixteenLayersAreTheMost) {
  std::string pattern = "c4";
  for (int i = 1; i < 16; ++i)
    pattern += ",c4";
  EXPECT_EQ(error_of(pattern), "");
  EXPECT_EQ(error_of(pattern + ",c4"), "49: expected at most 16 layers");
}

TEST(Score, APeriodHas256CyclesAtMost) {
  EXPECT_EQ(read_score("<c4!64 d4!64 e4!64 f4!64>").cycles, 256);
  EXPECT_NE(error_of("<c4!64 d4!64 e4!64 f4!64 g4>").find("256 cycles"), std::string::npos);
  EXPECT_NE(error_of("c4/64/64").find("256 cycles"), std::string::npos);
}

TEST(Score, AScoreHas8192NotesAtMost) {
  EXPECT_EQ(read_score("[c4*64]*64 [c4*64]*64").notes.size(), 8192U);
  EXPECT_EQ(error_of("[c4*64]*64 [c4*64]*64 c4"), "23: expected at most 8192 notes");
}

TEST(Score, RestsToTheThousandthPowerAreRefusedOrQuick) {
  std::string rests = "~";
  std::string notes = "c4";
  for (int i = 0; i < 20; ++i) {
    rests = "[" + rests + "]*64";
    notes = "[~ " + notes + "]*64";
  }
  EXPECT_EQ(error_of(rests), "");
  EXPECT_NE(error_of(notes), "");
}

TEST(Score, TimeDividedTooFinelyIsRefused) {
  std::string pattern = "c4";
  for (int i = 0; i < 12; ++i)
    pattern = "[" + pattern + " ~@60]";
  EXPECT_NE(error_of(pattern).find("divides time too finely"), std::string::npos);
}

// The game's music, bar by bar. Melody notes are a quarter long unless marked e, an eighth; the
// bass plays eighths.
struct Bar {
  const char* melody;
  const char* bass;
};
constexpr Bar bars[] = {
    {"c5@0 e5@1/4 g5@1/2 e5@3/4", "c2 c3 c2 c3 c2 c3 c2 c3"},
    {"a4@0 c5@1/4 e5@1/2 c5@3/4", "a1 a2 a1 a2 a1 a2 a1 a2"},
    {"f4@0 a4@1/4 c5@1/2 d5@3/4e c5@7/8e", "f1 f2 f1 f2 f1 f2 f1 f2"},
    {"g4@0 b4@1/4 d5@1/2", "g1 g2 g1 g2 g1 g2 g1 g2"},
    {"e5@0 g5@1/4 a5@1/2e g5@5/8e e5@3/4", "c2 c3 c2 c3 c2 c3 c2 c3"},
    {"d5@0 f5@1/4 e5@1/2e d5@5/8e c5@3/4", "d2 d3 d2 d3 f1 f2 f1 f2"},
    {"c5@0 b4@1/4e c5@3/8e d5@1/2 e5@3/4", "g1 g2 g1 g2 g1 b1 g1 b1"},
    {"c5@0", "c2 c3 c2 c3 c2 c3 c2 c3"},
};

std::vector<ScoreNote> expected_music() {
  std::vector<ScoreNote> notes;
  for (int bar = 0; bar < 8; ++bar) {
    std::istringstream melody(bars[bar].melody), bass(bars[bar].bass);
    for (std::string word; melody >> word;) {
      int numerator = 0, denominator = 1;
      const auto at = word.find('@');
      (void)std::sscanf(word.c_str() + at + 1, "%d/%d", &numerator, &denominator);
      notes.push_back({Fraction(bar) + Fraction(numerator, denominator),
                       word.back() == 'e' ? Fraction(1, 8) : Fraction(1, 4), 0,
                       note_named(word.substr(0, at))});
    }
    int eighth = 0;
    for (std::string word; bass >> word;)
      notes.push_back({Fraction(bar) + Fraction(eighth++, 8), Fraction(1, 8), 1, note_named(word)});
  }
  std::stable_sort(notes.begin(), notes.end(), [](const ScoreNote& a, const ScoreNote& b) {
    return a.onset < b.onset || (a.onset == b.onset && a.voice < b.voice);
  });
  return notes;
}

TEST(Score, TheMusicIsItsListOfNotesExactly) {
  const Score score = read_score(music_pattern());
  const auto expected = expected_music();
  EXPECT_EQ(score.cycles, 8);
  ASSERT_EQ(score.notes.size(), 96U);
  ASSERT_EQ(expected.size(), 96U);
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(score.notes[i].onset, expected[i].onset) << i;
    EXPECT_EQ(score.notes[i].length, expected[i].length) << i;
    EXPECT_EQ(score.notes[i].voice, expected[i].voice) << i;
    EXPECT_EQ(score.notes[i].note, expected[i].note) << i;
  }
}

TEST(Score, TheMusicHas32MelodyAnd64BassNotes) {
  int melody = 0;
  for (const auto& note : read_score(music_pattern()).notes)
    melody += note.voice == 0;
  EXPECT_EQ(melody, 32);
}

// A pattern and the same pattern unrolled by hand must agree: [x y]*n is n times "x y", and a
// group of copies is those copies.
TEST(Score, FactorsAndCopiesAgreeOnRandomGroups) {
  std::mt19937 random(7);
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  for (int round = 0; round < 200; ++round) {
    std::string group;
    for (int i = 0; i <= below(4); ++i)
      group += below(4) == 0 ? "~ " : std::string(1, static_cast<char>('a' + below(7))) + "4 ";
    const int times = 1 + below(5);
    std::string written;
    for (int i = 0; i < times; ++i)
      written += "[" + group + "] ";
    EXPECT_EQ(played("[" + group + "]*" + std::to_string(times)), played(written)) << group;
    EXPECT_EQ(played("[" + group + "]!" + std::to_string(times)), played(written)) << group;
  }
}

} // namespace
} // namespace kavo::sound
