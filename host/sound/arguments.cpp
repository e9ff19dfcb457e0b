#include "host/sound/arguments.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <string>

#include "host/sound/player.h"

namespace kavo::sound {

namespace {

std::string as_text(double value) {
  std::array<char, 32> text{};
  (void)std::snprintf(text.data(), text.size(), "%.12g", value);
  return text.data();
}

std::string place_of(const Argument& argument) {
  return std::string(argument.command) + ": argument " + std::to_string(argument.position) + " (" +
         std::string(argument.name) + ")";
}

[[noreturn]] void fail(const Argument& argument, const std::string& wanted,
                       const std::string& got) {
  throw ArgumentError(place_of(argument) + " must be " + wanted + ", got " + got);
}

// Names come from outside and may be anything: a line of an error shows a short, printable part.
std::string quoted(std::string_view text) {
  constexpr std::size_t most = 40;
  std::string shown = "\"";
  for (const char c : text.substr(0, most))
    shown += c >= ' ' && c < 0x7F ? c : '?';
  return shown + (text.size() > most ? "…\"" : "\"");
}

} // namespace

double number_in(const Argument& argument, double value, double least, double most) {
  if (!(value >= least && value <= most))
    fail(argument, "a number from " + as_text(least) + " to " + as_text(most), as_text(value));
  return value;
}

double finite_number(const Argument& argument, double value) {
  if (!std::isfinite(value))
    fail(argument, "a finite number", as_text(value));
  return value;
}

int whole_number_in(const Argument& argument, double value, int least, int most) {
  if (!(value >= least && value <= most) || value != std::floor(value))
    fail(argument, "a whole number from " + std::to_string(least) + " to " + std::to_string(most),
         as_text(value));
  return static_cast<int>(value);
}

Waveform waveform_in(const Argument& argument, std::string_view name) {
  const auto waveform = waveform_named(name);
  if (!waveform)
    fail(argument, "SQUARE, SAW, TRIANGLE or SINE", quoted(name));
  return *waveform;
}

void fail_at_column(const Argument& argument, const PatternError& error) {
  throw ArgumentError(place_of(argument) + ", column " + std::to_string(error.column()) + ": " +
                      error.what());
}

} // namespace kavo::sound
