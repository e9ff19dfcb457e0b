// The desktop's screen saver, which knows nothing of controllers: while one is played with it is
// kept from starting. Keys and the pointer it sees itself.
#pragma once

#include <SDL_events.h>

#include <cstdint>

namespace kavo::host {

class ScreenSaver {
public:
  // Longer than anybody thinks about a move.
  static constexpr uint64_t patience_ms = 60'000;

  // Times are of one clock that does not go back.
  void note(const SDL_Event& event, uint64_t now_ms);
  // Lets it start again when no controller has been used for a while, or at once.
  void allow_when_idle(uint64_t now_ms);
  void allow();

private:
  uint64_t used_at_ms_ = 0;
  bool is_kept_away_ = false;
};

} // namespace kavo::host
