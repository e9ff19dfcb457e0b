// Work that recurses as deeply as its input is long, on a stack of matching size.
#pragma once

#include <cstddef>

namespace qor {

// Runs `work` with at least `bytes` of stack: here, or in a thread of its own that is waited for.
// False, and nothing run, when there is no such stack to be had. `work` does not throw.
bool run_with_stack(size_t bytes, void (*work)(void*), void* argument);

template<typename Work>
bool run_with_stack(size_t bytes, Work work) {
  return run_with_stack(
      bytes, [](void* argument) { (*static_cast<Work*>(argument))(); }, &work);
}

} // namespace qor
