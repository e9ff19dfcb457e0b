// A sound card without time of its own: it takes samples when it is told to, so that the real
// synthesizer plays along with a scripted clock.
#pragma once

#include <cstdint>

#include "host/sound/output.h"

namespace kavo::soak {

constexpr int sound_rate = 48000;

struct SoundTaken {
  int64_t frames = 0;
  float peak = 0; // of all samples, 0..1
};

class SoundCard final : public sound::Output {
public:
  // What it takes is counted in `taken`, which outlives it.
  explicit SoundCard(SoundTaken& taken) : taken_(taken) {}

  // Plays on until as much sound was taken as fits into `milliseconds` since the start. While the
  // card is closed time passes in silence.
  void play_until(double milliseconds);

  int open() override { return sound_rate; }
  void start(sound::AudioSource& source) override { source_ = &source; }
  bool is_lost() const override { return false; }
  void close() override { source_ = nullptr; }
  double fade_in_seconds() const override { return 0.1; }
  double fade_out_seconds() const override { return 0.008; }
  void wait() override;

private:
  void take_block();

  sound::AudioSource* source_ = nullptr;
  int64_t frames_due_ = 0; // since the start, taken or passed in silence
  SoundTaken& taken_;
};

} // namespace kavo::soak
