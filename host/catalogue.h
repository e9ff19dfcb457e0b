// Every command that the host knows, once: its name, the kinds of its arguments, which call it
// goes through and what carries it out.
#pragma once

#include <span>
#include <string_view>

#include "host/command.h"

namespace kavo::host {

std::span<const Command> all_commands();

// Null when no command has this name.
const Command* find_command(std::string_view name);

} // namespace kavo::host
