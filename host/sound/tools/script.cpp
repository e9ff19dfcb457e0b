#include "host/sound/tools/script.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iomanip>
#include <span>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include "host/sound/sound_commands.h"

namespace kavo::sound {

namespace {

constexpr double longest_wait = 24 * 3600.0;

// The words of a line behind its first one, as the arguments of a command.
class Words {
public:
  explicit Words(std::vector<std::string> words) : words_(std::move(words)) {}

  void read_as(std::span<const host::Kind> kinds) {
    for (size_t i = 0; i < words_.size(); ++i) {
      const bool is_number = i < kinds.size() && kinds[i] == host::Kind::number;
      qor_slot slot = {};
      if (is_number)
        slot.f64 = number(i);
      else
        slot.str = words_[i].c_str();
      slots_.push_back(slot);
      tags_.push_back(is_number ? QOR_TAG_FLOAT64 : QOR_TAG_STRING);
    }
  }

  const qor_slot* slots() const { return slots_.data(); }
  const uint32_t* tags() const { return tags_.data(); }
  int64_t count() const { return std::ssize(words_); }

  double number(size_t i) const {
    const std::string& word = words_[i];
    double value = 0.0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size())
      throw ScriptError("argument " + std::to_string(i + 1) + " must be a number, got \"" + word +
                        '"');
    return value;
  }

private:
  std::vector<std::string> words_;
  std::vector<qor_slot> slots_ = {};
  std::vector<uint32_t> tags_ = {};
};

void wait(MemoryOutput& output, double seconds) {
  if (!(seconds >= 0.0 && seconds <= longest_wait))
    throw ScriptError("argument 1 must be 0 to 86400 seconds");
  output.render(std::llround(seconds * output.rate()));
}

// The script's own.
constexpr host::Command wait_command = host::sound_command("WAIT", nullptr, host::Kind::number);

const host::Command* find_command(std::string_view name) {
  const auto commands = sound_commands();
  const auto found = std::ranges::find(commands, name, &host::Command::name);
  if (found != commands.end())
    return &*found;
  return name == wait_command.name ? &wait_command : nullptr;
}

void run(const host::Command& command, Words& words, Player& player, MemoryOutput& output) {
  const auto count = static_cast<size_t>(command.argument_count);
  if (static_cast<size_t>(words.count()) == count)
    words.read_as(std::span(command.kinds).first(count));
  host::check_arguments(command, words.slots(), words.tags(), words.count());
  if (&command == &wait_command)
    wait(output, words.number(0));
  else
    command.run_sound(player, host::Arguments(words.slots(), words.tags()));
}

} // namespace

void run_line(const std::string& line, Player& player, MemoryOutput& output) {
  std::istringstream stream(line);
  std::string name;
  if (!(stream >> name) || name.front() == '#')
    return;
  std::vector<std::string> words;
  for (std::string word; stream >> std::quoted(word);)
    words.push_back(word);
  const host::Command* command = find_command(name);
  if (command == nullptr)
    throw ScriptError("unknown command \"" + name + '"');
  Words arguments(words);
  try {
    run(*command, arguments, player, output);
  } catch (const std::exception& error) {
    throw ScriptError(name + ": " + error.what());
  }
}

void run_script(std::istream& lines, Player& player, MemoryOutput& output) {
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    try {
      run_line(line, player, output);
    } catch (const std::exception& error) {
      throw ScriptError("line " + std::to_string(number) + ": " + error.what());
    }
  }
}

} // namespace kavo::sound
