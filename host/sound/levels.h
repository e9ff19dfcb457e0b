// How loud the listener wants it: factors of amplitude from 0, which is silence, to 1.
#pragma once

namespace kavo::sound {

struct Levels {
  double music = 1.0;   // what patterns play
  double effects = 1.0; // what is struck by hand
  double master = 1.0;  // both together
};

} // namespace kavo::sound
