#include "host/desktop/screen_saver.h"

#include <SDL_video.h>

#include <cstdlib>

namespace kavo::host {

namespace {

// A stick that lies still trembles a little.
bool is_use_of_a_controller(const SDL_Event& event) {
  constexpr int half_way = 16'384;
  return event.type == SDL_CONTROLLERBUTTONDOWN ||
         (event.type == SDL_CONTROLLERAXISMOTION && std::abs(event.caxis.value) > half_way);
}

} // namespace

void ScreenSaver::note(const SDL_Event& event, uint64_t now_ms) {
  if (!is_use_of_a_controller(event))
    return;
  used_at_ms_ = now_ms;
  if (!is_kept_away_)
    SDL_DisableScreenSaver();
  is_kept_away_ = true;
}

void ScreenSaver::allow_when_idle(uint64_t now_ms) {
  if (now_ms - used_at_ms_ >= patience_ms)
    allow();
}

void ScreenSaver::allow() {
  if (is_kept_away_)
    SDL_EnableScreenSaver();
  is_kept_away_ = false;
}

} // namespace kavo::host
