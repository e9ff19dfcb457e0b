// Where the window was when the game was last left.
#pragma once

#include <filesystem>
#include <optional>

#include "host/screen/presenter.h"

namespace kavo::host {

// From window.ini in this folder. Nothing when there is none, or none that makes sense: what it
// said is not worth a word to the player.
std::optional<WindowPlace> read_window_state(const std::filesystem::path& folder);

// Whole or not at all, in a folder that is made for it. Where that cannot be nothing happens.
void write_window_state(const std::filesystem::path& folder, const WindowPlace& place);

} // namespace kavo::host
