// Where a recording goes while its game is played.
#pragma once

#include <string>

namespace kavo::recording {

// What cannot go on throws std::runtime_error with the reason.
class Sink {
public:
  virtual ~Sink() = default;
  virtual void append(const std::string& bytes) = 0;
  // The recording is over, the game or not.
  virtual void finish() = 0;
};

} // namespace kavo::recording
