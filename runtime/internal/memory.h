// malloc for results that callers free themselves. Running out of memory ends the process with a
// message: nothing above this library could carry on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace qor {

[[noreturn]] void end_for_want_of_memory();

inline void* allocate(size_t bytes) {
  void* block = std::malloc(bytes == 0 ? 1 : bytes);
  if (block == nullptr)
    end_for_want_of_memory();
  return block;
}

// A length that is not negative, as a size; one that this machine's memory could never hold ends
// the process.
inline size_t size_for(int64_t length) {
  if (static_cast<uint64_t>(length) >= SIZE_MAX)
    end_for_want_of_memory();
  return static_cast<size_t>(length);
}

void* allocate_many(size_t count, size_t size);
void* allocate_zeroed(size_t count, size_t size);

// Grows or shrinks a block of these; the old one is gone.
void* reallocate(void* block, size_t bytes);

} // namespace qor
