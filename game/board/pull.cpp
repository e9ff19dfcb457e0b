#include "game/board/pull.h"

#include "game/board/kinds.h"
#include "game/state.h"

namespace kavo {

Out<double> TORQUE() {
  ENTER();
  const double middle = TRY(static_cast<double>(COLS - 1) / 2.0);
  double pull = 0.0;
  for (int64_t row = 0; row < ROWS; ++row) {
    const auto* cells = static_cast<const QorArray*>(qor_array_get_ptr(BOARD.get(), row));
    for (int64_t column = 0; column < COLS; ++column) {
      CELLV = element(cells, column);
      const double value = as_number(CELLV);
      if (value == 0.0)
        continue;
      const double arm = static_cast<double>(column) - middle;
      pull += value == kind::heavy ? 2.0 * arm : arm;
    }
  }
  return pull;
}

} // namespace kavo
