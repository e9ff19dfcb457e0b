// Game controllers: their buttons, sticks and triggers as what the host knows of them.
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

  // Passes on what the event pressed or released; other events are left alone. The sources are
  // above all scancodes of a keyboard's, one for each part of each controller.
  void deliver(const SDL_Event& event, EventSink& sink);

  // Whether any is plugged in.
  bool are_there() const { return !controllers_.empty(); }

  static constexpr int first_source = SDL_NUM_SCANCODES;

private:
  static constexpr size_t most_parts = 32;

  struct Close {
    void operator()(SDL_GameController* device) const { SDL_GameControllerClose(device); }
  };
  struct Stick { // -32768..32767 each
    int x = 0;
    int y = 0;
  };
  struct Controller {
    SDL_JoystickID id;
    std::unique_ptr<SDL_GameController, Close> device;
    Stick left = {};
    Stick right = {};
    std::bitset<most_parts> held = {};
  };

  void plug_in(int device_index);
  void unplug(SDL_JoystickID id, EventSink& sink);
  Controller* find(SDL_JoystickID id);
  static void move_stick(Controller& controller, const SDL_ControllerAxisEvent& event,
                         EventSink& sink);
  static void push_all(Controller& controller, int first, const Stick& stick, EventSink& sink);
  static void push(Controller& controller, int part, int value, int other_axis, EventSink& sink);
  static void set_part(Controller& controller, int number, bool is_down, EventSink& sink);

  bool is_listening_;
  std::vector<Controller> controllers_;
};

} // namespace kavo::host
