// The help above a game in play, as a picture.
#pragma once

#include <filesystem>
#include <string>

namespace kavo::film {

// Plays by the seed for a while, opens the help in the language ("de", "en") at the page of the
// special blocks, and writes the picture as a PNG. False when an error ended the game.
bool film_help_page(const std::filesystem::path& file, const std::string& language, int seed);

} // namespace kavo::film
