#include "host/gate.h"

#include <algorithm>

namespace kavo::host {

namespace {

bool take_from(std::vector<int>& values, int value) {
  return std::erase(values, value) > 0;
}

} // namespace

// What a key repeats is the business of who has the key.
void Gate::key_went_down(const Key& key, bool is_repeat) {
  const bool is_kept = std::ranges::find(kept_keys_, key.scancode) != kept_keys_.end();
  if (is_kept && is_repeat)
    return;
  if (!holds_game_up())
    return game_.key_went_down(key, is_repeat);
  if (is_repeat)
    return;
  kept_keys_.push_back(key.scancode);
  attention_.act();
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
  if (!holds_game_up())
    return game_.button_went_down(button, x, y);
  kept_buttons_.push_back(button);
  attention_.act();
}

void Gate::button_went_up(int button, int x, int y) {
  if (!take_from(kept_buttons_, button))
    game_.button_went_up(button, x, y);
}

void Gate::pointer_moved(int x, int y) {
  if (!holds_game_up())
    game_.pointer_moved(x, y);
}

void Gate::close_was_asked() {
  game_.close_was_asked();
}

} // namespace kavo::host
