// What a thread takes of the free store: counted, or refused. A program that links this gets the
// standard's replaceable operators new and delete from here.
#pragma once

#include <cstdint>

namespace kavo::test {

// While it lives, what its thread takes and gives back is counted.
class MemoryCount {
public:
  MemoryCount();
  ~MemoryCount();
  MemoryCount(const MemoryCount&) = delete;
  MemoryCount& operator=(const MemoryCount&) = delete;

  static int64_t calls();
};

// While it lives, its thread gets so many blocks and then none.
class ScarceMemory {
public:
  explicit ScarceMemory(int64_t blocks);
  ~ScarceMemory();
  ScarceMemory(const ScarceMemory&) = delete;
  ScarceMemory& operator=(const ScarceMemory&) = delete;

  // Whether a block was asked for in vain.
  static bool has_run_out();
};

} // namespace kavo::test
