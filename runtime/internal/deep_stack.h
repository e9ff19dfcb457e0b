// Work that recurses as deeply as its input is long, on a stack of matching size.
#pragma once

#include <cstddef>
#include <functional>

namespace qor {

// Runs `work` with at least `bytes` of stack: here, or in a thread of its own that is waited for.
// False, and nothing run, when there is no such stack to be had. `work` does not throw.
bool run_with_stack(size_t bytes, const std::function<void()>& work);

} // namespace qor
