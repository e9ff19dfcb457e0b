// Controllers as the keys that they stand for, with SDL's virtual controllers.
#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/desktop/controllers.h"
#include "host/events.h"
#include "host/keyboard.h"
#include "tests/fakes/virtual_controller.h"

namespace {

using kavo::host::Controllers;
using kavo::host::EventSink;
using kavo::host::Key;
using kavo::host::Keyboard;
using kavo::test::VirtualController;

// Keys that go down and up as "+Left", "-Left".
class Heard final : public EventSink {
public:
  void key_went_down(const Key& key, bool is_repeat) override {
    EXPECT_FALSE(is_repeat);
    lines.push_back(std::string("+") + key.name);
    sources.insert(key.scancode);
    keyboard.key_down(key.scancode, key.code);
  }
  void key_went_up(const Key& key) override {
    lines.push_back(std::string("-") + key.name);
    keyboard.key_up(key.scancode);
  }
  void keyboard_was_taken() override {}
  void button_went_down(int, int, int) override {}
  void button_went_up(int, int, int) override {}
  void pointer_moved(int, int) override {}
  void close_was_asked() override {}

  std::vector<std::string> lines;
  std::set<int> sources;
  Keyboard keyboard;
};

using Lines = std::vector<std::string>;

class ControllerTest : public testing::Test {
protected:
  ControllerTest() { heard(); }

  // What the keys did since the last time.
  Lines heard() {
    SDL_Event event = {};
    while (SDL_PollEvent(&event) != 0)
      controllers->deliver(event, sink);
    return std::exchange(sink.lines, {});
  }

  Lines after_press(SDL_GameControllerButton button) {
    controller->press(button);
    return heard();
  }
  Lines after_release(SDL_GameControllerButton button) {
    controller->release(button);
    return heard();
  }
  Lines after_push(double x, double y) {
    controller->push_stick(x, y);
    return heard();
  }

  std::optional<Controllers> controllers{std::in_place};
  Heard sink;
  std::optional<VirtualController> controller{std::in_place};
};

TEST_F(ControllerTest, EveryButtonIsItsKeys) {
  const std::pair<SDL_GameControllerButton, Lines> buttons[] = {
      {SDL_CONTROLLER_BUTTON_DPAD_LEFT, {"+Left", "-Left"}},
      {SDL_CONTROLLER_BUTTON_DPAD_RIGHT, {"+Right", "-Right"}},
      {SDL_CONTROLLER_BUTTON_DPAD_UP, {"+Up", "-Up"}},
      {SDL_CONTROLLER_BUTTON_DPAD_DOWN, {"+Down", "-Down"}},
      {SDL_CONTROLLER_BUTTON_A, {"+Space", "+Return", "-Space", "-Return"}},
      {SDL_CONTROLLER_BUTTON_B, {"+Escape", "-Escape"}},
      {SDL_CONTROLLER_BUTTON_X, {"+Up", "-Up"}},
      {SDL_CONTROLLER_BUTTON_Y, {"+Up", "-Up"}},
      {SDL_CONTROLLER_BUTTON_START, {"+P", "+Return", "-P", "-Return"}},
      {SDL_CONTROLLER_BUTTON_BACK, {"+O", "-O"}},
      {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, {}}};
  for (const auto& [button, keys] : buttons) {
    Lines seen = after_press(button);
    const Lines released = after_release(button);
    seen.insert(seen.end(), released.begin(), released.end());
    EXPECT_EQ(seen, keys) << SDL_GameControllerGetStringForButton(button);
  }
}

// SDL keeps the release of a short press back for a quarter of a second.
TEST_F(ControllerTest, TheGuideButtonOpensThePanel) {
  EXPECT_EQ(after_press(SDL_CONTROLLER_BUTTON_GUIDE), Lines{"+F1"});
  controller->release(SDL_CONTROLLER_BUTTON_GUIDE);
  Lines released;
  const uint64_t end = SDL_GetTicks64() + 30'000;
  while (released.empty() && SDL_GetTicks64() < end)
    released = heard();
  EXPECT_EQ(released, Lines{"-F1"});
}

TEST_F(ControllerTest, ThePushedStickIsOnePress) {
  EXPECT_EQ(after_push(-0.5, 0), Lines{});
  EXPECT_EQ(after_push(-0.8, 0), Lines{"+Left"});
  EXPECT_EQ(after_push(-1, 0), Lines{});
  EXPECT_EQ(after_push(0, 0), Lines{"-Left"});
  EXPECT_EQ(after_push(1, 0), Lines{"+Right"});
  EXPECT_EQ(after_push(0, -1), (Lines{"-Right", "+Up"}));
  EXPECT_EQ(after_push(0, 1), (Lines{"-Up", "+Down"}));
}

TEST_F(ControllerTest, AStickThatTremblesAtItsThresholdIsOnePress) {
  EXPECT_EQ(after_push(0.7, 0), Lines{"+Right"});
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(after_push(0.6, 0), Lines{});
    EXPECT_EQ(after_push(0.7, 0), Lines{});
  }
}

TEST_F(ControllerTest, AStickThatDriftsNearItsMiddlePressesNothing) {
  for (const double drift : {0.1, -0.2, 0.3, -0.3})
    EXPECT_EQ(after_push(drift, -drift), Lines{});
}

TEST_F(ControllerTest, AStickHeldDownThatLeansALittleDoesNotSteer) {
  EXPECT_EQ(after_push(0, 1), Lines{"+Down"});
  EXPECT_EQ(after_push(0.7, 0.9), Lines{});
  EXPECT_EQ(after_push(0.95, 0.5), Lines{"+Right"});
  EXPECT_EQ(after_push(0.95, 0.2), Lines{"-Down"});
}

TEST_F(ControllerTest, AFlickAcrossIsBothPresses) {
  EXPECT_EQ(after_push(-1, 0), Lines{"+Left"});
  EXPECT_EQ(after_push(1, 0), (Lines{"-Left", "+Right"}));
}

TEST_F(ControllerTest, CrossAndStickTogetherHoldOneKey) {
  after_press(SDL_CONTROLLER_BUTTON_DPAD_DOWN);
  after_push(0, 1);
  EXPECT_TRUE(sink.keyboard.is_held(SDLK_DOWN));
  after_release(SDL_CONTROLLER_BUTTON_DPAD_DOWN);
  EXPECT_TRUE(sink.keyboard.is_held(SDLK_DOWN)) << "the stick still holds it";
  after_push(0, 0);
  EXPECT_FALSE(sink.keyboard.is_held(SDLK_DOWN));
}

TEST_F(ControllerTest, ItsKeysAreNotThoseOfTheKeyboard) {
  after_press(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
  sink.keyboard.key_down(SDL_SCANCODE_LEFT, SDLK_LEFT);
  after_release(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
  EXPECT_TRUE(sink.keyboard.is_held(SDLK_LEFT)) << "the keyboard still holds it";
  EXPECT_GE(*sink.sources.begin(), Controllers::first_scancode);
}

TEST_F(ControllerTest, SouthIsSpaceAndReturnInOneFrame) {
  for (int i = 0; i < 3; ++i) {
    after_press(SDL_CONTROLLER_BUTTON_A);
    after_release(SDL_CONTROLLER_BUTTON_A);
  }
  for (int frame = 0; frame < 6; ++frame) {
    EXPECT_EQ(sink.keyboard.is_held(SDLK_SPACE), frame % 2 == 0);
    EXPECT_EQ(sink.keyboard.is_held(SDLK_RETURN), frame % 2 == 0);
    sink.keyboard.end_frame();
  }
}

TEST_F(ControllerTest, PulledOutWhileHeldItLetsGo) {
  after_press(SDL_CONTROLLER_BUTTON_A);
  after_push(0, 1);
  controller.reset();
  const Lines lines = heard();
  EXPECT_EQ(std::multiset<std::string>(lines.begin(), lines.end()),
            (std::multiset<std::string>{"-Down", "-Return", "-Space"}));
}

TEST_F(ControllerTest, PluggedInAgainItPlaysOn) {
  EXPECT_EQ(after_press(SDL_CONTROLLER_BUTTON_B), Lines{"+Escape"});
  controller.reset();
  EXPECT_EQ(heard(), Lines{"-Escape"});
  controller.emplace();
  EXPECT_EQ(heard(), Lines{});
  EXPECT_EQ(after_press(SDL_CONTROLLER_BUTTON_B), Lines{"+Escape"});
}

TEST_F(ControllerTest, SeveralPlayTogether) {
  VirtualController second;
  heard();
  EXPECT_EQ(after_press(SDL_CONTROLLER_BUTTON_DPAD_LEFT), Lines{"+Left"});
  second.press(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
  EXPECT_EQ(heard(), Lines{"+Left"});
  EXPECT_EQ(sink.sources.size(), 2U);
  controller.reset();
  EXPECT_EQ(heard(), Lines{"-Left"});
  EXPECT_TRUE(sink.keyboard.is_held(SDLK_LEFT)) << "the second still holds it";
}

TEST_F(ControllerTest, OneThatWasThereBeforeIsFound) {
  SDL_InitSubSystem(SDL_INIT_JOYSTICK); // or SDL would forget the virtual one
  controllers.reset();
  controllers.emplace();
  heard();
  EXPECT_EQ(after_press(SDL_CONTROLLER_BUTTON_BACK), Lines{"+O"});
  SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
}

} // namespace
