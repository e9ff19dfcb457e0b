// The lengths of strings that may hold NUL bytes, by their address. Shared by all hosts of the
// process: strings outlive a host.
#pragma once

#include <cstdint>

namespace kavo::host {

// A negative length forgets the string; a null pointer does nothing.
void register_binary_string(const char* string, int64_t length);

// Negative when the string is not registered.
int64_t binary_string_length(const char* string);

} // namespace kavo::host
