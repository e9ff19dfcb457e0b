// A pattern unrolled: every note of its period with exact onset and length.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/sound/fraction.h"

namespace kavo::sound {

inline constexpr int voice_count = 16;
inline constexpr int64_t longest_period = 256; // cycles
inline constexpr size_t most_notes = 8192;

// Times are in cycles (bars) from the start of the period; a note may end after the period does.
struct ScoreNote {
  Fraction onset;
  Fraction length;
  int voice = 0;
  int note = 0; // MIDI number
};

// Notes sorted by onset, then by voice, then by pitch.
struct Score {
  std::vector<ScoreNote> notes;
  int64_t cycles = 1;
};

// Throws PatternError when the text does not parse or unrolls to more than the limits above.
Score read_score(std::string_view pattern);

} // namespace kavo::sound
