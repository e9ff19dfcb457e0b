#include "host/catalogue.h"

#include <algorithm>
#include <array>
#include <string_view>
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
    number_command("REPLAY", report_replay, number, number, number, number),
    number_command("RND", random_number, number),
    number_command("BINWRITER", write_binary_file, text, text),
    array_command("TRANSPOSE", transpose_matrix, array),
    array_command("RESHAPE", reshape_values, array, array),
    array_command("MVINS", insert_row, array, number, number, array),
    array_command("SPLIT", split_text, text, text),
    array_command("DIR$", list_directory, text),
};

// A name is compared with the few that are as long: faster here than any hash.
class Catalogue {
public:
  Catalogue() {
    const auto sounds = sound::sound_commands();
    commands_.insert(commands_.end(), sounds.begin(), sounds.end());
    for (const Command& command : commands_)
      by_length_.at(command.name.size()).push_back(&command);
  }

  std::span<const Command> commands() const { return commands_; }

  const Command* find(std::string_view name) const {
    if (name.size() >= by_length_.size())
      return nullptr;
    const auto& candidates = by_length_[name.size()];
    const auto found = std::ranges::find(candidates, name, &Command::name);
    return found == candidates.end() ? nullptr : *found;
  }

private:
  static constexpr size_t longest_name = 31;

  std::vector<Command> commands_{std::begin(own_commands), std::end(own_commands)};
  std::array<std::vector<const Command*>, longest_name + 1> by_length_;
};

const Catalogue& catalogue() {
  static const Catalogue catalogue;
  return catalogue;
}

} // namespace

std::span<const Command> all_commands() {
  return catalogue().commands();
}

const Command* find_command(std::string_view name) {
  return catalogue().find(name);
}

} // namespace kavo::host
