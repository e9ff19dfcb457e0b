// Where a recording goes while its game is played.
#pragma once

#include <string>

namespace kavo::recording {

// Thrown where a recording cannot begin or go on. Without virtual functions: where it is caught no
// descriptor may be left, which the sanitizers need to look at an object that has some.
struct NotKept {
  std::string reason;
};

// What cannot go on throws NotKept.
class Sink {
public:
  virtual ~Sink() = default;
  virtual void append(const std::string& bytes) = 0;
  // The recording is over, the game or not.
  virtual void finish() = 0;
};

} // namespace kavo::recording
