#include "host/keyboard.h"

#include <algorithm>
#include <limits>
#include <utility>

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
    state.unreported.push_back(next_ordinal_++);
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
  const bool was_asked_already = std::exchange(state.was_asked_for, true);
  const Ordinal end = end_of_this_frame();
  if (!state.unreported.empty() && (was_asked_already || state.unreported.front() < end)) {
    state.unreported.erase(state.unreported.begin());
    state.was_reported_held = !state.was_reported_held;
  }
  return state.was_reported_held;
}

void Keyboard::end_frame() {
  for (KeyState& state : keys_) {
    if (!state.was_asked_for)
      forget_old_presses(state);
    state.was_asked_before = std::exchange(state.was_asked_for, false);
  }
  frame_end_.reset();
}

Keyboard::KeyState& Keyboard::state_of(int code) {
  const auto found = std::find_if(keys_.begin(), keys_.end(),
                                  [code](const KeyState& state) { return state.code == code; });
  return found != keys_.end() ? *found : keys_.emplace_back(KeyState{.code = code});
}

void Keyboard::let_go(int code) {
  KeyState& state = state_of(code);
  if (--state.sources_down == 0)
    state.unreported.push_back(next_ordinal_++);
}

// The first change that is too much for this frame: the second of a key that the program asks
// for. Keys that nobody asks for hold nothing up.
Keyboard::Ordinal Keyboard::end_of_this_frame() {
  if (!frame_end_) {
    frame_end_ = std::numeric_limits<Ordinal>::max();
    for (const KeyState& state : keys_)
      if (state.was_asked_before && state.unreported.size() > 1)
        frame_end_ = std::min(*frame_end_, state.unreported[1]);
  }
  return *frame_end_;
}

// Drops presses with their releases, in pairs, so that whether the key is held stays true.
void Keyboard::forget_old_presses(KeyState& state) {
  const std::size_t most_changes = state.was_reported_held ? 3 : 2;
  while (state.unreported.size() > most_changes)
    state.unreported.resize(state.unreported.size() - 2);
}

} // namespace kavo::host
