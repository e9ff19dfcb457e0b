// The sound commands, and what they ask of whatever makes the sound.
#pragma once

#include <memory>
#include <string_view>

#include "host/command.h"

namespace kavo::host {

enum class Waveform { square, saw, triangle, sine };

struct Envelope {
  double attack;  // seconds
  double decay;   // seconds
  double sustain; // 0 to 1
  double release; // seconds
};

struct Reverb {
  double room_size; // all four from 0 to 1
  double damping;
  double width;
  double wet_level;
};

// Values are checked before they get here. Destroying it ends the sound.
class Sound {
public:
  virtual ~Sound() = default;
  virtual void start() = 0;
  virtual void stop() = 0;
  virtual void set_tempo(double beats_per_minute) = 0;
  virtual void set_voice(int voice, Waveform waveform, const Envelope& envelope) = 0;
  virtual void set_filter(int voice, double cutoff_hertz) = 0;
  virtual void set_gain(int voice, double gain) = 0;
  virtual void set_reverb(const Reverb& reverb) = 0;
  virtual void set_reverb_send(int voice, double level) = 0;
  virtual void play_note(int voice, std::string_view note) = 0;
  virtual void play_pattern(std::string_view pattern, bool is_looping) = 0;
};

std::unique_ptr<Sound> make_sound();

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
