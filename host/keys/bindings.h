// Which keys and which parts of a controller the player has for what can be done in the game.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/input.h"

namespace kavo::host {

// What can be done, by what it does in play.
enum class Action : uint8_t {
  left,
  right,
  turn,
  down,
  drop,
  pause,
  accept,
  options,
  music,
  escape,
};
inline constexpr size_t action_count = 10;
inline constexpr std::array<Action, action_count> all_actions = {
    Action::left,  Action::right,  Action::turn,    Action::down,  Action::drop,
    Action::pause, Action::accept, Action::options, Action::music, Action::escape};

// The names by which a program asks whether the action's key is held: "Left" and "A".
std::span<const std::string_view> names_of(Action action);
// The action for one of whose names this is.
std::optional<Action> action_named(std::string_view key_name);

// What a settings file calls it: "turn".
std::string_view word_for(Action action);

// Up to two keys for each action, by the names that the platform gives them, and up to three parts
// of a controller, so that a direction leaves two buttons. No key has two actions. Of a controller
// only what accepts, in menus, shares with what drops and pauses in play.
struct Bindings {
  static constexpr size_t keys_each = 2;
  static constexpr size_t controls_each = 3;
  using Keys = std::array<std::string, keys_each>; // empty: none
  using Controls = std::array<std::optional<Control>, controls_each>;

  // As the game comes.
  Bindings();

  Keys& keys_of(Action action) { return keys[static_cast<size_t>(action)]; }
  const Keys& keys_of(Action action) const { return keys[static_cast<size_t>(action)]; }
  Controls& controls_of(Action action) { return controls[static_cast<size_t>(action)]; }
  const Controls& controls_of(Action action) const { return controls[static_cast<size_t>(action)]; }

  bool operator==(const Bindings&) const = default;

  std::array<Keys, action_count> keys;
  std::array<Controls, action_count> controls;
};

// The key that always leads back, and so stays where it is.
inline constexpr std::string_view key_that_leads_back = "Escape";
bool is_fixed(Action action, size_t key_slot);

// What no action can have, for it leads to the panel, or the window takes it.
bool is_reserved(std::string_view key_name);
bool is_reserved(Control control);

// What a settings file calls a key, whose list has commas and comments of its own: "Comma".
std::string_view word_for_key(std::string_view key_name);
std::string key_called(std::string_view word);

// A key without a name is for nothing.
std::optional<Action> action_of(const Bindings& bindings, std::string_view key_name);
bool is_for(const Bindings& bindings, Action action, Control control);

// Gives the key or control to the action, in this slot, and takes it from who has it: another
// action, which is returned, or another slot of this one. A fixed slot, and what is reserved, stays
// as it is.
std::optional<Action> bind_key(Bindings& bindings, Action action, size_t slot,
                               std::string_view key);
std::optional<Action> bind_control(Bindings& bindings, Action action, size_t slot, Control control);

// Makes bindings that somebody wrote consistent, in the order of the actions: who comes first keeps
// what two have, and an action with a key that is none gets its usual ones. One line for each of
// these.
using IsKey = std::function<bool(const std::string& name)>;
std::vector<std::string> repair(Bindings& bindings, const IsKey& is_key);

} // namespace kavo::host
