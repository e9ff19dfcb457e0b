#include "host/keys/bindings.h"

#include <algorithm>
#include <iterator>

#include "host/command_error.h"
#include "host/keys/controls.h"

namespace kavo::host {

namespace {

struct ActionRow {
  std::string_view word;
  std::array<std::string_view, 2> names; // the second may be empty
  Bindings::Controls controls;
};

// In the order of the actions. The usual keys are those that a program asks for.
constexpr std::array<ActionRow, action_count> rows = {{
    {"left", {"Left", "A"}, {Control::cross_left}},
    {"right", {"Right", "D"}, {Control::cross_right}},
    {"turn", {"Up", "W"}, {Control::cross_up, Control::west, Control::north}},
    {"down", {"Down", "S"}, {Control::cross_down}},
    {"drop", {"Space", ""}, {Control::south}},
    {"pause", {"P", ""}, {Control::start}},
    {"accept", {"Return", ""}, {Control::south, Control::start}},
    {"options", {"O", ""}, {Control::back}},
    {"music", {"M", ""}, {}},
    {"escape", {"Escape", ""}, {Control::east}},
}};

struct KeyWord {
  std::string_view key;
  std::string_view word;
};
constexpr KeyWord key_words[] = {{",", "Comma"}, {";", "Semicolon"}, {"Keypad ,", "Keypad Comma"}};

const ActionRow& row_of(Action action) {
  return rows[static_cast<size_t>(action)];
}

// No screen asks for both.
bool may_share(Action first, Action second) {
  const auto is_of_play = [](Action action) {
    return action == Action::drop || action == Action::pause;
  };
  return (first == Action::accept && is_of_play(second)) ||
         (second == Action::accept && is_of_play(first));
}

Bindings::Keys usual_keys(Action action) {
  const auto& names = row_of(action).names;
  return {std::string(names[0]), std::string(names[1])};
}

// Whether any of the slots had it.
template<typename Slots, typename Value>
bool take(Slots& slots, const Value& value, const typename Slots::value_type& nothing) {
  bool had_it = false;
  for (auto& slot : slots)
    if (slot == value) {
      slot = nothing;
      had_it = true;
    }
  return had_it;
}

void name_unknown_keys(Bindings& bindings, const IsKey& is_key, std::vector<std::string>& lines) {
  for (const Action action : all_actions)
    for (const std::string& key : Bindings::Keys(bindings.keys_of(action)))
      if (!key.empty() && ((is_key && !is_key(key)) || is_reserved(key))) {
        lines.push_back("keys." + std::string(word_for(action)) + " cannot have the key " +
                        shown(key));
        bindings.keys_of(action) = usual_keys(action);
      }
}

void put_back_what_leads_back(Bindings& bindings, std::vector<std::string>& lines) {
  Bindings::Keys& keys = bindings.keys_of(Action::escape);
  if (std::ranges::find(keys, key_that_leads_back) == keys.end()) {
    lines.emplace_back("keys.escape must have Escape, which leads back from everywhere");
    keys[1] = keys[0];
  } else if (keys[1] == key_that_leads_back) {
    std::swap(keys[0], keys[1]);
  }
  keys[0] = key_that_leads_back;
}

std::string already_taken(std::string_view section, Action action, std::string_view what,
                          Action owner) {
  return std::string(section) + "." + std::string(word_for(action)) + " cannot have " +
         shown(what) + ", which " + std::string(word_for(owner)) + " has";
}

// The first action that has it, before this slot.
std::optional<Action> owner_before(const Bindings& bindings, Action action, size_t slot,
                                   const std::string& key) {
  for (const Action other : all_actions)
    for (size_t place = 0; place < Bindings::keys_each; ++place) {
      if (bindings.keys_of(other)[place] != key)
        continue;
      const bool is_before = other < action || (other == action && place < slot);
      if (is_before || (other != action && is_fixed(other, place)))
        return other;
    }
  return std::nullopt;
}

void drop_doubled_keys(Bindings& bindings, std::vector<std::string>& lines) {
  for (const Action action : all_actions)
    for (size_t slot = 0; slot < Bindings::keys_each; ++slot) {
      std::string& key = bindings.keys_of(action)[slot];
      if (key.empty())
        continue;
      if (const auto owner = owner_before(bindings, action, slot, key)) {
        lines.push_back(already_taken("keys", action, key, *owner));
        key.clear();
      }
    }
}

std::optional<Action> owner_before(const Bindings& bindings, Action action, size_t slot,
                                   Control control) {
  const auto& own = bindings.controls_of(action);
  if (std::find(own.begin(), own.begin() + static_cast<ptrdiff_t>(slot), control) !=
      own.begin() + static_cast<ptrdiff_t>(slot))
    return action;
  for (const Action other : all_actions)
    if (other < action && is_for(bindings, other, control) && !may_share(other, action))
      return other;
  return std::nullopt;
}

void drop_doubled_controls(Bindings& bindings, std::vector<std::string>& lines) {
  for (const Action action : all_actions)
    for (size_t slot = 0; slot < Bindings::controls_each; ++slot) {
      std::optional<Control>& control = bindings.controls_of(action)[slot];
      if (!control)
        continue;
      const auto owner = owner_before(bindings, action, slot, *control);
      if (!owner)
        continue;
      lines.push_back(already_taken("controller", action, word_for(*control), *owner));
      control.reset();
    }
}

} // namespace

std::span<const std::string_view> names_of(Action action) {
  const auto& names = row_of(action).names;
  return {names.data(), names[1].empty() ? size_t{1} : size_t{2}};
}

std::optional<Action> action_named(std::string_view key_name) {
  for (const Action action : all_actions)
    if (std::ranges::find(names_of(action), key_name) != names_of(action).end())
      return action;
  return std::nullopt;
}

std::string_view word_for(Action action) {
  return row_of(action).word;
}

Bindings::Bindings() {
  for (const Action action : all_actions) {
    keys_of(action) = usual_keys(action);
    controls_of(action) = row_of(action).controls;
  }
}

bool is_fixed(Action action, size_t key_slot) {
  return action == Action::escape && key_slot == 0;
}

bool is_reserved(std::string_view key_name) {
  return key_name == "F1" || key_name == "F11";
}

bool is_reserved(Control control) {
  return control == Control::guide;
}

std::string_view word_for_key(std::string_view key_name) {
  const auto* const found = std::ranges::find(key_words, key_name, &KeyWord::key);
  return found == std::end(key_words) ? key_name : found->word;
}

std::string key_called(std::string_view word) {
  const auto* const found = std::ranges::find(key_words, word, &KeyWord::word);
  return std::string(found == std::end(key_words) ? word : found->key);
}

std::optional<Action> action_of(const Bindings& bindings, std::string_view key_name) {
  if (key_name.empty())
    return std::nullopt;
  for (const Action action : all_actions)
    if (std::ranges::find(bindings.keys_of(action), key_name) != bindings.keys_of(action).end())
      return action;
  return std::nullopt;
}

bool is_for(const Bindings& bindings, Action action, Control control) {
  return std::ranges::find(bindings.controls_of(action), control) !=
         bindings.controls_of(action).end();
}

std::optional<Action> bind_key(Bindings& bindings, Action action, size_t slot,
                               std::string_view key) {
  if (is_fixed(action, slot) || is_reserved(key) || key == key_that_leads_back)
    return std::nullopt;
  std::optional<Action> loser;
  for (const Action other : all_actions)
    if (take(bindings.keys_of(other), key, "") && other != action)
      loser = other;
  bindings.keys_of(action)[slot] = key;
  return loser;
}

std::optional<Action> bind_control(Bindings& bindings, Action action, size_t slot,
                                   Control control) {
  if (is_reserved(control))
    return std::nullopt;
  std::optional<Action> loser;
  for (const Action other : all_actions)
    if (!may_share(other, action) && take(bindings.controls_of(other), control, std::nullopt) &&
        other != action)
      loser = other;
  bindings.controls_of(action)[slot] = control;
  return loser;
}

std::vector<std::string> repair(Bindings& bindings, const IsKey& is_key) {
  std::vector<std::string> lines;
  name_unknown_keys(bindings, is_key, lines);
  put_back_what_leads_back(bindings, lines);
  drop_doubled_keys(bindings, lines);
  drop_doubled_controls(bindings, lines);
  return lines;
}

} // namespace kavo::host
