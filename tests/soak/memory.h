// What this process holds in memory.
#pragma once

#include <cstdint>

namespace kavo::soak {

// Resident memory in bytes; 0 when the system does not tell.
int64_t resident_bytes();

} // namespace kavo::soak
