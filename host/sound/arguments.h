// Checks of the values that SOUND commands are given. Each throws a CommandError that names the
// argument and the value.
#pragma once

#include <string_view>

#include "host/sound/pattern_error.h"
#include "host/sound/wavetable.h"

namespace kavo::sound {

struct Argument {
  int index; // from 0
  std::string_view meaning;
};

// From `least` to `most`, both allowed; NaN and infinities are not.
double number_in(const Argument& argument, double value, double least, double most);
double finite_number(const Argument& argument, double value);
int whole_number_in(const Argument& argument, double value, int least, int most);
Waveform waveform_in(const Argument& argument, std::string_view name);

// "argument 1 (pattern), column 4: expected …"
[[noreturn]] void reject_at_column(const Argument& argument, const PatternError& error);

} // namespace kavo::sound
