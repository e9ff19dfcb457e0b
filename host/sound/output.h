// Where sound goes: a device, a file in memory, or nothing at all.
#pragma once

#include <stdexcept>

#include "host/sound/audio_source.h"

namespace kavo::sound {

// Why an output cannot be had. Ordinary: the machine may have no sound card.
class OutputError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

class Output {
public:
  Output() = default;
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  Output(Output&&) = delete;
  Output& operator=(Output&&) = delete;
  virtual ~Output() = default;

  // Gives the sample rate that was obtained. Throws OutputError and leaves the output closed.
  virtual int open() = 0;

  // From now on, and until close() has returned, `source` is rendered, on a thread of the
  // output's own. Called once after each open().
  virtual void start(AudioSource& source) = 0;

  // True when an open output plays no more and never will: it was unplugged.
  virtual bool is_lost() const = 0;

  // Waits until whatever was rendered has been handed on. Closing twice is harmless.
  virtual void close() = 0;

  // How long the sound takes to come up when the output starts, and to go down before it closes.
  virtual double fade_in_seconds() const = 0;
  virtual double fade_out_seconds() const = 0;

  // Lets up to a millisecond pass in which the output may ask for more.
  virtual void wait() = 0;
};

} // namespace kavo::sound
