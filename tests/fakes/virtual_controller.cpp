#include "tests/fakes/virtual_controller.h"

#include <cmath>
#include <stdexcept>

namespace kavo::test {

VirtualController::VirtualController() {
  SDL_VirtualJoystickDesc description = {};
  description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
  description.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
  description.naxes = SDL_CONTROLLER_AXIS_MAX;
  description.nbuttons = SDL_CONTROLLER_BUTTON_MAX;
  description.name = "A controller of the tests";
  const int index = SDL_JoystickAttachVirtualEx(&description);
  device_ = index < 0 ? nullptr : SDL_JoystickOpen(index);
  if (device_ == nullptr)
    throw std::runtime_error(SDL_GetError());
}

VirtualController::~VirtualController() {
  const int device_index = index();
  SDL_JoystickClose(device_);
  SDL_JoystickDetachVirtual(device_index);
}

void VirtualController::press(SDL_GameControllerButton button) {
  SDL_JoystickSetVirtualButton(device_, button, SDL_PRESSED);
}

void VirtualController::release(SDL_GameControllerButton button) {
  SDL_JoystickSetVirtualButton(device_, button, SDL_RELEASED);
}

void VirtualController::push_stick(double x, double y) {
  move(SDL_CONTROLLER_AXIS_LEFTX, x);
  move(SDL_CONTROLLER_AXIS_LEFTY, y);
}

void VirtualController::move(SDL_GameControllerAxis axis, double place) {
  constexpr double full = SDL_JOYSTICK_AXIS_MAX;
  SDL_JoystickSetVirtualAxis(device_, axis, static_cast<int16_t>(std::lround(place * full)));
}

int VirtualController::index() const {
  const SDL_JoystickID id = SDL_JoystickInstanceID(device_);
  for (int index = 0; index < SDL_NumJoysticks(); ++index)
    if (SDL_JoystickGetDeviceInstanceID(index) == id)
      return index;
  return -1;
}

} // namespace kavo::test
