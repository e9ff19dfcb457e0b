// Keys that were pressed in another window and are still down when this one gets the keyboard. X
// repeats them into this window, and SDL takes the first repeat for a press; but whoever closed a
// dialogue with Escape did not press Escape here.
#pragma once

#include <SDL_events.h>

#include <bitset>

namespace kavo::host {

class ForeignKeys {
public:
  // From now on SDL also passes on the events of X as they came, each before its own.
  static void listen();

  void note(const SDL_SysWMmsg& message);

  // Whether the key that went down last, or repeated, is such a key.
  bool is_last_press_foreign() const { return held_[last_pressed_]; }

private:
  static constexpr unsigned key_codes = 256;

  std::bitset<key_codes> held_; // by X's key codes
  unsigned last_pressed_ = 0;   // no key has this code
  bool has_just_come_ = false;  // X tells next which keys are down
};

} // namespace kavo::host
