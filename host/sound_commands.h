// The sound commands: each hands its arguments to the player, which checks them.
#pragma once

#include "host/command.h"

namespace kavo::host {

// SOUND.INIT
double start_sound(Host& host, const Arguments& arguments);

// SOUND.BPM beats per minute
double set_tempo(Host& host, const Arguments& arguments);

// SOUND.VOICE voice, waveform, attack, decay, sustain, release
double set_voice(Host& host, const Arguments& arguments);

// SOUND.FILTER voice, cutoff in hertz
double set_filter(Host& host, const Arguments& arguments);

// SOUND.GAIN voice, gain
double set_gain(Host& host, const Arguments& arguments);

// SOUND.REVERB room size, damping, width, wet level
double set_reverb(Host& host, const Arguments& arguments);

// SOUND.REVERBSEND voice, level
double set_reverb_send(Host& host, const Arguments& arguments);

// SOUND.PLAY voice, note
double play_note(Host& host, const Arguments& arguments);

// SOUND.NOTE pattern, loop flag
double play_pattern(Host& host, const Arguments& arguments);

// SOUND.SHUTDOWN
double stop_sound(Host& host, const Arguments& arguments);

} // namespace kavo::host
