// A sound card without time of its own: it stands in for SDL's audio device and takes samples when
// it is told to, so that the real synthesizer plays along with a scripted clock.
#pragma once

#include <cstdint>

namespace kavo::soak {

// Plays on until as much sound was taken as fits into `milliseconds` since the start. While no
// device is open, or it is paused, time passes in silence.
void play_sound_until(double milliseconds);

struct SoundTaken {
  int64_t frames;
  float peak; // of all samples, 0..1
};
SoundTaken sound_taken();

constexpr int sound_rate = 48000;

} // namespace kavo::soak
