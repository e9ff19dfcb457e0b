// What the game's thread tells the engine: small plain values that travel through a ring.
#pragma once

#include <cstdint>

#include "host/sound/levels.h"
#include "host/sound/reverb.h"
#include "host/sound/score.h"
#include "host/sound/voice.h"

namespace kavo::sound {

struct Command {
  enum class Kind {
    tempo,   // `whole`: thousandths of a beat per minute
    patch,   // `voice`, `patch`
    cutoff,  // `voice`, `number` in Hz
    gain,    // `voice`, `number`
    send,    // `voice`, `number`
    reverb,  // `reverb`
    score,   // `score`, from its beginning; `whole` is 1 when it loops
    pluck,   // `voice`, `whole`: a MIDI note, `number`: when it was asked for, in seconds
    levels,  // `levels`
    curtain, // the level of all that is heard goes to `number`, within `whole` frames
  };

  Kind kind = Kind::tempo;
  int voice = 0;
  int64_t whole = 0;
  double number = 0.0;
  Patch patch = {};
  ReverbSettings reverb = {};
  Levels levels = {};
  const Score* score = nullptr;
};

} // namespace kavo::sound
