// A game controller of SDL's own making, plugged in while it lives. SDL reads it when it pumps
// events, so that what is pressed and released between two pumps was never pressed.
#pragma once

#include <SDL.h>

namespace kavo::test {

class VirtualController {
public:
  // Needs SDL's controller part. Throws std::runtime_error when SDL refuses.
  VirtualController();
  ~VirtualController();
  VirtualController(const VirtualController&) = delete;
  VirtualController& operator=(const VirtualController&) = delete;

  void press(SDL_GameControllerButton button);
  void release(SDL_GameControllerButton button);
  // From -1 to 1; a trigger rests at -1.
  void move(SDL_GameControllerAxis axis, double place);
  // The left stick, each axis from -1 (left, up) to 1.
  void push_stick(double x, double y);

private:
  int index() const; // which changes when other controllers go

  SDL_Joystick* device_;
};

} // namespace kavo::test
