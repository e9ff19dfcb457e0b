#include "game/presentation/flashing_rows.h"

#include "game/board/geometry.h"
#include "game/commands.h"
#include "game/state.h"

namespace kavo {

namespace {

// One frame of the flash: a white bar over each row, thinner with every frame. From the third
// frame on its height is negative and the host draws nothing, so the row is dark again.
Out<> flash_frame(const std::vector<int64_t>& rows, int64_t frame) {
  for (const int64_t row : rows) {
    DO(command::draw_color(255, 255, 255));
    DO(command::rect(BX, cell_top(row) + static_cast<double>(17 * frame), COLS * CELL,
                     CELL - 34 * frame, 1));
  }
  DO(command::screen_flip());
  DO(qor_sleep(16));
  return {};
}

} // namespace

Out<> flash_rows(const std::vector<int64_t>& rows) {
  for (int64_t frame = 0; frame < 4; ++frame)
    DO(flash_frame(rows, frame));
  return {};
}

} // namespace kavo
