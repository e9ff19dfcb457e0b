// Whatever can be asked for sound by the thread of an audio device.
#pragma once

#include <cstdint>

namespace kavo::sound {

class AudioSource {
public:
  AudioSource() = default;
  AudioSource(const AudioSource&) = delete;
  AudioSource& operator=(const AudioSource&) = delete;
  AudioSource(AudioSource&&) = delete;
  AudioSource& operator=(AudioSource&&) = delete;
  virtual ~AudioSource() = default;

  // How many frames later than asked for everything comes out.
  virtual int64_t latency() const { return 0; }

  // Writes `frames` frames of left and right samples, from -1 to 1. Takes no lock, allocates
  // nothing and waits for nobody.
  virtual void render(float* interleaved, int64_t frames) noexcept = 0;
};

} // namespace kavo::sound
