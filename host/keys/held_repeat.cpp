#include "host/keys/held_repeat.h"

#include <algorithm>
#include <utility>

namespace kavo::host {

void HeldRepeat::set_times(std::optional<RepeatTimes> times) {
  times_ = times;
  repeated_ = nullptr;
  for (Direction& direction : directions_)
    direction.is_down = false;
}

void HeldRepeat::tend(double now_ms) {
  if (!times_)
    return;
  for (Direction& direction : directions_)
    look_at(direction, now_ms);
  if (repeated_ == nullptr || now_ms < due_ms_)
    return;
  press_again(*repeated_);
  due_ms_ += times_->rate;
  if (due_ms_ <= now_ms)
    due_ms_ = now_ms + times_->rate;
}

void HeldRepeat::look_at(Direction& direction, double now_ms) {
  const bool was_down = std::exchange(direction.is_down, is_down(direction));
  if (direction.is_down && !was_down)
    return start(&direction, now_ms);
  if (direction.is_down || repeated_ != &direction)
    return;
  Direction& other = directions_[&direction == directions_.data() ? 1 : 0];
  start(is_down(other) ? &other : nullptr, now_ms);
}

void HeldRepeat::start(Direction* direction, double now_ms) {
  repeated_ = direction;
  due_ms_ = now_ms + times_->delay;
}

bool HeldRepeat::is_down(const Direction& direction) {
  return std::ranges::any_of(direction.names, [this](const char* name) {
    return keyboard_.is_down(names_.code_of(name));
  });
}

void HeldRepeat::press_again(const Direction& direction) {
  for (const char* name : direction.names)
    keyboard_.press_again(names_.code_of(name));
}

} // namespace kavo::host
