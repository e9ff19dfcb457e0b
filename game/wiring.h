// How the game reaches its host, and what is told when a frame has passed. Who records a game or
// plays one back (recording/) puts itself in between; else the calls are the host's own.
#pragma once

#include "runtime/qor.h"

namespace kavo {

struct Wiring {
  double (*number)(int64_t, const char*, const void*, const uint32_t*,
                   int64_t) = qorrt_call_typed_f64;
  QorArray* (*array)(int64_t, const char*, const void*, const uint32_t*,
                     int64_t) = qorrt_call_typed_arr;
  void (*frame_ended)() = [] {}; // one of the program's own loop
};

inline constinit Wiring wiring;

} // namespace kavo
