#include "host/sound/tools/script.h"

#include <array>
#include <charconv>
#include <cmath>
#include <iomanip>
#include <sstream>
#include <string_view>
#include <vector>

namespace kavo::sound {

namespace {

constexpr double longest_wait = 24 * 3600.0;

// The words of a line behind its first one, read as what a command takes.
class Words {
public:
  explicit Words(std::vector<std::string> words) : words_(std::move(words)) {}

  const std::string& text(size_t i) const { return words_[i]; }

  double number(size_t i) const {
    const std::string& word = words_[i];
    double value = 0.0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size())
      throw ScriptError("argument " + std::to_string(i + 1) + " must be a number, got \"" + word +
                        '"');
    return value;
  }

  void expect(size_t count) const {
    if (words_.size() != count)
      throw ScriptError("expects " + std::to_string(count) + " arguments, got " +
                        std::to_string(words_.size()));
  }

private:
  std::vector<std::string> words_;
};

void wait(MemoryOutput& output, double seconds) {
  if (!(seconds >= 0.0 && seconds <= longest_wait))
    throw ScriptError("argument 1 must be 0 to 86400 seconds");
  output.render(std::llround(seconds * output.rate()));
}

using Send = void (*)(const Words& words, Player& player, MemoryOutput& output);

struct Entry {
  std::string_view name;
  size_t arguments;
  Send send;
};

constexpr std::array<Entry, 11> entries = {{
    {"SOUND.INIT", 0, [](const Words&, Player& p, MemoryOutput&) { p.init(); }},
    {"SOUND.BPM", 1, [](const Words& w, Player& p, MemoryOutput&) { p.bpm(w.number(0)); }},
    {"SOUND.VOICE", 6,
     [](const Words& w, Player& p, MemoryOutput&) {
       p.voice(w.number(0), w.text(1), w.number(2), w.number(3), w.number(4), w.number(5));
     }},
    {"SOUND.FILTER", 2,
     [](const Words& w, Player& p, MemoryOutput&) { p.filter(w.number(0), w.number(1)); }},
    {"SOUND.GAIN", 2,
     [](const Words& w, Player& p, MemoryOutput&) { p.gain(w.number(0), w.number(1)); }},
    {"SOUND.REVERB", 4,
     [](const Words& w, Player& p, MemoryOutput&) {
       p.reverb(w.number(0), w.number(1), w.number(2), w.number(3));
     }},
    {"SOUND.REVERBSEND", 2,
     [](const Words& w, Player& p, MemoryOutput&) { p.reverb_send(w.number(0), w.number(1)); }},
    {"SOUND.NOTE", 2,
     [](const Words& w, Player& p, MemoryOutput&) { p.note(w.text(0), w.number(1)); }},
    {"SOUND.PLAY", 2,
     [](const Words& w, Player& p, MemoryOutput&) { p.play(w.number(0), w.text(1)); }},
    {"SOUND.SHUTDOWN", 0, [](const Words&, Player& p, MemoryOutput&) { p.shutdown(); }},
    {"WAIT", 1, [](const Words& w, Player&, MemoryOutput& o) { wait(o, w.number(0)); }},
}};

} // namespace

void run_line(const std::string& line, Player& player, MemoryOutput& output) {
  std::istringstream stream(line);
  std::string command;
  if (!(stream >> command) || command.front() == '#')
    return;
  std::vector<std::string> words;
  for (std::string word; stream >> std::quoted(word);)
    words.push_back(word);
  for (const auto& entry : entries) {
    if (entry.name != command)
      continue;
    const Words arguments(words);
    try {
      arguments.expect(entry.arguments);
      return entry.send(arguments, player, output);
    } catch (const std::exception& error) {
      throw ScriptError(command + ": " + error.what());
    }
  }
  throw ScriptError("unknown command \"" + command + '"');
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
