// When the pointer is in nobody's way any more: a second after its last motion.
#pragma once

#include <cstdint>

namespace kavo::host {

class IdlePointer {
public:
  static constexpr uint64_t patience_ms = 1000;

  // Times are of one clock that does not go back.
  void move(uint64_t now_ms) { moved_at_ms_ = now_ms; }
  bool is_idle(uint64_t now_ms) const { return now_ms - moved_at_ms_ >= patience_ms; }

private:
  uint64_t moved_at_ms_ = 0;
};

} // namespace kavo::host
