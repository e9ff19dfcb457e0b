// Note names in scientific pitch: A4 is 440 Hz and MIDI note 69, C4 is 60.
#pragma once

#include <cstddef>
#include <string_view>

#include "host/sound/pattern_error.h"

namespace kavo::sound {

inline constexpr int lowest_note = 12;   // c0, 16.35 Hz
inline constexpr int highest_note = 127; // g9, 12,543.85 Hz

// In Hz, for a MIDI note number.
double frequency_of(double note);

// Reads one note (letter a to g, any of # s b, octave) at text[position] and moves `position`
// behind it. Gives its MIDI number; throws PatternError when no note from c0 to g9 stands there.
int read_note(std::string_view text, size_t& position);

// The same for a text that is one note and nothing else.
int note_named(std::string_view name);

} // namespace kavo::sound
