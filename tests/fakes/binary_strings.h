// The least that is a host: it keeps the lengths of byte strings, reads its own values, and carries
// out no command.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kavo::fakes {

// How many byte strings are registered now; 0 once their owners have freed them all.
size_t registered_strings();

// As long as one lives, it is as if a byte string of five bytes had ended with free() at every
// address: each has that length until it is forgotten or another is registered.
class StaleLengths {
public:
  StaleLengths();
  ~StaleLengths();
  StaleLengths(const StaleLengths&) = delete;
  StaleLengths& operator=(const StaleLengths&) = delete;
};

// A new host value with a number and a text, valid until the process ends.
int64_t make_host_value(double number, std::string text);

} // namespace kavo::fakes
