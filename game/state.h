// The state of the game: program-wide variables, and what is never assigned beside them.
//
// Units: positions and sizes in pixels, board positions in cells, times in milliseconds, lives and
// timers in drawn frames.
#pragma once

#include <cstdint>

#include "game/routine.h"
#include "game/values.h"

namespace kavo {

inline constexpr int64_t CELL = 36;  // side of one cell
inline constexpr int64_t AREA = 540; // side of the square play area that the board is centred in
inline constexpr int64_t SCRW = 660;
inline constexpr int64_t SCRH = 800;

inline constexpr int64_t KAVO_HIGH = 40; // pull beyond which the board tips
inline constexpr int64_t KAVO_LOW = 18;  // pull below which it counts as balanced

// Slots of the pools of effects.
inline constexpr int64_t NPOP = 16;
inline constexpr int64_t NSTAR = 6;
inline constexpr int64_t NPART = 140;
inline constexpr int64_t NSTREAK = 8;
inline constexpr int64_t NBG = 40; // background stars

// NOLINTBEGIN(cppcoreguidelines-macro-usage): a row of the list becomes a declaration
#define GEOMETRY(type, name, initial) extern type name;
#define VARIABLE(type, name, initial) extern type name;
// NOLINTEND(cppcoreguidelines-macro-usage)
#include "game/state_variables.inc"
#undef GEOMETRY
#undef VARIABLE

// Geometry and rules, the part of the state that must stand before the screen opens.
void set_geometry();

// Everything else, in the order of declaration. The background stars stay at 0 until start-up
// places them.
void set_initial_values();

// Empties every variable that owns memory, so that a leak checker sees only real leaks.
void release_state();

// The screen state.
bool state_is(const char* state);
void enter_state(const char* state);

} // namespace kavo
