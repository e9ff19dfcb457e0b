// Presses and questions in every order that matters.
#include "host/keyboard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using kavo::host::Keyboard;

constexpr int left = 1;
constexpr int right = 2;

// Plays a score for one key: d and u press and release it, ? asks, | ends the frame. Returns the
// answers.
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

TEST(Keyboard, AFrameWithoutAQuestionKeepsOnePress) {
  EXPECT_EQ(answers("dudududu||????"), "1000");
  EXPECT_EQ(answers("dudud||????"), "1111");
}

TEST(Keyboard, AHeldKeyThatIsNotAskedForKeepsOnePressBesideItsRelease) {
  EXPECT_EQ(answers("d?||udududu||?????"), "101000");
}

TEST(Keyboard, AFrameWithAQuestionForgetsNothing) {
  EXPECT_EQ(answers("dudududu?|?|?|?|?|?|?|?|?"), "101010100");
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

// Plays left taps, then one of right, all before the first frame that sees them; returns what the
// two keys read in each frame, left before right.
std::string frames_of(int left_taps, int frames) {
  Keyboard keyboard;
  const auto ask = [&] {
    std::string answer = keyboard.is_held(left) ? "L" : ".";
    answer += keyboard.is_held(right) ? "R " : ". ";
    keyboard.end_frame();
    return answer;
  };
  ask();
  for (int tap = 0; tap < left_taps; ++tap) {
    keyboard.key_down(left, left);
    keyboard.key_up(left);
  }
  keyboard.key_down(right, right);
  keyboard.key_up(right);
  std::string given;
  for (int frame = 0; frame < frames; ++frame)
    given += ask();
  return given;
}

TEST(Keyboard, OneTapOfEachKeyIsOneFrame) {
  EXPECT_EQ(frames_of(1, 3), "L. .R .. ");
}

TEST(Keyboard, AKeyWaitsForWhatOtherKeysDidBefore) {
  EXPECT_EQ(frames_of(3, 8), "L. .. L. .. L. .R .. .. ");
}

TEST(Keyboard, AKeyThatNobodyAsksForHoldsNothingUp) {
  Keyboard keyboard;
  keyboard.is_held(right);
  keyboard.end_frame();
  for (int tap = 0; tap < 3; ++tap) {
    keyboard.key_down(left, left);
    keyboard.key_up(left);
  }
  keyboard.key_down(right, right);
  EXPECT_TRUE(keyboard.is_held(right));
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
  void end_frame() {
    if (!was_asked_)
      while (presses() > 1)
        changes_.erase(changes_.size() - 2, 2);
    was_asked_ = false;
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
};

// Every order of press, release, question and end of frame, eight steps long.
TEST(Keyboard, AnswersByTheRuleInEveryOrderOfSteps) {
  constexpr int steps = 8;
  for (int order = 0; order < 1 << (2 * steps); ++order) {
    Keyboard keyboard;
    Model model;
    for (int step = 0; step < steps; ++step) {
      switch (order >> (2 * step) & 3) {
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
      default:
        ASSERT_EQ(keyboard.is_held(left), model.ask()) << order << " at step " << step;
      }
    }
  }
}

} // namespace
