#include "game/presentation/frame.h"

#include <algorithm>

#include "game/board/collision.h"
#include "game/board/geometry.h"
#include "game/board/pull.h"
#include "game/commands.h"
#include "game/presentation/cells.h"
#include "game/presentation/effects.h"
#include "game/presentation/hud.h"
#include "game/presentation/sky.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr int64_t danger_rows = 3; // a block in row 3 or above puts the game in danger

// How far the stack has grown.
struct Stack {
  int64_t top_row; // first row with a block, ROWS when there is none
  double danger;   // 0 for an empty well, 1 when row 0 is occupied

  bool is_dangerous() const { return top_row <= danger_rows; }
};

bool row_has_block(int64_t row) {
  for (int64_t column = 0; column < COLS; ++column)
    if (is_occupied(BOARD.get(), row, column))
      return true;
  return false;
}

Stack measure_stack() {
  int64_t top_row = 0;
  while (top_row < ROWS && !row_has_block(top_row))
    ++top_row;
  const double danger = static_cast<double>(ROWS - top_row) / divisor(ROWS);
  return {top_row, std::max(danger, 0.0)};
}

Out<> draw_background(double danger) {
  DO(command::draw_color(qor_cint(60 * danger + 12), qor_cint(26 - 14 * danger),
                         qor_cint(44 - 22 * danger)));
  DO(command::rect(0, 0, SCRW, SCRH, 1));
  return {};
}

// Four wavy lines that lean with the board about the middle of the screen, in flat steps of 24
// pixels.
Out<> draw_horizon(double danger) {
  const double lean = std::clamp(TRY(TORQUE()) * 0.7, -70.0, 70.0);
  const double tick = qor_tick();
  DO(command::draw_color(qor_cint(26 * danger + 18), qor_cint(36 - 8 * danger),
                         qor_cint(58 - 18 * danger)));
  for (int64_t k = 0; k < 4; ++k) {
    for (int64_t step = 0; step < SCRW; step += 24) {
      const auto x = static_cast<double>(step);
      const int64_t wobble = qor_cint(qor_sin(tick / 260 + x / 70 + static_cast<double>(k)) * 5);
      const int64_t slope = qor_cint(lean * (x - 330) / 330);
      const auto y = static_cast<double>(130 + 175 * k + wobble + slope);
      DO(command::line(x, y, x + 24, y));
    }
  }
  return {};
}

// Places the board in the middle of the play area, moved by the shake.
Out<> place_board() {
  const auto shake = static_cast<double>(SHAKE);
  int64_t dx = 0;
  int64_t dy = 0;
  if (SHAKE >= 1) {
    dx = qor_cint(qor_sin(shake * 1.9) * shake * 0.7);
    dy = qor_cint(qor_cos(shake * 2.3) * shake * 0.5);
    DO(SHAKE -= 1);
  }
  DO(BX = AX + static_cast<double>(qor_cint(static_cast<double>(AREA - CELL * COLS) / 2) + dx));
  DO(BY = AY + static_cast<double>(qor_cint(static_cast<double>(AREA - CELL * ROWS) / 2) + dy));
  return {};
}

Out<> draw_well(bool is_dangerous) {
  if (is_dangerous) {
    const double pulse = (qor_sin(qor_tick() / 110) + 1) * 0.5;
    DO(command::draw_color(qor_cint(170 * pulse + 70), qor_cint(52 - 20 * pulse),
                           qor_cint(34 - 10 * pulse)));
  } else {
    DO(command::draw_color(70, 52, 34));
  }
  DO(command::rect(BX - 8, BY - 8, CELL * COLS + 16, CELL * ROWS + 16, 1));
  for (int64_t row = 0; row < ROWS; ++row)
    for (int64_t column = 0; column < COLS; ++column)
      DO(DRAWCELL(static_cast<double>(row), static_cast<double>(column),
                  cell_at(BOARD.get(), row, column)));
  return {};
}

Out<> draw_star(int64_t slot) {
  const double x = cell_left(qor_array_get(STAR_C.get(), slot)) + CELL / 2.0;
  const double y = cell_top(qor_array_get(STAR_R.get(), slot)) + CELL / 2.0;
  DO(command::draw_color(250, 225, 90));
  DO(command::line(x, y - 9, x + 9, y));
  DO(command::line(x + 9, y, x, y + 9));
  DO(command::line(x, y + 9, x - 9, y));
  DO(command::line(x - 9, y, x, y - 9));
  return {};
}

Out<> draw_stars() {
  for (int64_t slot = 0; slot < NSTAR; ++slot)
    if (qor_array_get(STAR_ON.get(), slot) == 1.0)
      DO(draw_star(slot));
  return {};
}

Out<> draw_ghost_cell(int64_t row, int64_t column) {
  DO(command::draw_color(70, 84, 100));
  DO(command::rect(cell_left(column) + 4, cell_top(row) + 4, 28, 28, 0));
  return {};
}

// Clipped by rows only.
Out<> draw_ghost() {
  const int64_t ghost_row = qor_int(TRY(GHOSTY()));
  return for_each_block(CURRENTPIECE, [ghost_row](int64_t row, int64_t column) -> Out<> {
    if (ghost_row + row < 0 || ghost_row + row >= ROWS)
      return {};
    return draw_ghost_cell(ghost_row + row, PIECEX + column);
  });
}

Out<> draw_falling_piece() {
  return for_each_block(CURRENTPIECE, [](int64_t row, int64_t column) {
    return DRAWCELL(static_cast<double>(PIECEY + row), static_cast<double>(PIECEX + column),
                    static_cast<double>(PIECECOLOR));
  });
}

Out<> draw_effects(bool is_dangerous) {
  DO(draw_popups());
  DO(draw_particles());
  DO(draw_streaks());
  DO(draw_shock_square());
  if (is_dangerous) {
    DO(draw_rain());
    DO(maybe_start_lightning());
  }
  DO(draw_lightning());
  return {};
}

} // namespace

Out<> DRAW() {
  ENTER();
  DO(command::cls());
  const Stack stack = measure_stack();
  DO(draw_background(stack.danger));
  DO(DRAWSKY());
  DO(draw_horizon(stack.danger));
  DO(place_board());
  DO(draw_well(stack.is_dangerous()));
  DO(draw_stars());
  if (!GAMEOVER) {
    DO(draw_ghost());
    DO(draw_falling_piece());
  }
  DO(draw_hud());
  DO(draw_banners());
  DO(draw_effects(stack.is_dangerous()));
  DO(draw_overlays());
  DO(command::screen_flip());
  return {};
}

} // namespace kavo
