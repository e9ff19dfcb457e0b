// Counts what an audio callback must not do: take or give back memory, lock, read or write. The
// linker puts the counting in front of the calls that this binary and its static libraries make
// (see the --wrap options in CMakeLists.txt).
#pragma once

namespace kavo::sound {

// While it lives, such calls of its thread are counted.
class ForbiddenCalls {
public:
  ForbiddenCalls();
  ~ForbiddenCalls();
  ForbiddenCalls(const ForbiddenCalls&) = delete;
  ForbiddenCalls& operator=(const ForbiddenCalls&) = delete;
  ForbiddenCalls(ForbiddenCalls&&) = delete;
  ForbiddenCalls& operator=(ForbiddenCalls&&) = delete;

  // Of the thread that asks, since the last of these objects was made.
  static int memory();
  static int locks();
  static int files();
};

} // namespace kavo::sound
