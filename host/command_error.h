// How a command refuses what it was given, in one form for all of them.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace kavo::host {

// Thrown by a command that cannot do what was asked; the bridge puts "NAME: " in front.
class CommandError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

// Throws "argument N (meaning) must be <expectation>, got <value>".
[[noreturn]] void reject_argument(int index, std::string_view meaning, std::string_view expectation,
                                  std::string_view value);

// For messages: the shortest text that reads back as the number; a text in quotes, control
// characters escaped, cut when it is long.
std::string shown(double number);
std::string shown(std::string_view text);

} // namespace kavo::host
