#include "host/keyboard.h"

#include <algorithm>
#include <utility>

namespace kavo::host {

namespace {

// More than anybody types in an animation; a program that never asks must not hoard.
constexpr size_t most_waiting_presses = 1000;

} // namespace

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
  note_order(state);
  last_question_ = {code, report(state)};
  return state.was_reported_held;
}

bool Keyboard::is_down(int code) {
  return state_of(code).sources_down > 0;
}

void Keyboard::press_again(int code) {
  KeyState& state = state_of(code);
  if (state.sources_down == 0 || !state.was_reported_held || !state.unreported.empty())
    return;
  state.unreported = {next_ordinal_, next_ordinal_ + 1};
  next_ordinal_ += 2;
}

bool Keyboard::report(KeyState& state) {
  const Ordinal end = end_of_this_frame();
  const bool was_asked_already = std::exchange(state.was_asked_for, true);
  if (!state.unreported.empty() && (was_asked_already || state.unreported.front() < end)) {
    state.unreported.erase(state.unreported.begin());
    state.was_reported_held = !state.was_reported_held;
  }
  return state.was_reported_held;
}

void Keyboard::note_order(KeyState& state) const {
  if (!last_question_)
    return;
  if (last_question_->was_held) {
    if (state.asked_after == last_question_->code)
      state.is_independent = true;
  } else if (state.asked_after != last_question_->code) {
    state.asked_after = last_question_->code;
    state.is_independent = false;
  }
}

void Keyboard::end_frame() {
  const bool was_asked_for_any = last_question_.has_value();
  const Ordinal end = frame_end_.value_or(no_ordinal);
  for (KeyState& state : keys_) {
    const bool is_passed_over = was_asked_for_any && !state.was_asked_for;
    forget_presses(state, end, is_passed_over ? 1 : most_waiting_presses);
    if (was_asked_for_any)
      state.was_asked_before = std::exchange(state.was_asked_for, false);
  }
  was_ever_asked_ |= was_asked_for_any;
  frame_end_.reset();
  last_question_.reset();
}

Keyboard::KeyState& Keyboard::state_of(int code) {
  const auto found = std::find_if(keys_.begin(), keys_.end(),
                                  [code](const KeyState& state) { return state.code == code; });
  // Until the first frame has shown which keys the program asks for, any may be one of them.
  return found != keys_.end()
             ? *found
             : keys_.emplace_back(KeyState{.code = code, .was_asked_before = !was_ever_asked_});
}

void Keyboard::let_go(int code) {
  KeyState& state = state_of(code);
  if (--state.sources_down == 0)
    state.unreported.push_back(next_ordinal_++);
}

// The first change that is too much for this frame: the second of a key that the program asks
// for, or the press of a key whose alternative is let go before. Keys that nobody asks for hold
// nothing up.
Keyboard::Ordinal Keyboard::end_of_this_frame() {
  if (frame_end_)
    return *frame_end_;
  Ordinal end = no_ordinal;
  for (const KeyState& state : keys_) {
    if (state.was_asked_before && state.unreported.size() > 1)
      end = std::min(end, state.unreported[1]);
    if (!state.asked_after || state.is_independent || state.asked_after == state.code)
      continue;
    const KeyState& other = state_of(*state.asked_after);
    end = std::min({end, press_after_release(state, other), press_after_release(other, state)});
  }
  frame_end_ = end;
  return end;
}

Keyboard::Ordinal Keyboard::press_after_release(const KeyState& released, const KeyState& pressed) {
  const bool is_release = !released.unreported.empty() && released.was_reported_held;
  const bool is_press = !pressed.unreported.empty() && !pressed.was_reported_held;
  if (!is_release || !is_press || pressed.unreported.front() < released.unreported.front())
    return no_ordinal;
  return pressed.unreported.front();
}

// Drops presses that came before `end`, with their releases, so that whether the key is held stays
// true; what came later is for the frames to come.
void Keyboard::forget_presses(KeyState& state, Ordinal end, size_t most) {
  const size_t most_changes = 2 * most + (state.was_reported_held ? 1 : 0);
  const auto later = std::ranges::lower_bound(state.unreported, end);
  const auto changes = static_cast<size_t>(later - state.unreported.begin());
  if (changes <= most_changes)
    return;
  const size_t excess = (changes - most_changes + 1) / 2 * 2;
  state.unreported.erase(later - static_cast<ptrdiff_t>(excess), later);
}

} // namespace kavo::host
