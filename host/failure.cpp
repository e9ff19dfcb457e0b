#include "host/failure.h"

#include <string_view>

namespace kavo::host {

namespace {

std::string_view what_failed(std::string_view error) {
  const std::string_view command = error.substr(0, error.find(':'));
  if (command == "BINWRITER")
    return "The scores could not be saved.";
  if (command == "SCREEN" || command == "SCREENFLIP")
    return "The picture could not be shown.";
  return "Something went wrong.";
}

} // namespace

std::string in_players_words(const std::string& error) {
  std::string words = "The game had to end. ";
  return words.append(what_failed(error)).append("\n\n").append(error);
}

} // namespace kavo::host
