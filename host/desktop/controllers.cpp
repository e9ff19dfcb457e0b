#include "host/desktop/controllers.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kavo::host {

namespace {

// The directions of the sticks and the triggers go on where SDL's buttons end.
enum Push : int {
  stick_left = SDL_CONTROLLER_BUTTON_MAX,
  stick_right,
  stick_up,
  stick_down,
  right_stick_left,
  right_stick_right,
  right_stick_up,
  right_stick_down,
  left_trigger,
  right_trigger,
  part_count,
};

struct Part {
  int number; // SDL_GameControllerButton or Push
  Control control;
};

constexpr std::array parts = {
    Part{SDL_CONTROLLER_BUTTON_DPAD_LEFT, Control::cross_left},
    Part{SDL_CONTROLLER_BUTTON_DPAD_RIGHT, Control::cross_right},
    Part{SDL_CONTROLLER_BUTTON_DPAD_UP, Control::cross_up},
    Part{SDL_CONTROLLER_BUTTON_DPAD_DOWN, Control::cross_down},
    Part{stick_left, Control::cross_left},
    Part{stick_right, Control::cross_right},
    Part{stick_up, Control::cross_up},
    Part{stick_down, Control::cross_down},
    Part{SDL_CONTROLLER_BUTTON_A, Control::south}, // SDL calls the four by their places
    Part{SDL_CONTROLLER_BUTTON_B, Control::east},
    Part{SDL_CONTROLLER_BUTTON_X, Control::west},
    Part{SDL_CONTROLLER_BUTTON_Y, Control::north},
    Part{SDL_CONTROLLER_BUTTON_BACK, Control::back},
    Part{SDL_CONTROLLER_BUTTON_START, Control::start},
    Part{SDL_CONTROLLER_BUTTON_GUIDE, Control::guide},
    Part{SDL_CONTROLLER_BUTTON_LEFTSTICK, Control::left_stick},
    Part{SDL_CONTROLLER_BUTTON_RIGHTSTICK, Control::right_stick},
    Part{SDL_CONTROLLER_BUTTON_LEFTSHOULDER, Control::left_shoulder},
    Part{SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, Control::right_shoulder},
    Part{left_trigger, Control::left_trigger},
    Part{right_trigger, Control::right_trigger},
    Part{right_stick_left, Control::right_stick_left},
    Part{right_stick_right, Control::right_stick_right},
    Part{right_stick_up, Control::right_stick_up},
    Part{right_stick_down, Control::right_stick_down},
    Part{SDL_CONTROLLER_BUTTON_PADDLE1, Control::paddle_1},
    Part{SDL_CONTROLLER_BUTTON_PADDLE2, Control::paddle_2},
    Part{SDL_CONTROLLER_BUTTON_PADDLE3, Control::paddle_3},
    Part{SDL_CONTROLLER_BUTTON_PADDLE4, Control::paddle_4},
    Part{SDL_CONTROLLER_BUTTON_TOUCHPAD, Control::touchpad},
    Part{SDL_CONTROLLER_BUTTON_MISC1, Control::misc},
};

// A stick, or a trigger, is pushed once it is two thirds of the way out, and no longer when it has
// come back to a third: in between its trembling makes no further push.
constexpr int pushed_from = 22000;
constexpr int let_go_below = 11000;

} // namespace

Controllers::Controllers() {
  static_assert(part_count <= most_parts);
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
      set_part(*controller, event.cbutton.button, event.type == SDL_CONTROLLERBUTTONDOWN, sink);
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
  for (const Part& part : parts)
    set_part(*controller, part.number, false, sink);
  controllers_.erase(controllers_.begin() + (controller - controllers_.data()));
}

Controllers::Controller* Controllers::find(SDL_JoystickID id) {
  const auto found = std::find_if(controllers_.begin(), controllers_.end(),
                                  [id](const Controller& each) { return each.id == id; });
  return found == controllers_.end() ? nullptr : &*found;
}

void Controllers::move_stick(Controller& controller, const SDL_ControllerAxisEvent& event,
                             EventSink& sink) {
  switch (event.axis) {
  case SDL_CONTROLLER_AXIS_LEFTX:
  case SDL_CONTROLLER_AXIS_LEFTY:
    (event.axis == SDL_CONTROLLER_AXIS_LEFTX ? controller.left.x : controller.left.y) = event.value;
    return push_all(controller, stick_left, controller.left, sink);
  case SDL_CONTROLLER_AXIS_RIGHTX:
  case SDL_CONTROLLER_AXIS_RIGHTY:
    (event.axis == SDL_CONTROLLER_AXIS_RIGHTX ? controller.right.x : controller.right.y) =
        event.value;
    return push_all(controller, right_stick_left, controller.right, sink);
  case SDL_CONTROLLER_AXIS_TRIGGERLEFT:
    return push(controller, left_trigger, event.value, 0, sink);
  case SDL_CONTROLLER_AXIS_TRIGGERRIGHT:
    return push(controller, right_trigger, event.value, 0, sink);
  default:
    return;
  }
}

// In the order of the four directions, of which this is the first.
void Controllers::push_all(Controller& controller, int first, const Stick& stick, EventSink& sink) {
  push(controller, first, -stick.x, stick.y, sink);
  push(controller, first + 1, stick.x, stick.y, sink);
  push(controller, first + 2, -stick.y, stick.x, sink);
  push(controller, first + 3, stick.y, stick.x, sink);
}

// The larger way wins, so that a stick that is held down for a fast fall and leans a little does
// not steer.
void Controllers::push(Controller& controller, int part, int value, int other_axis,
                       EventSink& sink) {
  if (value < let_go_below)
    set_part(controller, part, false, sink);
  else if (value >= pushed_from && value > std::abs(other_axis))
    set_part(controller, part, true, sink);
}

void Controllers::set_part(Controller& controller, int number, bool is_down, EventSink& sink) {
  const auto* const part = std::ranges::find(parts, number, &Part::number);
  const auto bit = static_cast<size_t>(number);
  if (part == parts.end() || controller.held.test(bit) == is_down)
    return;
  controller.held.set(bit, is_down);
  const ControlPress press = {first_source + controller.id * static_cast<int>(most_parts) + number,
                              part->control};
  if (is_down)
    sink.control_went_down(press);
  else
    sink.control_went_up(press);
}

} // namespace kavo::host
