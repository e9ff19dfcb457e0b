// What the parts of a game controller are called.
#pragma once

#include <optional>
#include <string_view>

#include "host/input.h"

namespace kavo::host {

// In English and in lower case, as a file has it: "south", "left shoulder".
std::string_view word_for(Control control);
std::optional<Control> control_called(std::string_view word);

} // namespace kavo::host
