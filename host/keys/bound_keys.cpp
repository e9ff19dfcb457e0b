#include "host/keys/bound_keys.h"

#include <algorithm>

namespace kavo::host {

void BoundKeys::key_went_down(const Key& key, bool is_repeat) {
  translate(key, [&](const Key& meant) { program_.key_went_down(meant, is_repeat); });
}

void BoundKeys::key_went_up(const Key& key) {
  translate(key, [&](const Key& meant) { program_.key_went_up(meant); });
}

void BoundKeys::control_went_down(const ControlPress& press) {
  translate(press, [&](const Key& meant) { program_.key_went_down(meant, false); });
}

void BoundKeys::control_went_up(const ControlPress& press) {
  translate(press, [&](const Key& meant) { program_.key_went_up(meant); });
}

void BoundKeys::translate(const Key& key, const PassOn& pass_on) {
  const std::string_view name = key.name;
  const auto named = action_named(name);
  const auto bound = action_of(bindings_, name);
  if (bound == named)
    return pass_on(key);
  if (!bound)
    return;
  const std::string_view meant = names_of(*bound).front();
  pass_on({key.scancode, names_.code_of(meant), meant.data()});
}

void BoundKeys::translate(const ControlPress& press, const PassOn& pass_on) {
  for (const Action action : all_actions)
    if (is_for(bindings_, action, press.control)) {
      const std::string_view meant = names_of(action).front();
      const int scancode = press.source * static_cast<int>(action_count) + static_cast<int>(action);
      pass_on({scancode, names_.code_of(meant), meant.data()});
    }
}

} // namespace kavo::host
