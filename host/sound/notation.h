// The pattern notation as a tree.
//
//   pattern  = layers ;
//   layers   = sequence { "," sequence } ;
//   sequence = { step } ;
//   step     = term { modifier } ;
//   term     = note | "~" | "[" layers "]" | "<" layers ">" ;
//   modifier = "*" int | "/" int | "@" int | "!" [int] | "(" int "," int [ "," int ] ")" ;
//
// Blanks may stand between any two of these. Modifiers take effect from left to right, each on
// all that stands before it in its step; @ and ! concern the step as a whole and may stand once.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace kavo::sound {

inline constexpr int deepest_nesting = 32;
inline constexpr int largest_factor = 64;

struct PatternNode {
  enum class Kind {
    note,        // `note`
    rest,        // nothing
    sequence,    // children one after the other, in proportion to their weights
    alternation, // one child per cycle, in turn
    layers,      // children at the same time
    faster,      // the only child, `factor` times as fast
    slower,      // the only child, `factor` times as slow
    spread       // the only child on `onsets` of `factor` steps, turned by `rotation`
  };

  Kind kind = Kind::rest;
  size_t column = 1; // where it begins in the text
  int note = 0;      // MIDI number
  int factor = 1;
  int onsets = 1;
  int rotation = 0;
  int weight = 1; // its share of the sequence it stands in
  int copies = 1; // how many times it stands there in a row
  std::vector<PatternNode> children;
};

// Throws PatternError; what it accepts obeys the two limits above. An empty text is silence.
PatternNode parse_pattern(std::string_view text);

} // namespace kavo::sound
