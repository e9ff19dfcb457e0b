#include "host/screen/calm_display.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace kavo::host {

namespace {

// In unsigned 16 bits the largest product still fits, so that eight components or more are treated
// at once.
uint8_t moved(uint8_t from, uint8_t to, uint16_t share) {
  const auto part = [share](int way) {
    return static_cast<uint16_t>(static_cast<uint16_t>(way * share + whole_share - 1) /
                                 whole_share);
  };
  return static_cast<uint8_t>(from + part(std::max(from, to) - from) -
                              part(std::max(from, to) - to));
}

} // namespace

void follow(std::span<const uint32_t> drawn, std::span<uint32_t> shown, int share) {
  const auto to = std::as_bytes(drawn);
  const auto from = std::as_writable_bytes(shown);
  for (size_t index = 0; index < from.size(); ++index)
    from[index] =
        std::byte{moved(std::to_integer<uint8_t>(from[index]), std::to_integer<uint8_t>(to[index]),
                        static_cast<uint16_t>(share))};
}

void CalmDisplay::present(Canvas& canvas) {
  if (!is_calm_) {
    is_behind_ = true;
    return display().present(canvas);
  }
  Canvas& shown = own_picture(canvas);
  if (std::exchange(is_behind_, false)) {
    followed_.take_changes(canvas);
    std::ranges::copy(canvas.pixels(), shown.pixels_to_change().begin());
    has_row_arrived_.assign(static_cast<size_t>(canvas.height()), true);
  } else {
    follow_where_it_moves(canvas, shown);
  }
  display().present(shown);
}

void CalmDisplay::follow_where_it_moves(const Canvas& canvas, Canvas& shown) {
  has_row_arrived_.resize(static_cast<size_t>(canvas.height()));
  for (const Area& changed : followed_.take_changes(canvas))
    std::fill_n(has_row_arrived_.begin() + changed.y, changed.height, false);
  const auto width = static_cast<size_t>(canvas.width());
  for (int y = 0; y < canvas.height(); ++y) {
    std::vector<bool>::reference has_arrived = has_row_arrived_[static_cast<size_t>(y)];
    if (has_arrived)
      continue;
    const std::span<const uint32_t> drawn = {canvas.row(y), width};
    const std::span<uint32_t> row = shown.pixels_to_change({y, y + 1});
    follow(drawn, row, share_);
    has_arrived = std::ranges::equal(drawn, row);
  }
}

} // namespace kavo::host
