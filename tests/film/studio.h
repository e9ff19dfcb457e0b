// The whole game, filmed: it runs on the real host, but its pictures go to whoever watches instead
// of a window, its keys come from a player that is a piece of code, and its clock only moves when
// the game sleeps (tests/fakes/fake_clock.h). So an hour of play takes minutes, and the same seed
// gives the same film.
#pragma once

#include <functional>
#include <initializer_list>
#include <optional>

#include "host/screen/presenter.h"

namespace kavo::film {

struct Studio {
  std::function<void(host::EventSink&)> play;     // once a frame: what the player does now
  std::function<void(const host::Canvas&)> watch; // every picture that is shown
  std::optional<int> calm_share;                  // of a calm display to show them on
};

Studio& studio();

// Runs the program from start-up to its end, with these arguments after its name and chance by the
// seed. Scores and scenes' pictures go to tmp/ below the current folder. False when an error ended
// it, which is named on standard error.
bool run_game(std::initializer_list<const char*> arguments, int seed);

// A picture of its own, which stays as it is while the first one is drawn on.
host::Canvas copy_of(const host::Canvas& picture);

} // namespace kavo::film
