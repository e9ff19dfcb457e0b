// The real game on the real host, on a stage (tests/fakes/stage.h) with a visitor at the keyboard.
// Scores go to tmp/ below the current folder.
#pragma once

#include <cstdint>
#include <functional>

#include "tests/game/players.h"

namespace kavo::soak {

// Plays until the visitor leaves; `each_frame` is called at the beginning of every frame. A failed
// command ends the process as it ends the game's.
void play(kavo::test::Visitor& visitor, const std::function<void()>& each_frame);

// "… frames, … games, … names entered", to standard output.
void tell_what_was_played(const kavo::test::Visitor& visitor);

// A whole number above 0 and nothing else; 0 for anything else.
int64_t whole_number(const char* text);

} // namespace kavo::soak
