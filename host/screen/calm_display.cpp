#include "host/screen/calm_display.h"

#include <algorithm>
#include <cstddef>
#include <utility>

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
    return display_->present(canvas);
  }
  if (!shown_)
    shown_.emplace(width_, height_);
  follow(canvas.pixels(), shown_->pixels_to_change(),
         std::exchange(is_behind_, false) ? whole_share : share_);
  display_->present(*shown_);
}

} // namespace kavo::host
