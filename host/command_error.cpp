#include "host/command_error.h"

#include <charconv>
#include <iterator>

namespace kavo::host {

void reject_argument(int index, std::string_view meaning, std::string_view expectation,
                     std::string_view value) {
  std::string message = "argument " + std::to_string(index + 1);
  message.append(" (").append(meaning).append(") must be ").append(expectation);
  message.append(", got ").append(value);
  throw CommandError(message);
}

std::string shown(double number) {
  char digits[32];
  auto* const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
  return {std::begin(digits), end};
}

std::string shown(std::string_view text) {
  constexpr size_t longest = 80;
  constexpr char hexadecimal[] = "0123456789ABCDEF";
  std::string quoted = "\"";
  for (const char character : text.substr(0, longest)) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= ' ' && byte != 0x7F)
      quoted += character;
    else
      quoted.append("\\x").append({hexadecimal[byte / 16U], hexadecimal[byte % 16U]});
  }
  return quoted + (text.size() > longest ? "…\"" : "\"");
}

} // namespace kavo::host
