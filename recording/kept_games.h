// The folder in which the last games are kept, one file each, called by when they began:
// 2026-11-22T06-10-33Z.kavo. Whatever else lies there stays as it is.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "recording/format.h"
#include "recording/sink.h"

namespace kavo::recording {

inline constexpr size_t most_kept_games = 20;

// Newest first; none where there is no such folder.
std::vector<std::filesystem::path> kept_games(const std::filesystem::path& folder);

// A new file in the folder, which is made when it is missing, for its owner alone. The oldest games
// make room. Written on as it comes, and compressed at the end. Throws std::runtime_error.
std::unique_ptr<Sink> keep_game(const std::filesystem::path& folder, const Header& header);

// What a file holds. Throws Damaged, with the path, when it is none, cannot be read, or is larger
// than a recording can be. Never waits for anybody.
Recording read_recording(const std::filesystem::path& file);

} // namespace kavo::recording
