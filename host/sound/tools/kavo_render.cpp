// kavo-render: writes what the synthesizer makes of a script to a WAV file, without any device.
#include <charconv>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/sound/memory_output.h"
#include "host/sound/player.h"
#include "host/sound/tools/script.h"
#include "host/sound/tools/wav.h"

namespace {

constexpr std::string_view usage =
    "usage: kavo-render [--rate HZ] OUTPUT.wav [SCRIPT]\n"
    "\n"
    "Renders a script to a WAV file. Without SCRIPT it is read from standard input. Its lines are\n"
    "SOUND commands as the game sends them, and WAIT with a number of seconds:\n"
    "\n"
    "  SOUND.BPM 120\n"
    "  SOUND.VOICE 0 SQUARE 0.01 0.15 0.3 0.25\n"
    "  SOUND.NOTE \"c4 e4 g4 [c5 b4]\" 1\n"
    "  WAIT 8\n";

struct Options {
  int rate = 48000;
  std::string output;
  std::string script; // empty: standard input
  bool wants_help = false;
};

int rate_in(std::string_view text) {
  int rate = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), rate);
  if (error != std::errc() || end != text.data() + text.size() || rate < 8000 || rate > 192000)
    throw std::invalid_argument("--rate must be from 8000 to 192000, got " + std::string(text));
  return rate;
}

Options options_in(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--help")
      options.wants_help = true;
    else if (argument == "--rate" && i + 1 < argc)
      options.rate = rate_in(argv[++i]);
    else if (argument.starts_with("--"))
      throw std::invalid_argument("unknown option " + std::string(argument));
    else if (options.output.empty())
      options.output = argument;
    else if (options.script.empty())
      options.script = argument;
    else
      throw std::invalid_argument("too many arguments, from " + std::string(argument) + " on");
  }
  if (options.output.empty() && !options.wants_help)
    throw std::invalid_argument("no output file named (--help tells more)");
  return options;
}

void render(const Options& options) {
  auto memory = std::make_unique<kavo::sound::MemoryOutput>(options.rate);
  auto& output = *memory;
  kavo::sound::Player player(std::move(memory), [&] { return output.seconds(); });
  player.init();
  if (options.script.empty()) {
    kavo::sound::run_script(std::cin, player, output);
  } else {
    std::ifstream script(options.script);
    if (!script)
      throw std::runtime_error("cannot read " + options.script);
    kavo::sound::run_script(script, player, output);
  }
  output.finish();
  kavo::sound::write_wav(options.output, output.interleaved(), output.rate());
}

} // namespace

int main(int argc, char** argv) {
  try {
    const Options options = options_in(argc, argv);
    if (options.wants_help)
      (void)std::fputs(usage.data(), stdout);
    else
      render(options);
  } catch (const std::exception& error) {
    (void)std::fprintf(stderr, "kavo-render: %s\n", error.what());
    return 1;
  }
  return 0;
}
