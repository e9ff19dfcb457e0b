// No press is lost, none counts twice, none sticks: real key events through a real window into the
// game's reading of keys. KAVO_KEY_TAPS sets how many taps the long tests make.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <thread>

#include "tests/desktop/keys/typing.h"

namespace {

using kavo::typing::game_keys;
using kavo::typing::Typist;

constexpr int few_taps = 500;
constexpr std::chrono::milliseconds until_x_repeats{900}; // it begins after 660
constexpr int repeats_of_a_long_press = 30;               // X repeats 25 times a second

int taps_wanted() {
  const char* wanted = std::getenv("KAVO_KEY_TAPS");
  return wanted == nullptr ? few_taps : std::atoi(wanted);
}

class Chance {
public:
  int below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }
  const std::string& any_of(const std::vector<std::string>& keys) {
    return keys[static_cast<size_t>(below(static_cast<int>(keys.size())))];
  }
  const std::string& another_of(const std::vector<std::string>& keys, const std::string& than) {
    for (;;)
      if (const std::string& key = any_of(keys); key != than)
        return key;
  }
  // A person's time passes.
  void pass_up_to(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::microseconds(below(1000 * milliseconds + 1)));
  }

private:
  std::mt19937 random_{20};
};

void report(const char* what, const Typist& typist) {
  std::printf("measured: %s: %d presses, each seen once, in %d frames with a change\n", what,
              typist.presses(), typist.frames());
}

TEST(Keys, TapsShorterThanAFrameAreAllSeenOnceAndInOrder) {
  Typist typist;
  Chance chance;
  std::string key;
  for (int tap = 0; tap < taps_wanted(); ++tap) {
    key = chance.another_of(game_keys, key);
    typist.tap(key);
    chance.pass_up_to(16);
    typist.let_it_catch_up();
  }
  EXPECT_EQ(typist.difference_at_the_end(), "");
  report("taps shorter than a frame", typist);
}

// A key that is down is let go one time in ten, so that presses last from none to some hundred
// milliseconds, and up to four overlap.
TEST(Keys, PressesOfRandomLengthsThatOverlapAreAllSeenOnceAndInOrder) {
  constexpr int fingers = 4;
  Typist typist;
  Chance chance;
  int held = 0;
  while (typist.presses() < taps_wanted()) {
    const std::string& key = chance.any_of(game_keys);
    if (typist.is_down(key)) {
      typist.release(key);
      --held;
    } else if (held < fingers) {
      typist.press(key);
      ++held;
    }
    chance.pass_up_to(8);
    typist.let_it_catch_up();
  }
  EXPECT_EQ(typist.difference_at_the_end(), "");
  report("presses of random lengths", typist);
}

TEST(Keys, TwoAtOnceAreBothSeenInTheirOrder) {
  Typist typist;
  for (const std::string& first : game_keys)
    for (const std::string& second : game_keys) {
      if (first == second)
        continue;
      typist.press(first);
      typist.press(second);
      typist.release(first);
      typist.release(second);
      typist.press(second);
      typist.press(first);
      typist.release(first);
      typist.release(second);
    }
  EXPECT_EQ(typist.difference_at_the_end(), "");
  report("two keys at once", typist);
}

TEST(Keys, AKeyThatIsHeldIsPressedOnceHoweverOftenItRepeats) {
  Typist typist;
  typist.press("space");
  ASSERT_TRUE(typist.says("repeat\n", repeats_of_a_long_press));
  EXPECT_EQ(typist.difference_at_the_end(), "");
}

TEST(Keys, AKeyThatIsHeldWhenTheKeyboardGoesIsLetGo) {
  Typist typist;
  for (const std::string& key : game_keys) {
    typist.press(key);
    typist.take_the_keyboard_away();
    typist.release_unseen(key);
    typist.give_it_back();
    typist.tap(key);
  }
  EXPECT_EQ(typist.difference_at_the_end(), "");
}

TEST(Keys, WhatIsTypedElsewhereIsNotSeen) {
  Typist typist;
  for (const std::string& key : game_keys) {
    typist.take_the_keyboard_away();
    typist.press_unseen(key);
    typist.release_unseen(key);
    typist.give_it_back();
  }
  typist.tap("Left");
  EXPECT_EQ(typist.difference_at_the_end(), "");
}

TEST(Keys, WhatIsTypedWhileTheProgramDrawsAnAnimationIsSeenAfterwards) {
  Typist typist;
  for (int round = 0; round < 3; ++round) {
    typist.make_it_busy();
    for (const char* key : {"Left", "Left", "Up", "Left", "space", "space", "Right", "Down"})
      typist.tap(key);
  }
  EXPECT_EQ(typist.difference_at_the_end(), "");
}

// The game takes A for Left, D for Right, W for Up and S for Down.
TEST(Keys, TapsOfBothKeysOfADirectionAreSeenOneByOne) {
  Typist typist;
  Chance chance;
  std::string key;
  for (int tap = 0; tap < taps_wanted() / 5; ++tap) {
    key = chance.another_of(kavo::typing::direction_keys, key);
    typist.tap(key);
    chance.pass_up_to(16);
    typist.let_it_catch_up();
  }
  EXPECT_EQ(typist.difference_at_the_end(), "");
  report("taps of both keys of a direction", typist);
}

TEST(Keys, AKeyThatIsStillHeldWhenTheKeyboardComesBackIsNoNewPress) {
  Typist typist;
  for (const char* key : {"space", "Escape", "Down"}) {
    typist.press(key);
    typist.take_the_keyboard_away();
    typist.give_it_back();
    std::this_thread::sleep_for(until_x_repeats);
    typist.release_unseen(key);
    typist.tap(key);
  }
  EXPECT_EQ(typist.difference_at_the_end(), "");
}

TEST(Keys, AKeyThatWasPressedElsewhereIsNoPressHere) {
  Typist typist;
  typist.take_the_keyboard_away();
  typist.press_unseen("space");
  typist.give_it_back();
  std::this_thread::sleep_for(until_x_repeats);
  typist.tap("Left");
  typist.release_unseen("space");
  typist.tap("space");
  EXPECT_EQ(typist.difference_at_the_end(), "");
}

TEST(Keys, AKeyThatIsHeldWhileThePointerComesInStaysHeld) {
  Typist typist;
  typist.press("Left");
  typist.move_pointer_out_and_in();
  EXPECT_EQ(typist.difference_at_the_end(), "");
}

TEST(Keys, ThousandsOfChangesInOneFrameAreSeenInOrder) {
  constexpr int taps = 2000;
  Typist typist(0);
  Chance chance;
  typist.stop_it();
  std::string key;
  for (int tap = 0; tap < taps; ++tap) {
    key = chance.another_of(game_keys, key);
    typist.tap(key);
  }
  typist.let_it_go_on();
  EXPECT_EQ(typist.difference_at_the_end(), "");
  report("thousands of changes while the program stands still", typist);
}

} // namespace
