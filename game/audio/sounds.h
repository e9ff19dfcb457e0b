// The synthesizer's set-up, the music and the four effects. Voices 0 and 1 carry the music, 3 to 5
// the effects.
#pragma once

#include "game/routine.h"

namespace kavo {

// Configures the voices and starts the music; once, at start-up.
Out<> set_up_sound();

// Starts the looping score; nothing stops it before the program's end.
Out<> STARTMUSIC();

// Turns the gains of the music's voices to what MUSICON asks for.
Out<> apply_music_switch();

// Flips MUSICON and applies it.
Out<> toggle_music();

// One note each, none while SFXON is 0.
Out<> SFXKAVO();  // the board tips, a bomb goes off
Out<> SFXCLEAR(); // rows go, a star is collected
Out<> SFXLOCK();  // a piece locks
Out<> SFXOVER();  // the game is lost

} // namespace kavo
