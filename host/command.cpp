#include "host/command.h"

#include <cmath>
#include <cstring>
#include <iterator>
#include <string>

#include "host/binary_strings.h"

namespace kavo::host {

namespace {

constexpr bool is_kind(uint32_t tag, Kind kind) {
  switch (kind) {
  case Kind::number:
    return tag == QOR_TAG_INT64 || tag == QOR_TAG_FLOAT64;
  case Kind::text:
    return tag == QOR_TAG_STRING;
  case Kind::array:
    return tag == QOR_TAG_ARRAY;
  }
  return false;
}

std::string_view kind_name(Kind kind) {
  constexpr std::string_view names[] = {"a number", "a text", "an array"};
  return names[static_cast<size_t>(kind)];
}

std::string_view tag_name(uint32_t tag) {
  constexpr std::string_view names[] = {"INT64",  "FLOAT64", "STRING", "ARRAY",
                                        "OBJECT", "FUNCREF", "OBJECT"};
  return tag < std::size(names) ? names[tag] : "UNKNOWN";
}

[[noreturn]] void reject_count(const Command& command, int64_t count) {
  const std::string expected = std::to_string(command.argument_count);
  throw CommandError("expects " + expected +
                     (command.argument_count == 1 ? " argument" : " arguments") + ", got " +
                     std::to_string(count));
}

[[noreturn]] void reject_kind(int index, Kind kind, uint32_t tag) {
  std::string message = "argument " + std::to_string(index + 1) + " must be ";
  message.append(kind_name(kind)).append(", got ").append(tag_name(tag));
  throw CommandError(message);
}

} // namespace

std::string_view Arguments::text(int index) const {
  const char* bytes = slots_[index].str;
  if (bytes == nullptr)
    return {};
  const int64_t registered = binary_string_length(bytes);
  constexpr int64_t longest = int64_t{1} << 31U;
  if (registered > longest)
    reject_argument(index, "text", "at most " + std::to_string(longest) + " bytes long",
                    std::to_string(registered));
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

void check_arguments(const Command& command, const void* slots, const uint32_t* tags,
                     int64_t count) {
  if (count != command.argument_count)
    reject_count(command, count);
  if (count > 0 && (slots == nullptr || tags == nullptr))
    throw CommandError("arguments or their tags are missing");
  for (int i = 0; i < command.argument_count; ++i)
    if (!is_kind(tags[i], command.kinds[i]))
      reject_kind(i, command.kinds[i], tags[i]);
}

} // namespace kavo::host
