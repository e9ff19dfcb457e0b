#include "host/catalogue.h"

#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/data_commands.h"
#include "host/screen_commands.h"
#include "host/sound/sound_commands.h"

namespace kavo::host {

namespace {

constexpr Kind number = Kind::number;
constexpr Kind text = Kind::text;
constexpr Kind array = Kind::array;

constexpr Command own_commands[] = {
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
    number_command("RND", random_number, number),
    number_command("BINWRITER", write_binary_file, text, text),
    array_command("TRANSPOSE", transpose_matrix, array),
    array_command("RESHAPE", reshape_values, array, array),
    array_command("MVINS", insert_row, array, number, number, array),
    array_command("SPLIT", split_text, text, text),
    array_command("DIR$", list_directory, text),
};

struct Catalogue {
  std::vector<Command> commands{std::begin(own_commands), std::end(own_commands)};
  std::unordered_map<std::string_view, const Command*> by_name;

  Catalogue() {
    const auto sounds = sound::sound_commands();
    commands.insert(commands.end(), sounds.begin(), sounds.end());
    for (const Command& command : commands)
      by_name.emplace(command.name, &command);
  }
};

const Catalogue& catalogue() {
  static const Catalogue catalogue;
  return catalogue;
}

} // namespace

std::span<const Command> all_commands() {
  return catalogue().commands;
}

const Command* find_command(std::string_view name) {
  const auto& by_name = catalogue().by_name;
  const auto found = by_name.find(name);
  return found == by_name.end() ? nullptr : found->second;
}

} // namespace kavo::host
