// A film of a recorded game: its pictures, and its sound.
#pragma once

#include <filesystem>

namespace kavo::film {

struct Cut {
  double from_seconds = 0;
  double seconds = 1e9;
};

// Writes 0000.png, 0001.png, …, so many a second of the game, and sound.wav into the folder. Throws
// what recording::read_recording() does, and std::runtime_error when the game is not as recorded.
inline constexpr int pictures_a_second = 25;
void film_recording(const std::filesystem::path& file, const std::filesystem::path& folder,
                    Cut cut);

} // namespace kavo::film
