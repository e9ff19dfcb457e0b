// The game's typed functions beside the host's catalogue: one for each command, with its arguments.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "game/commands.h"
#include "host/catalogue.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

using host::Command;
using host::Kind;

class CommandsTest : public GameTest {};

// Every function of game/commands.h, once.
std::vector<std::function<void()>> typed_functions() {
  static const Array matrix = zero_matrix(2, 2);
  static const Array row = numbers({2, 2});
  const auto polled = [](auto call) {
    return [call] {
      static_cast<void>(call());
      error_is_pending();
    };
  };
  return {
      polled([] { return command::screen(660, 800, "title", 1); }),
      polled([] { return command::cls(); }),
      polled([] { return command::draw_color(1, 2, 3); }),
      polled([] { return command::rect(1, 2, 3, 4, 1); }),
      polled([] { return command::line(1, 2, 3, 4); }),
      polled([] { return command::text(1, 2, "text"); }),
      polled([] { return command::screen_flip(); }),
      polled([] { return command::save_screenshot("a.png"); }),
      polled([] { return command::gfx_close(); }),
      polled([] { return command::key_state("Left"); }),
      polled([] { return command::replay(0, 16.5, 1000, 1); }),
      polled([] { return command::sound_init(); }),
      polled([] { return command::sound_bpm(120); }),
      polled([] { return command::sound_voice(0, "SAW", 0, 0, 0, 0); }),
      polled([] { return command::sound_filter(0, 500); }),
      polled([] { return command::sound_gain(0, 1); }),
      polled([] { return command::sound_reverb(0, 0, 0, 0); }),
      polled([] { return command::sound_reverb_send(0, 0); }),
      polled([] { return command::sound_play(0, "c4"); }),
      polled([] { return command::sound_note("c4", 1); }),
      polled([] { return command::sound_shutdown(); }),
      polled([] { return command::rnd(1); }),
      polled([] { return command::binwriter("a.txt", "content"); }),
      polled([] { return command::transpose(matrix.get()); }),
      polled([] { return command::reshape(row.get(), row.get()); }),
      polled([] { return command::mvins(matrix.get(), 0, 0, row.get()); }),
      polled([] { return command::split("a,b", ","); }),
      polled([] { return command::dir("."); }),
  };
}

// The kinds of what was sent, from the recording host's line: i and f are numbers, texts stand in
// quotes and arrays in brackets; none of the texts above has a blank.
std::vector<Kind> kinds_in(const std::string& line) {
  std::vector<Kind> kinds;
  for (size_t blank = line.find(' '); blank != std::string::npos; blank = line.find(' ', blank + 1))
    kinds.push_back(line[blank + 1] == '"'   ? Kind::text
                    : line[blank + 1] == '[' ? Kind::array
                                             : Kind::number);
  return kinds;
}

TEST_F(CommandsTest, AreThoseOfTheCatalogueWithTheirArguments) {
  const WorkingFolder folder;
  std::multiset<std::string> sent;
  for (const auto& call : typed_functions()) {
    host().forget();
    call();
    ASSERT_EQ(host().trace.size(), 1U);
    const std::string& line = host().trace.front();
    const std::string name = line.substr(0, line.find(' '));
    sent.insert(name);
    const Command* command = host::find_command(name);
    ASSERT_NE(command, nullptr) << name;
    const std::vector<Kind> kinds(command->kinds.begin(),
                                  command->kinds.begin() + command->argument_count);
    EXPECT_EQ(kinds_in(line), kinds) << line;
  }
  std::multiset<std::string> known;
  for (const Command& command : host::all_commands())
    known.emplace(command.name);
  EXPECT_EQ(sent, known);
}

} // namespace
} // namespace kavo::test
