#include "host/catalogue.h"

#include <algorithm>
#include <string>

#include "host/data_commands.h"
#include "host/screen_commands.h"
#include "host/sound_commands.h"

namespace kavo::host {

namespace {

using Handler = double (*)(Host&, const Arguments&);
using ArrayHandler = QorArray* (*)(Host&, const Arguments&);

template<typename... Kinds>
constexpr Command number_command(std::string_view name, Handler run, Kinds... kinds) {
  return {name, sizeof...(kinds), {kinds...}, run, nullptr};
}

template<typename... Kinds>
constexpr Command array_command(std::string_view name, ArrayHandler run, Kinds... kinds) {
  return {name, sizeof...(kinds), {kinds...}, nullptr, run};
}

constexpr Kind number = Kind::number;
constexpr Kind text = Kind::text;
constexpr Kind array = Kind::array;

constexpr Command commands[] = {
    number_command("SCREEN", open_screen, number, number, text, number),
    number_command("CLS", clear_picture),
    number_command("DRAWCOLOR", set_drawing_colour, number, number, number),
    number_command("RECT", draw_rectangle, number, number, number, number, number),
    number_command("LINE", draw_line, number, number, number, number),
    number_command("TEXT", draw_text, number, number, text),
    number_command("SCREENFLIP", show_picture),
    number_command("GFX.KEYSTATE", key_state, text),
    number_command("GFX.SAVE_SCREENSHOT", save_screenshot, text),
    number_command("GFX.CLOSE", close_screen),
    number_command("SOUND.INIT", start_sound),
    number_command("SOUND.BPM", set_tempo, number),
    number_command("SOUND.VOICE", set_voice, number, text, number, number, number, number),
    number_command("SOUND.FILTER", set_filter, number, number),
    number_command("SOUND.GAIN", set_gain, number, number),
    number_command("SOUND.REVERB", set_reverb, number, number, number, number),
    number_command("SOUND.REVERBSEND", set_reverb_send, number, number),
    number_command("SOUND.PLAY", play_note, number, text),
    number_command("SOUND.NOTE", play_pattern, text, number),
    number_command("SOUND.SHUTDOWN", stop_sound),
    number_command("RND", random_number, number),
    number_command("BINWRITER", write_binary_file, text, text),
    array_command("TRANSPOSE", transpose_matrix, array),
    array_command("RESHAPE", reshape_values, array, array),
    array_command("MVINS", insert_row, array, number, number, array),
    array_command("SPLIT", split_text, text, text),
    array_command("DIR$", list_directory, text),
};

// The look-up is a perfect hash, found while compiling: with the right seed no two names share a
// slot, so that one comparison settles it.
constexpr uint32_t slot_count = 128;
constexpr uint8_t no_command = 0xFF;
static_assert(std::size(commands) < no_command);

struct NameHash {
  uint32_t value;
  constexpr explicit NameHash(uint32_t seed) : value(seed) {}
  constexpr void add(char character) {
    value = (value ^ static_cast<unsigned char>(character)) * 16777619U;
  }
  constexpr uint32_t slot() const { return (value ^ (value >> 15U)) % slot_count; }
};

constexpr uint32_t slot_of(std::string_view name, uint32_t seed) {
  NameHash hash(seed);
  for (const char character : name)
    hash.add(character);
  return hash.slot();
}

constexpr bool is_free_of_collisions(uint32_t seed) {
  bool is_taken[slot_count] = {};
  for (const Command& command : commands) {
    bool& slot = is_taken[slot_of(command.name, seed)];
    if (slot)
      return false;
    slot = true;
  }
  return true;
}

constexpr uint32_t find_seed() {
  uint32_t seed = 1;
  while (!is_free_of_collisions(seed))
    ++seed;
  return seed;
}

constexpr uint32_t seed = find_seed();

struct NameSlots {
  uint8_t command[slot_count];
};

constexpr NameSlots fill_slots() {
  NameSlots slots = {};
  std::fill(std::begin(slots.command), std::end(slots.command), no_command);
  for (size_t i = 0; i < std::size(commands); ++i)
    slots.command[slot_of(commands[i].name, seed)] = static_cast<uint8_t>(i);
  return slots;
}

constexpr NameSlots name_slots = fill_slots();

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

std::span<const Command> all_commands() {
  return commands;
}

const Command* find_command(const char* name) {
  NameHash hash(seed);
  size_t length = 0;
  for (; name[length] != '\0'; ++length)
    hash.add(name[length]);
  const uint8_t index = name_slots.command[hash.slot()];
  if (index == no_command || commands[index].name != std::string_view(name, length))
    return nullptr;
  return &commands[index];
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
