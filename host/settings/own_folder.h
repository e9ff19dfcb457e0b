// A folder for the player's files.
#pragma once

#include <filesystem>

namespace kavo::host {

bool is_missing(const std::filesystem::path& path);

// Makes it, and each folder on the way, the player's alone, as the desktop's rules for such folders
// ask. One that is there stays as it is; where it cannot be made nothing happens.
void make_own_folder(const std::filesystem::path& folder);

} // namespace kavo::host
