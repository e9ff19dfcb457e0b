// The failure that ends a program, for people who have never heard of its commands.
#pragma once

#include <string>

namespace kavo::host {

// What became of the game, and below it the error as the program tells it, which a report needs.
std::string in_players_words(const std::string& error);

} // namespace kavo::host
