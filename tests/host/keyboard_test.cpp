// Presses and questions in every order that matters.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>

#include "host/keyboard.h"

namespace {

using kavo::host::Keyboard;

constexpr int left = 1;
constexpr int right = 2;

void tap(Keyboard& keyboard, int key) {
  keyboard.key_down(key, key);
  keyboard.key_up(key);
}

// Plays a score for one key: d and u press and release it, ? asks, o asks for another key, | ends
// the frame. Returns the answers.
std::string answers(const std::string& score) {
  Keyboard keyboard;
  std::string given;
  for (const char step : score) {
    if (step == 'd')
      keyboard.key_down(left, left);
    else if (step == 'u')
      keyboard.key_up(left);
    else if (step == '|')
      keyboard.end_frame();
    else if (step == 'o')
      EXPECT_FALSE(keyboard.is_held(right));
    else
      given += keyboard.is_held(left) ? '1' : '0';
  }
  return given;
}

TEST(Keyboard, NothingIsHeldAtTheStart) {
  EXPECT_EQ(answers("??"), "00");
}

TEST(Keyboard, AHeldKeyStaysHeld) {
  EXPECT_EQ(answers("d???u??"), "11100");
}

TEST(Keyboard, ATapBetweenTwoQuestionsIsReportedOnce) {
  EXPECT_EQ(answers("?|du?|?|?"), "0100");
}

TEST(Keyboard, TwoTapsBetweenTwoQuestionsAreReportedAsTwo) {
  EXPECT_EQ(answers("dudu????"), "1010");
  EXPECT_EQ(answers("dudu?|?|?|?|?"), "10100");
}

TEST(Keyboard, ATapThatEndsInAHoldStaysHeld) {
  EXPECT_EQ(answers("dud????"), "1011");
}

TEST(Keyboard, AShortReleaseOfAHeldKeyIsSeen) {
  EXPECT_EQ(answers("d?|ud?|?|?"), "1011");
}

TEST(Keyboard, AutoRepeatIsNotAPress) {
  EXPECT_EQ(answers("dddd??u??"), "1100");
}

TEST(Keyboard, AReleaseOfAKeyThatIsNotDownIsNothing) {
  EXPECT_EQ(answers("uu?d?uuu??"), "0100");
}

TEST(Keyboard, AFrameThatAsksForOtherKeysOnlyKeepsOnePress) {
  EXPECT_EQ(answers("o|dudududuo||????"), "1000");
  EXPECT_EQ(answers("o|dududo||????"), "1111");
}

TEST(Keyboard, AHeldKeyThatIsPassedOverKeepsOnePressBesideItsRelease) {
  EXPECT_EQ(answers("d?|o|udududuo||?????"), "101000");
}

TEST(Keyboard, AFrameWithAQuestionForgetsNothing) {
  EXPECT_EQ(answers("dudududu?|?|?|?|?|?|?|?|?"), "101010100");
}

TEST(Keyboard, FramesThatAskForNoKeyForgetNothing) {
  EXPECT_EQ(answers("?|du||du|du||?|?|?|?|?|?|?"), "01010100");
}

TEST(Keyboard, AProgramThatNeverAsksDoesNotHoardPresses) {
  Keyboard keyboard;
  for (int i = 0; i < 5000; ++i) {
    tap(keyboard, left);
    keyboard.end_frame();
  }
  int presses = 0;
  for (int question = 0; question < 10'000; ++question)
    presses += keyboard.is_held(left) ? 1 : 0;
  EXPECT_EQ(presses, 1000);
  EXPECT_FALSE(keyboard.is_held(left));
}

TEST(Keyboard, ReleaseAllLetsGoOfEveryKey) {
  Keyboard keyboard;
  keyboard.key_down(left, left);
  keyboard.key_down(right, right);
  EXPECT_TRUE(keyboard.is_held(left));
  keyboard.release_all();
  EXPECT_FALSE(keyboard.is_held(left));
  EXPECT_TRUE(keyboard.is_held(right)) << "its press was not reported yet";
  EXPECT_FALSE(keyboard.is_held(right));
  keyboard.key_up(left);
  EXPECT_FALSE(keyboard.is_held(left));
}

TEST(Keyboard, AKeyCanBePressedAgainAfterReleaseAll) {
  Keyboard keyboard;
  keyboard.key_down(left, left);
  keyboard.is_held(left);
  keyboard.release_all();
  keyboard.is_held(left);
  keyboard.key_down(left, left);
  EXPECT_TRUE(keyboard.is_held(left));
}

TEST(Keyboard, KeysDoNotMixUp) {
  Keyboard keyboard;
  keyboard.key_down(left, left);
  EXPECT_FALSE(keyboard.is_held(right));
  EXPECT_TRUE(keyboard.is_held(left));
}

// A frame: what the two keys read, left before right.
std::string ask_for_both(Keyboard& keyboard) {
  std::string answer = keyboard.is_held(left) ? "L" : ".";
  answer += keyboard.is_held(right) ? "R " : ". ";
  keyboard.end_frame();
  return answer;
}

// Plays left taps, then one of right, all before the first frame that sees them; returns what the
// two keys read in each frame.
std::string frames_of(int left_taps, int frames) {
  Keyboard keyboard;
  ask_for_both(keyboard);
  for (int i = 0; i < left_taps; ++i)
    tap(keyboard, left);
  tap(keyboard, right);
  std::string given;
  for (int frame = 0; frame < frames; ++frame)
    given += ask_for_both(keyboard);
  return given;
}

TEST(Keyboard, OneTapOfEachKeyIsOneFrame) {
  EXPECT_EQ(frames_of(1, 3), "L. .R .. ");
}

TEST(Keyboard, AKeyWaitsForWhatOtherKeysDidBefore) {
  EXPECT_EQ(frames_of(3, 8), "L. .. L. .. L. .R .. .. ");
}

TEST(Keyboard, WhatIsTypedBeforeTheFirstQuestionKeepsItsOrder) {
  Keyboard keyboard;
  for (const int key : {left, left, right})
    tap(keyboard, key);
  std::string heard;
  for (int frame = 0; frame < 4; ++frame)
    heard += ask_for_both(keyboard);
  EXPECT_EQ(heard, "L. .. L. .R ");
}

TEST(Keyboard, AKeyThatNobodyAsksForHoldsNothingUp) {
  Keyboard keyboard;
  keyboard.is_held(right);
  keyboard.end_frame();
  for (int i = 0; i < 3; ++i)
    tap(keyboard, left);
  keyboard.key_down(right, right);
  EXPECT_TRUE(keyboard.is_held(right));
}

TEST(Keyboard, KeysKeepTheirOrderOverFramesThatAskForNone) {
  Keyboard keyboard;
  ask_for_both(keyboard);
  for (const int key : {left, left, right}) {
    tap(keyboard, key);
    keyboard.end_frame();
  }
  std::string heard;
  for (int frame = 0; frame < 4; ++frame)
    heard += ask_for_both(keyboard);
  EXPECT_EQ(heard, "L. .. L. .R ");
}

// A program that asks "left, else right" in each frame; returns what it hears after the steps:
// l and r press the keys, L and R release them, | is a frame.
std::string either_key(const std::string& steps) {
  Keyboard keyboard;
  std::string heard;
  for (const char step : steps) {
    if (step == 'l' || step == 'r')
      keyboard.key_down(step, step == 'l' ? left : right);
    else if (step == 'L' || step == 'R')
      keyboard.key_up(step + ('a' - 'A'));
    else {
      heard += keyboard.is_held(left) || keyboard.is_held(right) ? '1' : '0';
      keyboard.end_frame();
    }
  }
  return heard;
}

TEST(Keyboard, TapsOfTwoKeysThatMeanTheSameAreTwoPresses) {
  EXPECT_EQ(either_key("|lLrR|||||"), "010100");
  EXPECT_EQ(either_key("|rRlL|||||"), "010100");
  EXPECT_EQ(either_key("|l|Lr|R|||"), "010100");
  EXPECT_EQ(either_key("|r|Rl|L|||"), "010100");
}

// Two directions with two keys each, asked as "this, else that"; frames come at any time.
TEST(Keyboard, RandomTapsOfTheKeysOfTwoDirectionsAreAllPressesOfTheirDirection) {
  constexpr int rounds = 2000;
  constexpr int taps = 8;
  std::mt19937 random(3);
  const auto chance = [&](int end) { return std::uniform_int_distribution(0, end - 1)(random); };
  for (int round = 0; round < rounds; ++round) {
    Keyboard keyboard;
    std::array<bool, 2> was_held = {};
    std::array<int, 2> tapped = {};
    std::array<int, 2> heard = {};
    const auto frame = [&] {
      for (int direction = 0; direction < 2; ++direction) {
        const bool is_held = keyboard.is_held(2 * direction) || keyboard.is_held(2 * direction + 1);
        heard[direction] += is_held && !was_held[direction];
        was_held[direction] = is_held;
      }
      keyboard.end_frame();
    };
    frame();
    for (int i = 0, key = 0; i < taps; ++i) {
      key = (key + 1 + chance(3)) % 4;
      ++tapped[key / 2];
      tap(keyboard, key);
      for (int frames = chance(4); frames > 1; --frames)
        frame();
    }
    for (int frames = 0; frames < 4 * taps; ++frames)
      frame();
    ASSERT_EQ(heard, tapped) << "round " << round;
  }
}

TEST(Keyboard, AKeyThatIsPressedWhileItsAlternativeIsHeldIsNoPressOfItsOwn) {
  EXPECT_EQ(either_key("|l|r|L|R||"), "011100");
  EXPECT_EQ(either_key("|l|rL|R||"), "01100");
  EXPECT_EQ(either_key("|r|lR|L||"), "01100");
}

TEST(Keyboard, KeysThatAreAskedForSideBySideShareAFrame) {
  Keyboard keyboard;
  ask_for_both(keyboard);
  keyboard.key_down(left, left);
  EXPECT_EQ(ask_for_both(keyboard), "L. ");
  keyboard.key_up(left);
  keyboard.key_down(right, right);
  EXPECT_EQ(ask_for_both(keyboard), ".R ");
}

TEST(Keyboard, TwoPhysicalKeysOfOneCodeHoldItTogether) {
  Keyboard keyboard;
  keyboard.key_down(10, left);
  keyboard.key_down(20, left);
  EXPECT_TRUE(keyboard.is_held(left));
  keyboard.key_up(10);
  EXPECT_TRUE(keyboard.is_held(left));
  EXPECT_TRUE(keyboard.is_held(left));
  keyboard.key_up(20);
  EXPECT_FALSE(keyboard.is_held(left));
}

TEST(Keyboard, ReleasesWhatThePressMeantAlsoWhenTheLayoutChangedInBetween) {
  Keyboard keyboard;
  keyboard.key_down(10, left);
  EXPECT_TRUE(keyboard.is_held(left));
  keyboard.key_up(10);
  keyboard.key_down(10, right);
  EXPECT_FALSE(keyboard.is_held(left));
  EXPECT_TRUE(keyboard.is_held(right));
}

// The rule itself, said differently: reported states alternate whenever there is a change left.
class Model {
public:
  void down() { change(true); }
  void up() { change(false); }
  bool ask() {
    was_asked_ = true;
    if (!changes_.empty()) {
      reported_ = changes_.front() == 'd';
      changes_.erase(0, 1);
    }
    return reported_;
  }
  void ask_for_another() { was_another_asked_ = true; }
  void end_frame() {
    if (!was_asked_ && was_another_asked_)
      while (presses() > 1)
        changes_.erase(changes_.size() - 2, 2);
    was_asked_ = was_another_asked_ = false;
  }

private:
  void change(bool is_down) {
    if (is_down == is_down_)
      return;
    is_down_ = is_down;
    changes_ += is_down ? 'd' : 'u';
  }
  int64_t presses() const { return std::count(changes_.begin(), changes_.end(), 'd'); }

  std::string changes_;
  bool is_down_ = false;
  bool reported_ = false;
  bool was_asked_ = false;
  bool was_another_asked_ = false;
};

// Every order of press, release, question, question for another key and end of frame, seven steps
// long, after a first frame.
TEST(Keyboard, AnswersByTheRuleInEveryOrderOfSteps) {
  constexpr int steps = 7;
  constexpr int kinds = 5;
  constexpr int orders = 5 * 5 * 5 * 5 * 5 * 5 * 5;
  for (int order = 0; order < orders; ++order) {
    Keyboard keyboard;
    keyboard.is_held(right);
    keyboard.end_frame();
    Model model;
    int rest = order;
    for (int step = 0; step < steps; ++step, rest /= kinds) {
      switch (rest % kinds) {
      case 0:
        keyboard.key_down(left, left);
        model.down();
        break;
      case 1:
        keyboard.key_up(left);
        model.up();
        break;
      case 2:
        keyboard.end_frame();
        model.end_frame();
        break;
      case 3:
        ASSERT_FALSE(keyboard.is_held(right));
        model.ask_for_another();
        break;
      default:
        ASSERT_EQ(keyboard.is_held(left), model.ask()) << order << " at step " << step;
      }
    }
  }
}

} // namespace
