// A piece of sound as text: SOUND commands as the game sends them, one to a line, and how long
// to let them sound.
//
//   # a comment
//   SOUND.VOICE 0 SQUARE 0.01 0.15 0.3 0.25
//   SOUND.NOTE "c4 e4 g4 [c5 b4]" 1
//   WAIT 8
//   SOUND.GAIN 0 0
//   WAIT 0.5
//
// Texts with blanks stand in double quotes; WAIT takes seconds.
#pragma once

#include <istream>
#include <stdexcept>
#include <string>

#include "host/sound/memory_output.h"
#include "host/sound/player.h"

namespace kavo::sound {

class ScriptError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

// Sends one line to `player`; WAIT renders into `output`, which is the player's own. Throws
// ScriptError, "SOUND.GAIN: argument 1 …", when the line is not of the form above or a value is
// wrong.
void run_line(const std::string& line, Player& player, MemoryOutput& output);

// All lines, with "line <n>: " in front of the text of any error.
void run_script(std::istream& lines, Player& player, MemoryOutput& output);

} // namespace kavo::sound
