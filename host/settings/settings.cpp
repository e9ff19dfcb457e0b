#include "host/settings/settings.h"

namespace kavo::host {

std::string_view name_of(Action action) {
  constexpr std::array<std::string_view, action_count> names = {
      "left", "right", "turn", "down", "drop", "accept", "pause", "options", "music", "leave"};
  return names[static_cast<size_t>(action)];
}

Choices usual_choices() {
  return {{
      {{"Left", "A"}, {"", ""}},
      {{"Right", "D"}, {"", ""}},
      {{"Up", "W"}, {"west", "north"}},
      {{"Down", "S"}, {"", ""}},
      {{"Space", ""}, {"south", ""}},
      {{"Return", ""}, {"south", "start"}},
      {{"P", ""}, {"start", ""}},
      {{"O", ""}, {"back", ""}},
      {{"M", ""}, {"", ""}},
      {{"Escape", ""}, {"east", ""}},
  }};
}

} // namespace kavo::host
