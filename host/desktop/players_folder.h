// Where a desktop keeps a player's files of one kind.
#pragma once

#include <filesystem>

namespace kavo::host {

// The game's own folder below the one that the environment variable names, or below `usual` in the
// player's home when it names none or a relative one. Empty when no home is known.
std::filesystem::path players_folder(const char* variable, const char* usual);

} // namespace kavo::host
