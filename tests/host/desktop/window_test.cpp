// The window on a real X server: what it shows, how it scales, what its keys and its close button
// do.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/host/desktop/window_fixture.h"

namespace {

using kavo::desktop::Bitmap;
using kavo::desktop::Desktop;
using kavo::desktop::DesktopWindow;
using kavo::desktop::WindowSize;
using kavo::test::colour_at;
using kavo::test::draw_squares;
using kavo::test::height;
using kavo::test::shows_squares;
using kavo::test::title;
using kavo::test::width;
using kavo::test::WindowTest;

class SmallLaptop : public WindowTest {
protected:
  SmallLaptop() : WindowTest(1366, 768) {}
};

TEST_F(WindowTest, HasTitleSizeAndClass) {
  const DesktopWindow window = open();
  EXPECT_EQ(window.title(), title);
  EXPECT_EQ(window.size().width, width);
  EXPECT_EQ(window.size().height, height);
  EXPECT_EQ(window.class_names(),
            (std::vector<std::string>{"host_desktop_tests", "host_desktop_tests"}));
}

TEST_F(WindowTest, StartsAtItsScale) {
  const DesktopWindow window = open(2);
  EXPECT_EQ(window.size().width, 2 * width);
  EXPECT_EQ(window.size().height, 2 * height);
}

TEST_F(SmallLaptop, TheWindowFitsAtTheStart) {
  const WindowSize size = open().size();
  EXPECT_LE(size.height, 768 - 30);
  EXPECT_GE(size.height, 700);
}

TEST_F(SmallLaptop, TheWindowLiesWholeBelowATallTitleBarAtTheStart) {
  constexpr int tall = 40; // this window manager's is lower
  desktop.start_window_manager();
  const DesktopWindow window = open();
  ASSERT_TRUE(flip_until([&] { return window.title_bar_height() > 0; }));
  const kavo::desktop::Place place = window.place();
  const int top = place.y - window.title_bar_height();
  EXPECT_GE(top, 0);
  EXPECT_LE(top + tall + place.height, 768);
}

TEST_F(WindowTest, ShowsThePictureToThePixel) {
  const DesktopWindow window = open();
  draw_squares(bridge);
  const Bitmap shown = pixels_at(window, {width, height});
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      ASSERT_EQ(shown.at(x, y), colour_at(x, y)) << x << ',' << y;
}

TEST_F(WindowTest, ShowsItToThePixelAtTwiceTheSize) {
  const DesktopWindow window = open(2);
  draw_squares(bridge);
  const Bitmap shown = pixels_at(window, {2 * width, 2 * height});
  for (int y = 0; y < 2 * height; ++y)
    for (int x = 0; x < 2 * width; ++x)
      ASSERT_EQ(shown.at(x, y), colour_at(x / 2, y / 2)) << x << ',' << y;
}

TEST_F(WindowTest, IsLetterboxedInBlack) {
  const DesktopWindow window = open();
  draw_squares(bridge);
  window.resize(1000, height);
  const Bitmap shown = pixels_at(window, {1000, height});
  for (int y = 0; y < height; y += 7) {
    for (int x = 0; x < 170; ++x) {
      ASSERT_EQ(shown.at(x, y), 0U);
      ASSERT_EQ(shown.at(999 - x, y), 0U);
    }
    for (int x = 0; x < width; ++x)
      ASSERT_EQ(shown.at(170 + x, y), colour_at(x, y));
  }
}

TEST_F(WindowTest, ShrinksWholeAndUndistorted) {
  const DesktopWindow window = open();
  draw_squares(bridge);
  window.resize(330, 400);
  const Bitmap shown = pixels_at(window, {330, 400});
  for (int y = 2; y < 400; y += 5) // the middle of squares of five
    for (int x = 2; x < 330; x += 5)
      ASSERT_EQ(shown.at(x, y), colour_at(2 * x, 2 * y)) << x << ',' << y;
}

TEST_F(WindowTest, ShowsWhatChangesInAScaledPictureAndKeepsTheRest) {
  const DesktopWindow window = open(2);
  draw_squares(bridge);
  ASSERT_TRUE(comes_to_show_squares(window, {2 * width, 2 * height}));
  bridge.send("DRAWCOLOR", 255, 255, 255);
  bridge.send("RECT", 100, 300, 3, 1, 1);
  bridge.send("RECT", 200, 700, 1, 1, 1);
  bridge.send("SCREENFLIP");
  const Bitmap shown = window.pixels();
  const auto colour = [](int x, int y) {
    const bool is_new = (y == 300 && x >= 100 && x < 103) || (y == 700 && x == 200);
    return is_new ? 0x00FFFFFFU : colour_at(x, y);
  };
  for (int y = 0; y < 2 * height; ++y)
    for (int x = 0; x < 2 * width; ++x)
      ASSERT_EQ(shown.at(x, y), colour(x / 2, y / 2)) << x << ',' << y;
}

TEST_F(WindowTest, ASecondScreenReplacesIt) {
  open();
  bridge.send("SCREEN", 100, 50, "another", 1);
  bridge.send("SCREENFLIP");
  EXPECT_EQ(desktop.wait_for_window("another").size().width, 100);
  EXPECT_FALSE(desktop.find_window(title));
}

TEST_F(WindowTest, CloseTakesItAway) {
  open();
  bridge.send("GFX.CLOSE");
  EXPECT_TRUE(kavo::desktop::eventually([&] { return !desktop.find_window(title); }));
}

TEST_F(WindowTest, KeysAreHeldWhileTheyAreDown) {
  open();
  desktop.press("Left");
  bridge.send("SCREENFLIP");
  for (int frame = 0; frame < 5; ++frame) {
    EXPECT_TRUE(is_held("Left"));
    EXPECT_FALSE(is_held("Right"));
    bridge.send("SCREENFLIP");
  }
  desktop.release("Left");
  bridge.send("SCREENFLIP");
  EXPECT_FALSE(is_held("Left"));
}

TEST_F(WindowTest, EveryKeyOfTheGameHasItsName) {
  open();
  const std::pair<const char*, const char*> keys[] = {
      {"Left", "Left"},   {"Right", "Right"},   {"Up", "Up"},         {"Down", "Down"},
      {"space", "Space"}, {"Return", "Return"}, {"Escape", "Escape"}, {"a", "A"},
      {"w", "W"},         {"s", "S"},           {"d", "D"},           {"p", "P"},
      {"o", "O"},         {"m", "M"},           {"7", "7"},           {"F5", "F5"}};
  for (const auto& [pressed, name] : keys) {
    desktop.press(pressed);
    bridge.send("SCREENFLIP");
    EXPECT_TRUE(is_held(name)) << name;
    desktop.release(pressed);
    bridge.send("SCREENFLIP");
    EXPECT_FALSE(is_held(name)) << name;
  }
}

TEST_F(WindowTest, LettersAreThoseOfTheLayout) {
  // On the key left of S stands Q in France; on the one left of X stands Y in Germany.
  for (const auto& [layout, key] : {std::pair("fr", "q"), {"fr", "z"}, {"de", "y"}, {"us", "a"}}) {
    desktop.set_layout(layout);
    open();
    desktop.press(key);
    bridge.send("SCREENFLIP");
    const std::string name(1, static_cast<char>(*key - 'a' + 'A'));
    EXPECT_TRUE(is_held(name.c_str())) << layout << ' ' << key;
    desktop.release(key);
  }
}

TEST_F(WindowTest, TheKeypadStandsInForReturnAndArrows) {
  open();
  const std::pair<const char*, const char*> keys[] = {{"KP_Enter", "Return"},
                                                      {"KP_Left", "Left"},
                                                      {"KP_Right", "Right"},
                                                      {"KP_Up", "Up"},
                                                      {"KP_Down", "Down"}};
  for (const auto& [pressed, name] : keys) {
    desktop.tap(pressed);
    bridge.send("SCREENFLIP");
    EXPECT_TRUE(is_held(name)) << pressed;
    EXPECT_FALSE(is_held(name)) << pressed;
  }
}

TEST_F(WindowTest, GoesToFullScreenAndBack) {
  desktop.start_window_manager();
  const DesktopWindow window = open();
  draw_squares(bridge);
  const std::vector<std::vector<std::string>> switches = {{"F11"}, {"Alt_L", "Return"}};
  for (const auto& keys : switches) {
    for (const WindowSize size : {WindowSize{1400, 1700}, WindowSize{width, height}}) {
      desktop.tap(keys);
      pixels_at(window, size);
    }
    EXPECT_FALSE(is_held("Return")) << "the switch is not a press";
  }
}

TEST_F(WindowTest, KeepsThePictureThroughFullScreenAndOtherSizes) {
  desktop.start_window_manager();
  const DesktopWindow window = open();
  draw_squares(bridge);
  for (int round = 0; round < 3; ++round) {
    desktop.tap("F11");
    pixels_at(window, {1400, 1700});
    desktop.tap("F11");
    pixels_at(window, {width, height});
    window.resize(width + 1, height);
    pixels_at(window, {width + 1, height});
    window.resize(width, height);
    const Bitmap shown = pixels_at(window, {width, height});
    for (int y = 0; y < height; y += 3)
      for (int x = 0; x < width; ++x)
        ASSERT_EQ(shown.at(x, y), colour_at(x, y)) << x << ',' << y;
  }
}

TEST_F(WindowTest, ShiftAndCapsLockDoNotChangeALettersName) {
  open();
  for (const char* modifier : {"Shift_L", "Shift_R", "Caps_Lock"}) {
    desktop.press(modifier);
    desktop.tap("a");
    bridge.send("SCREENFLIP");
    EXPECT_TRUE(is_held("A")) << modifier;
    EXPECT_FALSE(is_held("A")) << modifier;
    desktop.release(modifier);
  }
}

TEST_F(WindowTest, NoTapIsLostHoweverShort) {
  open();
  int seen = 0;
  for (int i = 0; i < 200; ++i) {
    desktop.tap(i % 2 == 0 ? "Left" : "space");
    bridge.send("SCREENFLIP");
    const bool is_reported = is_held(i % 2 == 0 ? "Left" : "Space");
    bridge.send("SCREENFLIP");
    const bool is_over = !is_held(i % 2 == 0 ? "Left" : "Space");
    seen += is_reported && is_over ? 1 : 0;
  }
  EXPECT_EQ(seen, 200);
}

TEST_F(WindowTest, ATapJustBeforeTheQuestionIsSeenInTheSameFrame) {
  open();
  bridge.send("SCREENFLIP");
  desktop.tap("Up");
  EXPECT_TRUE(kavo::desktop::eventually([&] {
    const bool is_reported = is_held("Up");
    if (!is_reported)
      bridge.send("SCREENFLIP");
    return is_reported;
  }));
}

TEST_F(WindowTest, LosingTheKeyboardLetsGoOfHeldKeys) {
  const DesktopWindow window = open();
  desktop.press("Down");
  bridge.send("SCREENFLIP");
  EXPECT_TRUE(is_held("Down"));
  window.take_focus_away();
  EXPECT_TRUE(flip_until([&] { return !is_held("Down"); }));
  desktop.release("Down");
}

TEST(ClosingTheWindow, EndsTheProgramInOrder) {
  Desktop desktop;
  const auto program = desktop.start({{WINDOW_PROGRAM}, {}, "."});
  desktop.wait_for_window(title).ask_to_close();
  const kavo::desktop::Outcome outcome = program->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_EQ(outcome.errors, "");
  EXPECT_FALSE(outcome.output.empty()) << "what was buffered for output is lost";
  EXPECT_FALSE(desktop.find_window(title));
}

} // namespace
