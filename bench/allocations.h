// Counts every allocation of the process: whoever links this has its malloc and free counted.
#pragma once

#include <cstdint>

namespace kavo::bench {

struct Allocations {
  int64_t made;  // since the process began
  int64_t alive; // made and not yet freed
};

Allocations allocations();

} // namespace kavo::bench
