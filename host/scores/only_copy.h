// One program at a time on a file of its own.
#pragma once

#include <sys/types.h>

#include <filesystem>

#include "host/descriptor.h"

namespace kavo::host {

// Locks a hidden file beside the one that is to be the program's alone. The kernel lets go of it
// when the program ends, however that comes about; who leaves in order takes the file along.
class OnlyCopy {
public:
  OnlyCopy() = default;
  ~OnlyCopy() { leave(); }
  OnlyCopy(const OnlyCopy&) = delete;
  OnlyCopy& operator=(const OnlyCopy&) = delete;

  // False when another program holds the lock. Where none can be had, as on some network folders
  // and where nothing can be written, nobody is kept out.
  bool enter(const std::filesystem::path& file);
  void leave();

private:
  std::filesystem::path path_;
  Descriptor lock_{-1};
  pid_t owner_ = 0; // a process that was forked off must not let go
};

} // namespace kavo::host
