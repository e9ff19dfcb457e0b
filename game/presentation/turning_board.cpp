#include "game/presentation/turning_board.h"

#include "game/commands.h"
#include "game/presentation/cells.h"
#include "game/presentation/sky.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr double quarter_turn = 1.570795; // rounded by design, not half of pi
constexpr int64_t turn_frames = 8;

// The turned view of one animation frame.
struct Turn {
  double sine;
  double cosine;
  double scale;
};

Turn turn_at(double direction, int64_t frame) {
  const double angle = direction * quarter_turn * static_cast<double>(frame) * 0.125;
  return {qor_sin(angle), qor_cos(angle), 1.0 + 0.18 * qor_sin(qor_abs(angle))};
}

double offset_from_centre(int64_t cell, int64_t cells) {
  return (static_cast<double>(cell) + 0.5) * CELL - static_cast<double>(cells * CELL) / 2.0;
}

Out<> draw_turned_cell(const Turn& turn, int64_t row, int64_t column) {
  const Color color = TRY(COLOR_FOR(cell_at(BOARD.get(), row, column)));
  DO(command::draw_color(color[0], color[1], color[2]));
  const double dx = turn.scale * offset_from_centre(column, COLS);
  const double dy = turn.scale * offset_from_centre(row, ROWS);
  const double size = turn.scale * CELL;
  const double x =
      AX + AREA / 2.0 + static_cast<double>(qor_cint(turn.cosine * dx - turn.sine * dy));
  const double y =
      AY + AREA / 2.0 + static_cast<double>(qor_cint(turn.sine * dx + turn.cosine * dy));
  const int64_t half = qor_cint(size / 2.0);
  const int64_t edge = qor_cint(size) - 2;
  DO(command::rect(x - static_cast<double>(half), y - static_cast<double>(half), edge, edge, 1));
  return {};
}

Out<> draw_turned_board(const Turn& turn) {
  DO(draw_night());
  for (int64_t row = 0; row < ROWS; ++row)
    for (int64_t column = 0; column < COLS; ++column)
      if (is_occupied(BOARD.get(), row, column))
        DO(draw_turned_cell(turn, row, column));
  DO(command::screen_flip());
  DO(qor_sleep(16));
  return {};
}

} // namespace

Out<> ANIMATEKAVO(double direction) {
  ENTER();
  for (int64_t frame = 1; frame <= turn_frames; ++frame)
    DO(draw_turned_board(turn_at(direction, frame)));
  return {};
}

} // namespace kavo
