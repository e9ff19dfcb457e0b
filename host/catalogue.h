// Every command that the host knows, once: its name, the kinds of its arguments, which call it
// goes through and what carries it out.
#pragma once

#include <cstdint>
#include <span>

#include "host/command.h"

namespace kavo::host {

std::span<const Command> all_commands();

// Null when no command has this name. Takes the same short time for every name.
const Command* find_command(const char* name);

// Throws CommandError when count or kinds are not the command's own. An integer and a double are
// both numbers.
void check_arguments(const Command& command, const void* slots, const uint32_t* tags,
                     int64_t count);

} // namespace kavo::host
