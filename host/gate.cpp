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
    {"Return", Panel::Command::accept}, {"Escape", Panel::Command::back},
    {"Delete", Panel::Command::remove}, {"Backspace", Panel::Command::remove}};

// Whatever they are bound to in play.
struct PanelControl {
  Control control;
  Panel::Command command;
};
constexpr PanelControl panel_controls[] = {
    {Control::cross_up, Panel::Command::up},     {Control::cross_down, Panel::Command::down},
    {Control::cross_left, Panel::Command::left}, {Control::cross_right, Panel::Command::right},
    {Control::south, Panel::Command::accept},    {Control::start, Panel::Command::accept},
    {Control::east, Panel::Command::back},       {Control::west, Panel::Command::remove}};

// By the keys that do the same (replay_controls.h).
struct ReplayControl {
  Control control;
  std::string_view key;
};
constexpr ReplayControl replay_controls[] = {
    {Control::cross_left, "Left"}, {Control::cross_right, "Right"}, {Control::south, "Space"},
    {Control::start, "Space"},     {Control::north, "End"},         {Control::east, "Escape"},
    {Control::back, "Escape"}};

// Whether a key that is held goes on.
bool is_steering(const Key& key) {
  return std::ranges::any_of(panel_keys, [&](const PanelKey& each) {
    return each.name == key.name && each.command <= Panel::Command::right;
  });
}

// What is pressed in a hurry, or held, cannot wait for its release.
bool is_wanted_in_play(const Bindings& bindings, Control control) {
  return std::ranges::any_of(all_actions, [&](Action action) {
    return action != Action::options && is_for(bindings, action, control);
  });
}

} // namespace

// What a key repeats is the business of who has the key.
void Gate::key_went_down(const Key& key, bool is_repeat) {
  if (is_of_replay()) {
    if (!is_repeat)
      kept_keys_.push_back(key.scancode);
    return replay_.press(key.name);
  }
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
  attention_.act();
}

// A recorded game is shown, and no game waits for its player before it.
bool Gate::is_of_replay() const {
  return replay_.is_on() && !panel_.is_open() && !attention_.is_waiting();
}

bool Gate::opens_panel(const Key& key) const {
  return is_panel_offered_ && key.name == panel_key;
}

void Gate::press_in_panel(const Key& key) {
  if (key.name == panel_key)
    return panel_.close();
  if (panel_.is_listening() && key.name != key_that_leads_back)
    return panel_.take_key(key.name);
  for (const auto& [name, command] : panel_keys)
    if (key.name == name)
      return panel_.obey(command);
}

void Gate::key_went_up(const Key& key) {
  if (!take_from(kept_keys_, key.scancode))
    game_.key_went_up(key);
}

void Gate::control_went_down(const ControlPress& press) {
  if (is_of_replay()) {
    kept_controls_.push_back(press.source);
    return press_in_replay(press.control);
  }
  const bool is_opening = is_panel_offered_ && press.control == Control::guide;
  if (!holds_game_up() && !is_opening)
    return press_in_game(press);
  kept_controls_.push_back(press.source);
  if (panel_.is_open())
    press_in_panel(press.control);
  else if (is_opening)
    panel_.open();
  attention_.act();
}

void Gate::press_in_replay(Control control) {
  for (const ReplayControl& each : replay_controls)
    if (each.control == control)
      return replay_.press(each.key);
}

void Gate::press_in_game(const ControlPress& press) {
  const bool may_open = is_panel_offered_ && press.control == Control::back;
  const bool is_kept_back = may_open && !is_wanted_in_play(game_.bindings(), press.control);
  if (may_open)
    held_back_ = {press, is_kept_back};
  if (!is_kept_back)
    game_.control_went_down(press);
}

void Gate::press_in_panel(Control control) {
  if (control == Control::guide)
    return panel_.close();
  if (panel_.is_listening_to_controls())
    return panel_.take_control(control);
  for (const PanelControl& each : panel_controls)
    if (each.control == control)
      return panel_.obey(each.command);
}

void Gate::control_went_up(const ControlPress& press) {
  if (take_from(kept_controls_, press.source))
    return;
  if (held_back_ && held_back_->press.source == press.source) {
    if (held_back_->is_kept_back)
      game_.control_went_down(press);
    held_back_.reset();
  }
  game_.control_went_up(press);
}

void Gate::tend(double now_ms) {
  constexpr double long_enough_ms = 1000;
  if (!held_back_)
    return;
  const double since = held_back_->since_ms.value_or(now_ms);
  held_back_->since_ms = since;
  if (holds_game_up() || now_ms - since < long_enough_ms)
    return;
  kept_controls_.push_back(held_back_->press.source);
  held_back_.reset();
  panel_.open();
}

void Gate::keyboard_was_given() {
  attention_.come();
}

void Gate::keyboard_was_taken() {
  kept_keys_.clear();
  held_back_.reset();
  attention_.go();
  game_.keyboard_was_taken();
}

void Gate::picture_was_hidden() {
  attention_.go();
}

void Gate::button_went_down(int button, int x, int y) {
  if (is_of_replay()) {
    kept_buttons_.push_back(button);
    return replay_.click();
  }
  const bool is_opening = is_panel_offered_ && sign_ && sign_->contains(x, y);
  if (!holds_game_up() && !is_opening)
    return game_.button_went_down(button, x, y);
  kept_buttons_.push_back(button);
  if (panel_.is_open())
    panel_.click(x, y);
  else if (is_opening)
    panel_.open();
  attention_.act();
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
