// The whole game, filmed: it runs on the real host, but on a stage (tests/fakes/stage.h) instead of
// a desktop, with a player that is a piece of code, and its clock only moves when the game sleeps
// (tests/fakes/fake_clock.h). So an hour of play takes minutes, and the same seed gives the same
// film.
#pragma once

#include <initializer_list>

#include "host/screen/canvas.h"

namespace kavo::film {

// Runs the program from start-up to its end, with these arguments after its name and chance by the
// seed. Scores and scenes' pictures go to tmp/ below the current folder. False when an error ended
// it, which is named on standard error.
bool run_game(std::initializer_list<const char*> arguments, int seed);

// A picture of its own, which stays as it is while the first one is drawn on.
host::Canvas copy_of(const host::Canvas& picture);

} // namespace kavo::film
