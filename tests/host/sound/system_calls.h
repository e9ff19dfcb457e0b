// A process that may make no system call.
#pragma once

namespace kavo::sound {

// How the process ends when it makes one.
constexpr int system_call_status = 70;

// From now on this process may only leave, and return from signals. There is no way back.
void forbid_system_calls();

// Ends the process by the one call for that. Not declared as one that does not return: before such
// a function the address sanitizer makes calls of its own.
void leave(int status);

} // namespace kavo::sound
