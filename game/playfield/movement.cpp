#include "game/playfield/movement.h"

#include "game/board/collision.h"
#include "game/board/geometry.h"
#include "game/commands.h"
#include "game/frame_scope.h"
#include "game/playfield/locking.h"
#include "game/presentation/effects.h"
#include "game/state.h"

namespace kavo {

namespace {

Out<> leave_streaks(int64_t start_row) {
  return for_each_block(CURRENTPIECE, [start_row](int64_t row, int64_t column) {
    return ADDSTREAK(cell_left(PIECEX + column) + CELL / 2.0, cell_top(start_row + row),
                     cell_top(PIECEY + row));
  });
}

} // namespace

Out<Array> ROTATEMATRIX(const Array& matrix) {
  ENTER();
  return reverse_rows(TRY(command::transpose(matrix.get())));
}

Out<> TRYROTATE() {
  ENTER();
  Array turned = TRY(ROTATEMATRIX(CURRENTPIECE));
  for (const int64_t kick : {0, -1, 1}) {
    if (!TRY(fits(turned, PIECEX + kick, PIECEY)))
      continue;
    DO(PIECEX += kick);
    DO(CURRENTPIECE = std::move(turned));
    return {};
  }
  return {};
}

Out<> HARDDROP() {
  ENTER();
  const int64_t start_row = PIECEY;
  {
    FrameScope scope;
    while (TRY(fits(CURRENTPIECE, PIECEX, PIECEY + 1))) {
      DO(PIECEY += 1);
      scope.next_pass();
    }
  }
  DO(leave_streaks(start_row));
  DO(LOCKSEQUENCE());
  return {};
}

} // namespace kavo
