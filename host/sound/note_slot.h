// One sounding note of a voice: an oscillator, and perhaps one for overtones, under an envelope.
#pragma once

#include <cstdint>

#include "host/sound/envelope.h"
#include "host/sound/oscillator.h"

namespace kavo::sound {

struct NoteSlot {
  Oscillator oscillator;
  Oscillator overtones;
  float overtone_level = 0.0f; // 0: none
  Envelope envelope;
  uint64_t struck = 0;     // counts up within a voice: the smallest is the oldest
  bool is_leaving = false; // being faded to make room
};

} // namespace kavo::sound
