// What a low note gets on top of its own partials when it is struck by hand: a small loudspeaker
// gives next to nothing below 200 Hz, and the ear makes up the missing fundamental from the
// partials above (the residue: J. F. Schouten, 1940). They are the partials that an overdriven note
// has, but as a table of their own, which reads without aliases, keeps pitch, envelope and length
// of its note, and does not mix one note with the next.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "host/sound/wavetable.h"

namespace kavo::sound {

struct Overtones {
  Wavetable table;
  float level = 0.0f; // 0: the note stays as it is
};

class Drive {
public:
  // Made at the first call, like the wave tables, and kept.
  static const Drive& shared();

  Drive();

  // For a MIDI note; none from c5 (523 Hz) on.
  Overtones overtones(int note) const;

  size_t bytes() const;

private:
  // Each table serves four semitones, from c1 on.
  static constexpr int lowest_note = 24;
  static constexpr int highest_full_note = 48; // c3: fades out from here
  static constexpr int first_pure_note = 72;   // c5
  static constexpr int notes_a_table = 4;
  static constexpr size_t table_count = (first_pure_note - lowest_note) / notes_a_table;

  std::array<std::vector<float>, table_count> tables_;
};

} // namespace kavo::sound
