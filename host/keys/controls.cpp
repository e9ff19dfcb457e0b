#include "host/keys/controls.h"

#include <algorithm>
#include <array>

namespace kavo::host {

namespace {

// In the order of the controls.
constexpr std::array<std::string_view, control_count> words = {
    "cross left",   "cross right",   "cross up",     "cross down",    "south",
    "east",         "west",          "north",        "back",          "start",
    "guide",        "left stick",    "right stick",  "left shoulder", "right shoulder",
    "left trigger", "right trigger", "r-stick left", "r-stick right", "r-stick up",
    "r-stick down", "paddle 1",      "paddle 2",     "paddle 3",      "paddle 4",
    "touchpad",     "misc"};

} // namespace

std::string_view word_for(Control control) {
  return words[static_cast<size_t>(control)];
}

std::optional<Control> control_called(std::string_view word) {
  const auto* const found = std::ranges::find(words, word);
  if (found == words.end())
    return std::nullopt;
  return static_cast<Control>(found - words.begin());
}

} // namespace kavo::host
