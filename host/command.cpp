#include "host/command.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "runtime/qorrt.h"

namespace kavo::host {

std::string_view Arguments::text(int index) const {
  const char* bytes = slots_[index].str;
  if (bytes == nullptr)
    return {};
  const int64_t registered = qorrt_strlen(bytes);
  return {bytes, registered >= 0 ? static_cast<size_t>(registered) : std::strlen(bytes)};
}

int64_t Arguments::whole_number(int index, std::string_view meaning, int64_t least,
                                int64_t most) const {
  const double value = std::trunc(number(index));
  if (value >= static_cast<double>(least) && value <= static_cast<double>(most))
    return static_cast<int64_t>(value);
  reject_argument(index, meaning, std::to_string(least) + " to " + std::to_string(most),
                  shown(number(index)));
}

double Arguments::number_within(int index, std::string_view meaning, double least,
                                double most) const {
  const double value = number(index);
  if (value >= least && value <= most)
    return value;
  reject_argument(index, meaning, shown(least) + " to " + shown(most), shown(value));
}

void reject_argument(int index, std::string_view meaning, std::string_view expectation,
                     std::string_view value) {
  std::string message = "argument " + std::to_string(index + 1);
  message.append(" (").append(meaning).append(") must be ").append(expectation);
  message.append(", got ").append(value);
  throw CommandError(message);
}

std::string shown(double number) {
  char digits[32];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
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
