#include "game/shell/options.h"

#include "game/audio/sounds.h"
#include "game/state.h"

namespace kavo {

namespace {

Out<> toggle_selected() {
  if (OPTSEL == 0)
    DO(toggle_music());
  else
    DO(SFXON = SFXON == 0 ? 1 : 0);
  return {};
}

} // namespace

Out<> UPDATEOPTIONS(double up, double down, double enter, double escape) {
  ENTER();
  if (is_set(up) || is_set(down))
    DO(OPTSEL = 1 - OPTSEL);
  if (is_set(enter))
    DO(toggle_selected());
  if (is_set(escape))
    DO(enter_state("title"));
  return {};
}

} // namespace kavo
