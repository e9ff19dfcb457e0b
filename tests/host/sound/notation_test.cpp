// The pattern notation and note names: what parses, and what is said about what does not.
#include <gtest/gtest.h>

#include <string>

#include "host/sound/notation.h"
#include "host/sound/pattern_error.h"
#include "host/sound/pitch.h"

namespace kavo::sound {
namespace {

using Kind = PatternNode::Kind;

// "<column>: <what>", or "" when the pattern parses.
std::string error_of(std::string_view pattern) {
  try {
    (void)parse_pattern(pattern);
    return "";
  } catch (const PatternError& error) {
    return std::to_string(error.column()) + ": " + error.what();
  }
}

TEST(Pitch, NotesAreNamedScientifically) {
  EXPECT_EQ(note_named("c4"), 60);
  EXPECT_EQ(note_named("a4"), 69);
  EXPECT_EQ(note_named("c0"), 12);
  EXPECT_EQ(note_named("g9"), 127);
  EXPECT_DOUBLE_EQ(frequency_of(69), 440.0);
  EXPECT_NEAR(frequency_of(note_named("c5")), 523.2511, 1e-4);
  EXPECT_NEAR(frequency_of(note_named("f1")), 43.6535, 1e-4);
}

TEST(Pitch, SharpsAndFlatsMoveByASemitoneEach) {
  EXPECT_EQ(note_named("c#4"), 61);
  EXPECT_EQ(note_named("cs4"), 61);
  EXPECT_EQ(note_named("db4"), 61);
  EXPECT_EQ(note_named("bb3"), 58);
  EXPECT_EQ(note_named("c##4"), 62);
  EXPECT_EQ(note_named("cb4"), 59);
}

TEST(Pitch, WhatIsNoNoteIsRefusedWithItsColumn) {
  const auto column_of = [](std::string_view name) {
    try {
      (void)note_named(name);
      return size_t{0};
    } catch (const PatternError& error) {
      return error.column();
    }
  };
  EXPECT_EQ(column_of(""), 1U);
  EXPECT_EQ(column_of("h4"), 1U);
  EXPECT_EQ(column_of("C4"), 1U);
  EXPECT_EQ(column_of("c"), 2U);
  EXPECT_EQ(column_of("c#"), 3U);
  EXPECT_EQ(column_of("c4 "), 3U);
  EXPECT_EQ(column_of("c4x"), 3U);
  EXPECT_EQ(column_of("c-1"), 2U);
  EXPECT_EQ(column_of("g#9"), 1U);
  EXPECT_EQ(column_of("cb0"), 1U);
  EXPECT_EQ(column_of("c99999999999999999999"), 1U);
}

TEST(Notation, StepsMayTouchOrStandApart) {
  EXPECT_EQ(parse_pattern("c4e4[g4]~").children.size(), 4U);
  EXPECT_EQ(parse_pattern("  c4 \t e4\n[ g4 ] ~ ").children.size(), 4U);
}

TEST(Notation, AnEmptyPatternIsSilence) {
  EXPECT_TRUE(parse_pattern("").children.empty());
  EXPECT_EQ(error_of("[]"), "");
  EXPECT_EQ(error_of("< , >"), "");
}

TEST(Notation, ModifiersApplyFromLeftToRight) {
  const PatternNode step = parse_pattern("c4*2/3@4!5").children.front();
  EXPECT_EQ(step.kind, Kind::slower);
  EXPECT_EQ(step.factor, 3);
  EXPECT_EQ(step.weight, 4);
  EXPECT_EQ(step.copies, 5);
  EXPECT_EQ(step.children.front().kind, Kind::faster);
  EXPECT_EQ(step.children.front().factor, 2);
  EXPECT_EQ(step.children.front().weight, 1);
}

TEST(Notation, AWeightGivenBeforeAFactorStaysTheStepsOwn) {
  const PatternNode step = parse_pattern("c4@3!2*4").children.front();
  EXPECT_EQ(step.weight, 3);
  EXPECT_EQ(step.copies, 2);
  EXPECT_EQ(step.children.front().copies, 1);
}

TEST(Notation, AnExclamationMarkAloneMeansTwoCopies) {
  EXPECT_EQ(parse_pattern("c4! e4").children.front().copies, 2);
}

TEST(Notation, ErrorsNameColumnExpectationAndWhatStandsThere) {
  EXPECT_EQ(error_of("c4 x4"), "4: expected a note, ~, [, < or a modifier, got \"x\"");
  EXPECT_EQ(error_of("c"), "2: expected an octave number, as in c4, got the end");
  EXPECT_EQ(error_of("[c4"), "4: expected a note, ~, [, <, a modifier or \"]\", got the end");
  EXPECT_EQ(error_of("[c4>"), "4: expected a note, ~, [, <, a modifier or \"]\", got \">\"");
  EXPECT_EQ(error_of("c4]"), "3: expected a note, ~, [, < or a modifier, got \"]\"");
  EXPECT_EQ(error_of("*2"), "1: expected a note, ~, [, < or a modifier, got \"*\"");
  EXPECT_EQ(error_of("c4*"), "4: expected a factor from 1 to 64, got the end");
  EXPECT_EQ(error_of("c4*-2"), "4: expected a factor from 1 to 64, got \"-\"");
  EXPECT_EQ(error_of("c4@0"), "4: expected a weight from 1 to 64, got 0");
  EXPECT_EQ(error_of("c4!65"), "4: expected a number of copies from 1 to 64, got 65");
  EXPECT_EQ(error_of("c4(3)"), "5: expected \",\", got \")\"");
  EXPECT_EQ(error_of("c4(3,8"), "7: expected \")\", got the end");
  EXPECT_EQ(error_of("c4(9,8)"), "4: expected at most as many onsets as steps, got 9 on 8");
  EXPECT_EQ(error_of("c4(0,8)"), "4: expected a number of onsets from 1 to 64, got 0");
  EXPECT_EQ(error_of("c4@2@3"), "5: expected \"@\" once in a step");
  EXPECT_EQ(error_of("c4 \x01"), "4: expected a note, ~, [, < or a modifier, got byte 0x01");
  EXPECT_EQ(error_of("h9"), "1: expected a note, ~, [, < or a modifier, got \"h\"");
}

TEST(Notation, FactorsRunFrom1To64) {
  for (const std::string modifier : {"*", "/", "@", "!"}) {
    EXPECT_EQ(error_of("c4" + modifier + "1"), "");
    EXPECT_EQ(error_of("c4" + modifier + "64"), "");
    EXPECT_NE(error_of("c4" + modifier + "0"), "");
    EXPECT_NE(error_of("c4" + modifier + "65"), "");
    EXPECT_NE(error_of("c4" + modifier + "99999999999999999999"), "");
  }
}

TEST(Notation, BracketsNestThirtyTwoDeep) {
  const std::string open(32, '['), shut(32, ']');
  EXPECT_EQ(error_of(open + "c4" + shut), "");
  EXPECT_EQ(error_of("[" + open + "c4" + shut + "]"),
            "33: expected at most 32 brackets inside one another");
}

TEST(Notation, AStepTakesSixteenModifiers) {
  std::string pattern = "c4";
  for (int i = 0; i < 16; ++i)
    pattern += "*1";
  EXPECT_EQ(error_of(pattern), "");
  EXPECT_EQ(error_of(pattern + "*1"), "1: expected at most 16 modifiers");
}

} // namespace
} // namespace kavo::sound
