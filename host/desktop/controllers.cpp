#include "host/desktop/controllers.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kavo::host {

namespace {

// The stick's directions go on where SDL's buttons end.
enum StickDirection : int {
  stick_left = SDL_CONTROLLER_BUTTON_MAX,
  stick_right,
  stick_up,
  stick_down,
};

struct Binding {
  int control; // SDL_GameControllerButton or StickDirection
  SDL_Keycode key;
};

constexpr std::array bindings = {
    Binding{SDL_CONTROLLER_BUTTON_DPAD_LEFT, SDLK_LEFT},
    Binding{SDL_CONTROLLER_BUTTON_DPAD_RIGHT, SDLK_RIGHT},
    Binding{SDL_CONTROLLER_BUTTON_DPAD_UP, SDLK_UP},
    Binding{SDL_CONTROLLER_BUTTON_DPAD_DOWN, SDLK_DOWN},
    Binding{stick_left, SDLK_LEFT},
    Binding{stick_right, SDLK_RIGHT},
    Binding{stick_up, SDLK_UP},
    Binding{stick_down, SDLK_DOWN},
    Binding{SDL_CONTROLLER_BUTTON_A, SDLK_SPACE}, // south; SDL calls the four by their places
    Binding{SDL_CONTROLLER_BUTTON_A, SDLK_RETURN},
    Binding{SDL_CONTROLLER_BUTTON_B, SDLK_ESCAPE}, // east
    Binding{SDL_CONTROLLER_BUTTON_X, SDLK_UP},     // west
    Binding{SDL_CONTROLLER_BUTTON_Y, SDLK_UP},     // north
    Binding{SDL_CONTROLLER_BUTTON_START, SDLK_p},
    Binding{SDL_CONTROLLER_BUTTON_START, SDLK_RETURN},
    Binding{SDL_CONTROLLER_BUTTON_BACK, SDLK_o},
    Binding{SDL_CONTROLLER_BUTTON_GUIDE, SDLK_F1},
};

// A stick is pushed once it is two thirds of the way out, and no longer when it has come back to
// a third: in between its trembling makes no further push.
constexpr int pushed_from = 22000;
constexpr int let_go_below = 11000;

} // namespace

Controllers::Controllers() {
  static_assert(bindings.size() <= most_keys);
  // The kernel's own drivers serve every controller that it knows. SDL's would open devices for
  // writing.
  SDL_SetHint(SDL_HINT_JOYSTICK_HIDAPI, "0");
  // Buttons by their places, whatever is printed on them.
  SDL_SetHint(SDL_HINT_GAMECONTROLLER_USE_BUTTON_LABELS, "0");
  is_listening_ = SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) == 0;
}

Controllers::~Controllers() {
  controllers_.clear();
  if (is_listening_)
    SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
}

void Controllers::deliver(const SDL_Event& event, EventSink& sink) {
  switch (event.type) {
  case SDL_CONTROLLERDEVICEADDED:
    return plug_in(event.cdevice.which);
  case SDL_CONTROLLERDEVICEREMOVED:
    return unplug(event.cdevice.which, sink);
  case SDL_CONTROLLERBUTTONDOWN:
  case SDL_CONTROLLERBUTTONUP:
    if (Controller* controller = find(event.cbutton.which))
      set_control(*controller, event.cbutton.button, event.type == SDL_CONTROLLERBUTTONDOWN, sink);
    return;
  case SDL_CONTROLLERAXISMOTION:
    if (Controller* controller = find(event.caxis.which))
      move_stick(*controller, event.caxis, sink);
    return;
  default:
    return;
  }
}

// A controller that cannot be opened, as one that is gone again, is none.
void Controllers::plug_in(int device_index) {
  std::unique_ptr<SDL_GameController, Close> device(SDL_GameControllerOpen(device_index));
  if (!device)
    return;
  const SDL_JoystickID id = SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(device.get()));
  if (find(id) == nullptr)
    controllers_.push_back({.id = id, .device = std::move(device)});
}

void Controllers::unplug(SDL_JoystickID id, EventSink& sink) {
  Controller* controller = find(id);
  if (controller == nullptr)
    return;
  for (size_t row = 0; row < bindings.size(); ++row)
    set_key(*controller, row, false, sink);
  controllers_.erase(controllers_.begin() + (controller - controllers_.data()));
}

Controllers::Controller* Controllers::find(SDL_JoystickID id) {
  const auto found = std::find_if(controllers_.begin(), controllers_.end(),
                                  [id](const Controller& each) { return each.id == id; });
  return found == controllers_.end() ? nullptr : &*found;
}

void Controllers::move_stick(Controller& controller, const SDL_ControllerAxisEvent& event,
                             EventSink& sink) {
  if (event.axis == SDL_CONTROLLER_AXIS_LEFTX)
    controller.x = event.value;
  else if (event.axis == SDL_CONTROLLER_AXIS_LEFTY)
    controller.y = event.value;
  else
    return;
  push(controller, stick_left, -controller.x, controller.y, sink);
  push(controller, stick_right, controller.x, controller.y, sink);
  push(controller, stick_up, -controller.y, controller.x, sink);
  push(controller, stick_down, controller.y, controller.x, sink);
}

// The larger way wins, so that a stick that is held down for a fast fall and leans a little does
// not steer.
void Controllers::push(Controller& controller, int control, int value, int other_axis,
                       EventSink& sink) {
  if (value < let_go_below)
    set_control(controller, control, false, sink);
  else if (value >= pushed_from && value > std::abs(other_axis))
    set_control(controller, control, true, sink);
}

void Controllers::set_control(Controller& controller, int control, bool is_down, EventSink& sink) {
  for (size_t row = 0; row < bindings.size(); ++row)
    if (bindings[row].control == control)
      set_key(controller, row, is_down, sink);
}

void Controllers::set_key(Controller& controller, size_t row, bool is_down, EventSink& sink) {
  if (controller.held.test(row) == is_down)
    return;
  controller.held.set(row, is_down);
  const SDL_Keycode code = bindings[row].key;
  const Key key = {first_scancode + controller.id * static_cast<int>(most_keys) +
                       static_cast<int>(row),
                   code, SDL_GetKeyName(code)};
  if (is_down)
    sink.key_went_down(key, false);
  else
    sink.key_went_up(key);
}

} // namespace kavo::host
