#include "host/sound/arguments.h"

#include <cmath>
#include <string>

#include "host/command_error.h"

namespace kavo::sound {

using host::reject_argument;
using host::shown;

double number_in(const Argument& argument, double value, double least, double most) {
  if (!(value >= least && value <= most))
    reject_argument(argument.index, argument.meaning, shown(least) + " to " + shown(most),
                    shown(value));
  return value;
}

double finite_number(const Argument& argument, double value) {
  if (!std::isfinite(value))
    reject_argument(argument.index, argument.meaning, "a finite number", shown(value));
  return value;
}

int whole_number_in(const Argument& argument, double value, int least, int most) {
  if (!(value >= least && value <= most) || value != std::floor(value))
    reject_argument(argument.index, argument.meaning,
                    "a whole number from " + std::to_string(least) + " to " + std::to_string(most),
                    shown(value));
  return static_cast<int>(value);
}

Waveform waveform_in(const Argument& argument, std::string_view name) {
  const auto waveform = waveform_named(name);
  if (!waveform)
    reject_argument(argument.index, argument.meaning, "SQUARE, SAW, TRIANGLE or SINE", shown(name));
  return *waveform;
}

void reject_at_column(const Argument& argument, const PatternError& error) {
  throw host::CommandError("argument " + std::to_string(argument.index + 1) + " (" +
                           std::string(argument.meaning) + "), column " +
                           std::to_string(error.column()) + ": " + error.what());
}

} // namespace kavo::sound
