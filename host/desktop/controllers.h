// Game controllers as keys of the keyboard. Every button and every direction of the left stick
// stands for the key or keys that it saves the player from reaching for:
//
//   cross, left stick   Left, Right, Up, Down
//   south               Space and Return
//   east                Escape
//   north, west         Up, which turns the piece
//   start               P and Return
//   back                O
//   guide               F1
//
// Controllers come and go as they are plugged; any number of them may play along.
#pragma once

#include <SDL.h>

#include <bitset>
#include <memory>
#include <vector>

#include "host/input.h"

namespace kavo::host {

class Controllers {
public:
  // Starts to listen. Where the system has no controllers to offer nothing is ever heard.
  Controllers();
  ~Controllers();
  Controllers(const Controllers&) = delete;
  Controllers& operator=(const Controllers&) = delete;

  // Passes on the keys that the event pressed or released; other events are left alone. The
  // scancodes of these keys are above all of a keyboard's, one for each button of each controller
  // and each of its keys.
  void deliver(const SDL_Event& event, EventSink& sink);

  // Whether any is plugged in.
  bool are_there() const { return !controllers_.empty(); }

  static constexpr int first_scancode = SDL_NUM_SCANCODES;

private:
  static constexpr size_t most_keys = 32;

  struct Close {
    void operator()(SDL_GameController* device) const { SDL_GameControllerClose(device); }
  };
  struct Controller {
    SDL_JoystickID id;
    std::unique_ptr<SDL_GameController, Close> device;
    int x = 0; // of the left stick, -32768..32767
    int y = 0;
    std::bitset<most_keys> held = {}; // by row of the table of keys
  };

  void plug_in(int device_index);
  void unplug(SDL_JoystickID id, EventSink& sink);
  Controller* find(SDL_JoystickID id);
  static void move_stick(Controller& controller, const SDL_ControllerAxisEvent& event,
                         EventSink& sink);
  static void push(Controller& controller, int control, int value, int other_axis, EventSink& sink);
  static void set_control(Controller& controller, int control, bool is_down, EventSink& sink);
  static void set_key(Controller& controller, size_t row, bool is_down, EventSink& sink);

  bool is_listening_;
  std::vector<Controller> controllers_;
};

} // namespace kavo::host
