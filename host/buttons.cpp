#include "host/buttons.h"

#include <algorithm>
#include <array>

namespace kavo::host {

namespace {

constexpr std::array<std::string_view, button_count> names = {
    "south",       "east",          "west",           "north",        "back",          "guide",
    "start",       "left shoulder", "right shoulder", "left trigger", "right trigger", "left stick",
    "right stick", "cross up",      "cross down",     "cross left",   "cross right",   "stick up",
    "stick down",  "stick left",    "stick right"};

bool may_be_chosen(Button button) {
  return button != Button::guide && button < Button::stick_up;
}

} // namespace

std::string_view name_of(Button button) {
  return names[static_cast<size_t>(button)];
}

std::optional<Button> button_named(std::string_view name) {
  const auto* const found = std::ranges::find(names, name);
  if (found == names.end())
    return std::nullopt;
  const auto button = static_cast<Button>(found - names.begin());
  return may_be_chosen(button) ? std::optional(button) : std::nullopt;
}

} // namespace kavo::host
