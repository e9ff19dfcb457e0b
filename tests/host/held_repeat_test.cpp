// Left and Right that read as pressed again and again while they are held.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "host/keys/held_repeat.h"
#include "host/offscreen.h"

namespace {

using kavo::host::HeldRepeat;
using kavo::host::Keyboard;
using kavo::host::KeyNames;
using kavo::host::Offscreen;

class HeldRepeatTest : public testing::Test {
protected:
  int code(const char* name) { return names.code_of(name); }
  void press(const char* name) { keyboard.key_down(code(name), code(name)); }
  void release(const char* name) { keyboard.key_up(code(name)); }

  bool either(const char* first, const char* second) {
    return keyboard.is_held(code(first)) || keyboard.is_held(code(second));
  }

  // One frame of the game's, of 10 ms: which directions it takes for newly pressed.
  std::string frame() {
    now_ms += 10;
    repeat.tend(now_ms);
    std::string seen;
    const std::pair<bool, char> held[] = {
        {either("Left", "A"), 'l'}, {either("Right", "D"), 'r'}, {either("Down", "S"), 'd'}};
    for (size_t i = 0; i < 3; ++i) {
      if (held[i].first && !was_held[i])
        seen += held[i].second;
      was_held[i] = held[i].first;
    }
    keyboard.end_frame();
    return seen;
  }

  // When they are newly pressed, in milliseconds from now on.
  std::vector<double> presses(int frames, char which) {
    const double start = now_ms;
    std::vector<double> result;
    for (int i = 0; i < frames; ++i)
      if (frame().find(which) != std::string::npos)
        result.push_back(now_ms - start);
    return result;
  }

  using Times = std::vector<double>;

  Offscreen platform;
  KeyNames names{platform};
  Keyboard keyboard;
  HeldRepeat repeat{keyboard, names};
  double now_ms = 0;
  bool was_held[3] = {};
};

TEST_F(HeldRepeatTest, WithoutItAHeldKeyIsOnePress) {
  frame();
  press("Left");
  EXPECT_EQ(presses(100, 'l'), Times{10});
}

TEST_F(HeldRepeatTest, ComesAfterTheDelayAndThenAtTheRate) {
  repeat.set_times({{100, 50}});
  for (const char* key : {"Left", "A"}) {
    frame();
    press(key);
    // The picture before each one shows the key up.
    EXPECT_EQ(presses(30, 'l'), (Times{10, 120, 170, 220, 270})) << key;
    release(key);
    EXPECT_EQ(presses(30, 'l'), Times()) << key;
  }
}

TEST_F(HeldRepeatTest, IsForLeftAndRightOnly) {
  repeat.set_times({{100, 50}});
  frame();
  press("Down");
  EXPECT_EQ(presses(100, 'd'), Times{10});
}

TEST_F(HeldRepeatTest, IsOfTheDirectionThatWasPressedLater) {
  repeat.set_times({{100, 50}});
  frame();
  press("Left");
  presses(5, 'l');
  press("Right");
  EXPECT_EQ(presses(20, 'r'), (Times{10, 120, 170}));
  EXPECT_EQ(presses(10, 'l'), Times());
  release("Right");
  EXPECT_EQ(presses(20, 'l'), (Times{120, 170})) << "it takes over after the delay";
}

TEST_F(HeldRepeatTest, AShortTapIsOnePress) {
  repeat.set_times({{100, 50}});
  frame();
  press("Right");
  release("Right");
  EXPECT_EQ(presses(50, 'r'), Times{10});
}

TEST_F(HeldRepeatTest, DoesNotMakeUpForWhatItMissed) {
  repeat.set_times({{100, 50}});
  frame();
  press("Right");
  frame();
  now_ms += 5000; // an animation
  EXPECT_EQ(presses(12, 'r'), (Times{20, 70, 120}));
}

TEST_F(HeldRepeatTest, NoTapOfAnotherKeyIsLostOrDoubled) {
  repeat.set_times({{100, 30}});
  frame();
  press("Left");
  int seen = 0;
  for (int tap = 0; tap < 50; ++tap) {
    press("Down");
    release("Down");
    for (int i = 0; i < 3 + tap % 3; ++i)
      seen += static_cast<int>(frame().find('d') != std::string::npos);
  }
  EXPECT_EQ(seen, 50);
}

TEST_F(HeldRepeatTest, SwitchedOffItIsOver) {
  repeat.set_times({{100, 50}});
  frame();
  press("Left");
  presses(15, 'l');
  repeat.set_times({});
  frame();
  EXPECT_EQ(presses(50, 'l'), Times());
}

} // namespace
