// A whole game with nothing but a game controller in the hands.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "game/state.h"
#include "host/desktop/controllers.h"
#include "tests/fakes/stage.h"
#include "tests/fakes/virtual_controller.h"
#include "tests/support/temporary_folder.h"
#include "tools/film/player.h"
#include "tools/film/studio.h"

namespace kavo::film {
namespace {

using kavo::test::stage;

// Takes the keys that a player would press and presses buttons for them.
class Thumbs final : public host::EventSink {
public:
  void key_went_down(const host::Key& key, bool) override {
    controller_.press(buttons().at(key.name));
  }
  void key_went_up(const host::Key& key) override { controller_.release(buttons().at(key.name)); }
  void keyboard_was_taken() override {}
  void button_went_down(int, int, int) override {}
  void button_went_up(int, int, int) override {}
  void pointer_moved(int, int) override {}
  void close_was_asked() override {}

private:
  static const std::map<std::string, SDL_GameControllerButton>& buttons() {
    static const std::map<std::string, SDL_GameControllerButton> all = {
        {"Left", SDL_CONTROLLER_BUTTON_DPAD_LEFT}, {"Right", SDL_CONTROLLER_BUTTON_DPAD_RIGHT},
        {"Up", SDL_CONTROLLER_BUTTON_Y},           {"Space", SDL_CONTROLLER_BUTTON_A},
        {"Return", SDL_CONTROLLER_BUTTON_A},       {"P", SDL_CONTROLLER_BUTTON_START},
        {"Escape", SDL_CONTROLLER_BUTTON_B}};
    return all;
  }

  kavo::test::VirtualController controller_;
};

// The controller, and the host's ear for it; SDL forgets both when the host ends.
struct Sofa {
  host::Controllers controllers;
  Thumbs thumbs;

  void deliver(host::EventSink& sink) {
    SDL_Event event = {};
    while (SDL_PollEvent(&event) != 0)
      controllers.deliver(event, sink);
  }
};

TEST(Controller, PlaysAGameToItsEndAndNamesItsScore) {
  const kavo::test::WorkingFolder scores;
  Player player({.cleared_row = 8, .hole = 7, .height = 1}, 2); // piles up, and turns and moves
  std::optional<Sofa> sofa;
  std::set<std::string> states;
  stage().code_of_key = [](const std::string& name) { return SDL_GetKeyFromName(name.c_str()); };
  stage().play = [&](host::EventSink& sink) {
    if (!sofa) {
      sofa.emplace();
      sofa->deliver(sink);
    }
    player.act(sofa->thumbs);
    sofa->deliver(sink);
    if (QUITFLAG)
      sofa.reset();
  };
  stage().watch = [&](const host::Canvas&) {
    states.insert(chars(GSTATE$));
    if (states.contains("enter"))
      player.leave();
  };
  EXPECT_TRUE(run_game({}, 1));
  stage() = {};
  EXPECT_EQ(states, (std::set<std::string>{"title", "play", "enter"}));
  std::string best;
  std::getline(std::ifstream("tmp/kavo_high.txt") >> std::ws, best);
  EXPECT_EQ(best.substr(0, 4), "AAA;");
}

} // namespace
} // namespace kavo::film
