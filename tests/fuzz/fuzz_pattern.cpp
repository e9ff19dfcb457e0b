// Feeds arbitrary text to the pattern parser and, line by line, to the SOUND commands, and
// renders a little after each. Errors are fine; a crash, an endless run, or a sample that is no
// number or exceeds the ceiling is a finding.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "host/sound/memory_output.h"
#include "host/sound/pattern_error.h"
#include "host/sound/player.h"
#include "host/sound/score.h"
#include "host/sound/tools/script.h"

namespace {

using namespace kavo::sound;

constexpr int most_lines = 100;
constexpr int64_t frames_per_line = 64;

// True when the pattern can be played.
bool check_score(std::string_view pattern) {
  try {
    const Score score = read_score(pattern);
    for (const ScoreNote& note : score.notes)
      if (note.onset < Fraction(0) || note.onset >= Fraction(score.cycles) ||
          note.length <= Fraction(0))
        std::abort();
    return true;
  } catch (const PatternError& error) {
    if (error.column() < 1 || error.column() > pattern.size() + 1)
      std::abort();
    return false;
  }
}

void run_lines(const std::string& text) {
  auto memory = std::make_unique<MemoryOutput>(48000, frames_per_line);
  auto& output = *memory;
  Player player(std::move(memory));
  player.init();
  std::istringstream lines(text);
  std::string line;
  for (int count = 0; count < most_lines && std::getline(lines, line); ++count) {
    if (line.find("WAIT") != std::string::npos)
      continue;
    try {
      run_line(line, player, output);
    } catch (const ScriptError&) {
      // What the line asked for does not exist; everything plays on.
    }
    output.render(frames_per_line);
  }
  for (const float sample : output.interleaved())
    if (!(std::abs(sample) <= 0.9f))
      std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (check_score(text))
    run_lines("SOUND.NOTE \"" + text + "\" 1\nSOUND.GAIN 0 1\nSOUND.PLAY 0 c4\nSOUND.BPM 1000\n");
  if (text.find("SOUND.") != std::string::npos)
    run_lines(text);
  return 0;
}
