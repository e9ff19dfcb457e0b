#include "host/gate.h"

#include <algorithm>
#include <string_view>

namespace kavo::host {

namespace {

bool take_from(std::vector<int>& values, int value) {
  return std::erase(values, value) > 0;
}

constexpr std::string_view panel_key = "F1";

struct PanelKey {
  std::string_view name;
  Panel::Command command;
};
constexpr PanelKey panel_keys[] = {
    {"Up", Panel::Command::up},         {"Down", Panel::Command::down},
    {"Left", Panel::Command::left},     {"Right", Panel::Command::right},
    {"Return", Panel::Command::accept}, {"Escape", Panel::Command::back}};

// Whether a key that is held goes on.
bool is_steering(const Key& key) {
  return std::ranges::any_of(panel_keys, [&](const PanelKey& each) {
    return each.name == key.name && each.command != Panel::Command::accept &&
           each.command != Panel::Command::back;
  });
}

} // namespace

// What a key repeats is the business of who has the key.
void Gate::key_went_down(const Key& key, bool is_repeat) {
  const bool is_kept = std::ranges::find(kept_keys_, key.scancode) != kept_keys_.end();
  if (is_kept && is_repeat)
    return panel_.is_open() && is_steering(key) ? press_in_panel(key) : void();
  const bool is_opening = opens_panel(key);
  if (!holds_game_up() && !is_opening)
    return game_.key_went_down(key, is_repeat);
  if (is_repeat)
    return;
  kept_keys_.push_back(key.scancode);
  if (panel_.is_open())
    press_in_panel(key);
  else if (is_opening)
    panel_.open();
  is_back_ = true;
}

void Gate::settle() {
  if (std::exchange(is_back_, false))
    attention_.act();
}

bool Gate::opens_panel(const Key& key) const {
  return is_panel_offered_ && key.name == panel_key;
}

void Gate::press_in_panel(const Key& key) {
  if (key.name == panel_key)
    return panel_.close();
  for (const auto& [name, command] : panel_keys)
    if (key.name == name)
      return panel_.obey(command);
}

void Gate::key_went_up(const Key& key) {
  if (!take_from(kept_keys_, key.scancode))
    game_.key_went_up(key);
}

void Gate::keyboard_was_given() {
  attention_.come();
}

void Gate::keyboard_was_taken() {
  kept_keys_.clear();
  attention_.go();
  game_.keyboard_was_taken();
}

void Gate::picture_was_hidden() {
  attention_.go();
}

void Gate::button_went_down(int button, int x, int y) {
  const bool is_opening = is_panel_offered_ && sign_ && sign_->contains(x, y);
  if (!holds_game_up() && !is_opening)
    return game_.button_went_down(button, x, y);
  kept_buttons_.push_back(button);
  if (panel_.is_open())
    panel_.click(x, y);
  else if (is_opening)
    panel_.open();
  is_back_ = true;
}

void Gate::button_went_up(int button, int x, int y) {
  if (!take_from(kept_buttons_, button))
    game_.button_went_up(button, x, y);
}

void Gate::pointer_moved(int x, int y) {
  has_pointer_moved_ = true;
  if (!holds_game_up())
    game_.pointer_moved(x, y);
}

void Gate::close_was_asked() {
  game_.close_was_asked();
}

} // namespace kavo::host
