// Controllers as the keys that they stand for as the game comes, with SDL's virtual controllers.
#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/desktop/controllers.h"
#include "host/desktop/desktop_platform.h"
#include "host/keyboard.h"
#include "host/keys/bound_keys.h"
#include "host/keys/controls.h"
#include "tests/fakes/virtual_controller.h"

namespace {

using kavo::host::BoundKeys;
using kavo::host::Controllers;
using kavo::host::ControlPress;
using kavo::host::EventSink;
using kavo::host::Key;
using kavo::host::Keyboard;
using kavo::host::KeyNames;
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
      controllers->deliver(event, bound);
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

  kavo::host::DesktopPlatform platform;
  KeyNames names{platform};
  std::optional<Controllers> controllers{std::in_place};
  Heard sink;
  BoundKeys bound{sink, names};
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

// What goes down and up as "+south", "-south".
class HeardParts final : public EventSink {
public:
  void control_went_down(const ControlPress& press) override { note("+", press); }
  void control_went_up(const ControlPress& press) override { note("-", press); }
  void key_went_down(const Key&, bool) override {}
  void key_went_up(const Key&) override {}
  void keyboard_was_taken() override {}
  void button_went_down(int, int, int) override {}
  void button_went_up(int, int, int) override {}
  void pointer_moved(int, int) override {}
  void close_was_asked() override {}

  Lines lines;

private:
  void note(const char* sign, const ControlPress& press) {
    lines.push_back(sign + std::string(kavo::host::word_for(press.control)));
  }
};

class PartsOfAController : public ControllerTest {
protected:
  Lines heard_parts() {
    SDL_Event event = {};
    while (SDL_PollEvent(&event) != 0)
      controllers->deliver(event, parts);
    return std::exchange(parts.lines, {});
  }

  HeardParts parts;
};

// SDL keeps the release of a short press of the guide button back for a quarter of a second.
TEST_F(PartsOfAController, EveryButtonHasItsName) {
  constexpr std::pair<SDL_GameControllerButton, const char*> buttons[] = {
      {SDL_CONTROLLER_BUTTON_A, "south"},
      {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, "left shoulder"},
      {SDL_CONTROLLER_BUTTON_RIGHTSTICK, "right stick"},
      {SDL_CONTROLLER_BUTTON_DPAD_UP, "cross up"},
      {SDL_CONTROLLER_BUTTON_GUIDE, "guide"}};
  for (const auto& [button, name] : buttons) {
    controller->press(button);
    EXPECT_EQ(heard_parts(), Lines{std::string("+") + name});
    controller->release(button);
    Lines released;
    const uint64_t end = SDL_GetTicks64() + 30'000;
    while (released.empty() && SDL_GetTicks64() < end)
      released = heard_parts();
    EXPECT_EQ(released, Lines{std::string("-") + name});
  }
}

TEST_F(PartsOfAController, TriggersAndTheOtherStickAreButtons) {
  controller->move(SDL_CONTROLLER_AXIS_TRIGGERLEFT, 1);
  EXPECT_EQ(heard_parts(), Lines{"+left trigger"});
  controller->move(SDL_CONTROLLER_AXIS_TRIGGERLEFT, 0);
  EXPECT_EQ(heard_parts(), Lines{}) << "half way is neither";
  controller->move(SDL_CONTROLLER_AXIS_TRIGGERLEFT, -1);
  EXPECT_EQ(heard_parts(), Lines{"-left trigger"});
  controller->move(SDL_CONTROLLER_AXIS_RIGHTY, -1);
  EXPECT_EQ(heard_parts(), Lines{"+r-stick up"});
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
  EXPECT_GE(*sink.sources.begin(), Controllers::first_source);
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
