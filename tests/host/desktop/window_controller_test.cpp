// A game controller in front of a real window: plugged in while the program runs, away with the
// keyboard, pulled out.
#include <optional>

#include "tests/fakes/virtual_controller.h"
#include "tests/host/desktop/window_fixture.h"

namespace {

using kavo::test::VirtualController;

class WindowControllerTest : public kavo::test::WindowTest {
protected:
  void press(SDL_GameControllerButton button) {
    controller->press(button);
    bridge.send("SCREENFLIP");
  }
  void release(SDL_GameControllerButton button) {
    controller->release(button);
    bridge.send("SCREENFLIP");
  }

  std::optional<VirtualController> controller;
};

TEST_F(WindowControllerTest, PluggedInWhileTheProgramRunsItPlays) {
  open();
  controller.emplace();
  bridge.send("SCREENFLIP");
  press(SDL_CONTROLLER_BUTTON_A);
  EXPECT_TRUE(is_held("Space"));
  EXPECT_TRUE(is_held("Return"));
  release(SDL_CONTROLLER_BUTTON_A);
  EXPECT_FALSE(is_held("Space"));
  EXPECT_FALSE(is_held("Return"));
}

TEST_F(WindowControllerTest, PulledOutWhileHeldItLetsGo) {
  open();
  controller.emplace();
  bridge.send("SCREENFLIP");
  press(SDL_CONTROLLER_BUTTON_DPAD_DOWN);
  EXPECT_TRUE(is_held("Down"));
  controller.reset();
  bridge.send("SCREENFLIP");
  EXPECT_FALSE(is_held("Down"));
}

TEST_F(WindowControllerTest, WithoutTheKeyboardItIsNotHeard) {
  const kavo::test::DesktopWindow window = open();
  controller.emplace();
  bridge.send("SCREENFLIP");
  press(SDL_CONTROLLER_BUTTON_DPAD_DOWN);
  EXPECT_TRUE(is_held("Down"));
  window.take_focus_away();
  EXPECT_TRUE(flip_until([&] { return !is_held("Down"); })) << "it plays on elsewhere";
  release(SDL_CONTROLLER_BUTTON_DPAD_DOWN);
  press(SDL_CONTROLLER_BUTTON_A);
  EXPECT_FALSE(is_held("Space"));
  window.focus();
  release(SDL_CONTROLLER_BUTTON_A);
  EXPECT_TRUE(flip_until([&] {
    press(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
    const bool is_heard = is_held("Left");
    release(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
    return is_heard;
  }));
  EXPECT_FALSE(is_held("Space"));
}

TEST_F(WindowControllerTest, PlayedWithItKeepsTheScreenSaverAway) {
  open();
  EXPECT_EQ(SDL_IsScreenSaverEnabled(), SDL_TRUE);
  controller.emplace();
  bridge.send("SCREENFLIP");
  EXPECT_EQ(SDL_IsScreenSaverEnabled(), SDL_TRUE) << "plugged in, it is not played with yet";
  press(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
  EXPECT_EQ(SDL_IsScreenSaverEnabled(), SDL_FALSE);
  release(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
  EXPECT_EQ(SDL_IsScreenSaverEnabled(), SDL_FALSE);
}

} // namespace
