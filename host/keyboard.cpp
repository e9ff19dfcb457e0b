#include "host/keyboard.h"

#include <algorithm>

namespace kavo::host {

void Keyboard::key_down(int source, int code) {
  const bool is_repeat = std::any_of(held_.begin(), held_.end(), [source](const HeldSource& held) {
    return held.source == source;
  });
  if (is_repeat)
    return;
  held_.push_back({source, code});
  KeyState& state = state_of(code);
  if (state.sources_down++ == 0)
    ++state.unreported_changes;
}

void Keyboard::key_up(int source) {
  const auto found = std::find_if(held_.begin(), held_.end(), [source](const HeldSource& held) {
    return held.source == source;
  });
  if (found == held_.end())
    return;
  let_go(found->code);
  held_.erase(found);
}

void Keyboard::release_all() {
  for (const HeldSource& held : held_)
    let_go(held.code);
  held_.clear();
}

bool Keyboard::is_held(int code) {
  KeyState& state = state_of(code);
  state.was_asked_for = true;
  if (state.unreported_changes > 0) {
    --state.unreported_changes;
    state.was_reported_held = !state.was_reported_held;
  }
  return state.was_reported_held;
}

void Keyboard::end_frame() {
  for (KeyState& state : keys_) {
    if (!state.was_asked_for)
      forget_old_presses(state);
    state.was_asked_for = false;
  }
}

Keyboard::KeyState& Keyboard::state_of(int code) {
  const auto found = std::find_if(keys_.begin(), keys_.end(),
                                  [code](const KeyState& state) { return state.code == code; });
  return found != keys_.end() ? *found : keys_.emplace_back(KeyState{code, 0, 0, false, false});
}

void Keyboard::let_go(int code) {
  KeyState& state = state_of(code);
  if (--state.sources_down == 0)
    ++state.unreported_changes;
}

// Drops presses with their releases, in pairs, so that whether the key is held stays true.
void Keyboard::forget_old_presses(KeyState& state) {
  const int most_changes = state.was_reported_held ? 3 : 2;
  while (state.unreported_changes > most_changes)
    state.unreported_changes -= 2;
}

} // namespace kavo::host
