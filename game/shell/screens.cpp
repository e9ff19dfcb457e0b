#include "game/shell/screens.h"

#include <algorithm>

#include "game/board/collision.h"
#include "game/commands.h"
#include "game/highscores/entry.h"
#include "game/highscores/table.h"
#include "game/playfield/locking.h"
#include "game/playfield/movement.h"
#include "game/playfield/new_game.h"
#include "game/powerups/stars.h"
#include "game/presentation/entry.h"
#include "game/presentation/frame.h"
#include "game/presentation/options.h"
#include "game/presentation/title.h"
#include "game/shell/options.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr double fast_fall_ms = 45;
constexpr double shortest_step_ms = 200;

// The screen states in the order in which they are tested.
struct ScreenState {
  const char* name;
  Out<> (*run)();
};

Out<> run_title() {
  if (ESPACE) {
    DO(RESETGAME());
    DO(enter_state("play"));
  } else if (EO) {
    DO(OPTSEL = 0);
    DO(enter_state("options"));
  } else if (EESC) {
    DO(QUITFLAG = true);
  }
  DO(DRAWTITLE());
  DO(command::screen_flip());
  return {};
}

Out<> run_options() {
  DO(UPDATEOPTIONS(EU, EDN, EENTER, EESC));
  DO(DRAWOPTIONS());
  DO(command::screen_flip());
  return {};
}

Out<> run_entry() {
  DO(UPDATEENTER(EU, EDN, EL, ER, EENTER));
  DO(DRAWENTER());
  DO(command::screen_flip());
  return {};
}

// Escape is tested last, so that it wins when both are pressed in one frame.
Out<> run_pause() {
  if (EP || ESPACE)
    DO(enter_state("play"));
  if (EESC)
    DO(enter_state("title"));
  DO(DRAW());
  return {};
}

Out<> steer() {
  if (EL && TRY(fits(CURRENTPIECE, PIECEX - 1, PIECEY)))
    DO(PIECEX -= 1);
  if (ER && TRY(fits(CURRENTPIECE, PIECEX + 1, PIECEY)))
    DO(PIECEX += 1);
  if (EU)
    DO(TRYROTATE());
  if (ESPACE) {
    DO(HARDDROP());
    DO(LASTDROP = qor_tick());
  }
  return {};
}

Out<> fall() {
  DO(STEPEVERY = std::max(shortest_step_ms, static_cast<double>(640 - 40 * LEVEL)));
  if (KDN)
    DO(STEPEVERY = fast_fall_ms);
  if (NOW - LASTDROP < STEPEVERY)
    return {};
  if (TRY(fits(CURRENTPIECE, PIECEX, PIECEY + 1)))
    DO(PIECEY += 1);
  else
    DO(LOCKSEQUENCE());
  DO(LASTDROP = NOW);
  return {};
}

Out<> end_game() {
  DO(ENTERRANK = qor_cint(TRY(HS_RANK(static_cast<double>(SCORE)))));
  if (ENTERRANK < 0) {
    DO(enter_state("title"));
    return {};
  }
  DO(ENTERNAME = numbers({0, 0, 0}));
  DO(ENTERPOS = 0);
  DO(enter_state("enter"));
  return {};
}

Out<> run_play() {
  if (EP || EESC) {
    DO(enter_state("pause"));
  } else {
    DO(steer());
    DO(fall());
    DO(COLLECTSTARS());
    if (GAMEOVER)
      DO(end_game());
  }
  DO(DRAW());
  return {};
}

constexpr ScreenState screen_states[] = {
    {"title", run_title}, {"options", run_options}, {"enter", run_entry},
    {"pause", run_pause}, {"play", run_play},
};

} // namespace

Out<> run_screen() {
  for (const ScreenState& state : screen_states) {
    if (!state_is(state.name))
      continue;
    DO(state.run());
    return {};
  }
  return {};
}

} // namespace kavo
