// The loudness of one note: attack in a straight line, decay and release along an exponential
// that arrives exactly, at the stated time:
//   v(u) = target + (start - target) * (exp(-4 u) - exp(-4)) / (1 - exp(-4)),  u = t / T.
#pragma once

#include <cstdint>

namespace kavo::sound {

// As a voice is set up: seconds, and a level from 0 to 1.
struct EnvelopeTimes {
  double attack = 0.01;
  double decay = 0.1;
  double sustain = 0.7;
  double release = 0.1;
};

// The same in frames. Attack and decay last at least 0.5 ms and the release 2 ms: shorter ones
// would be clicks.
struct EnvelopeShape {
  EnvelopeShape(const EnvelopeTimes& times, int rate);

  int64_t attack;
  int64_t decay;
  int64_t release;
  double sustain;
};

class Envelope {
public:
  // Begins at 0 and is held for `gate` frames, then released.
  void start(const EnvelopeShape& shape, int64_t gate);

  // Lets go of the note, if it is still held; what is being released already goes on.
  void release();

  // Sinks to nothing within `frames`, whatever it was doing.
  void fade(int64_t frames);

  // Writes the next `frames` levels.
  void process(float* levels, int64_t frames);

  // False when nothing more will sound: the release has ended, or the decay to a sustain of 0.
  bool is_active() const { return stage_ != Stage::idle; }
  double level() const;

private:
  enum class Stage { idle, attack, decay, sustain, release };

  void enter(Stage stage, double target, int64_t length);
  void next_stage();
  void write(float* levels, int64_t frames);

  Stage stage_ = Stage::idle;
  int64_t gate_ = 0; // frames that the note is still held
  int64_t decay_ = 0;
  int64_t release_ = 0;
  double sustain_ = 0.0;

  // The stage that is running.
  int64_t position_ = 0;
  int64_t length_ = 0;
  double start_ = 0.0;
  double target_ = 0.0;
  double fall_ = 0.0;   // exp(-4 position / length)
  double factor_ = 0.0; // exp(-4 / length)
};

} // namespace kavo::sound
