// What every command shares: how it is described and how it reads its arguments. Arguments are
// numbered from 1 in messages, from 0 in code.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "host/command_error.h"
#include "runtime/value.h"

namespace kavo::sound {
class Player;
} // namespace kavo::sound

namespace kavo::host {

class Host;

enum class Kind : uint8_t { number, text, array };

// The arguments of one call, already checked against the command's kinds.
class Arguments {
public:
  Arguments(const qor_slot* slots, const uint32_t* tags) : slots_(slots), tags_(tags) {}

  double number(int index) const {
    return tags_[index] == QOR_TAG_INT64 ? static_cast<double>(slots_[index].i64)
                                         : slots_[index].f64;
  }

  // The bytes of a text: as many as were registered for it, else those before the first NUL. A
  // null pointer is an empty text.
  std::string_view text(int index) const;

  // May be null, which is an empty array.
  const QorArray* array(int index) const { return slots_[index].arr; }

  // A number that must lie within the bounds, truncated toward zero (whole_number) or as it is.
  // `meaning` tells the reader of the error what the argument is.
  int64_t whole_number(int index, std::string_view meaning, int64_t least, int64_t most) const;
  double number_within(int index, std::string_view meaning, double least, double most) const;

private:
  const qor_slot* slots_;
  const uint32_t* tags_;
};

struct Command {
  static constexpr int most_arguments = 6;

  std::string_view name;
  int argument_count;
  std::array<Kind, most_arguments> kinds;
  // One of the three is set. The first two say which call the command goes through; those that the
  // sound's player carries out go through the first one and give 0.
  double (*run_number)(Host&, const Arguments&);
  QorArray* (*run_array)(Host&, const Arguments&);
  void (*run_sound)(sound::Player&, const Arguments&);
};

// Rows of a table of commands.
template<typename... Kinds>
constexpr Command number_command(std::string_view name, double (*run)(Host&, const Arguments&),
                                 Kinds... kinds) {
  return {name, sizeof...(kinds), {kinds...}, run, nullptr, nullptr};
}
template<typename... Kinds>
constexpr Command array_command(std::string_view name, QorArray* (*run)(Host&, const Arguments&),
                                Kinds... kinds) {
  return {name, sizeof...(kinds), {kinds...}, nullptr, run, nullptr};
}
template<typename... Kinds>
constexpr Command sound_command(std::string_view name,
                                void (*run)(sound::Player&, const Arguments&), Kinds... kinds) {
  return {name, sizeof...(kinds), {kinds...}, nullptr, nullptr, run};
}

// Throws CommandError when count or kinds are not the command's own. An integer and a double are
// both numbers.
void check_arguments(const Command& command, const void* slots, const uint32_t* tags,
                     int64_t count);

} // namespace kavo::host
