// The sound commands, as rows of the catalogue. Each hands its arguments to the player, which
// checks them.
#pragma once

#include <span>

#include "host/command.h"

namespace kavo::sound {

std::span<const host::Command> sound_commands();

} // namespace kavo::sound
