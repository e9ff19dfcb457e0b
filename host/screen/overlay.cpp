#include "host/screen/overlay.h"

#include <algorithm>
#include <cstddef>

namespace kavo::host {

namespace {

// Only rows that differ are written.
void take_over(const Canvas& from, Canvas& to) {
  const auto is_equal = [&](int y) {
    return std::equal(from.row(y), from.row(y) + from.width(), to.row(y));
  };
  for (int y = 0; y < from.height(); ++y) {
    const int first = y;
    while (y < from.height() && !is_equal(y))
      ++y;
    if (y > first)
      std::copy(from.row(first), from.row(first) + ptrdiff_t{y - first} * from.width(),
                to.pixels_to_change({first, y}).begin());
  }
}

} // namespace

void Overlay::present_again() {
  if (last_ != nullptr)
    present(*last_);
}

// What is above pictures is drawn pixel by pixel and mostly comes out the same.
void Overlay::present(Canvas& canvas) {
  last_ = &canvas;
  if (!draw_) {
    drawn_.reset();
    return display().present(canvas);
  }
  if (!drawn_)
    drawn_.emplace(canvas.width(), canvas.height());
  std::ranges::copy(canvas.pixels(), drawn_->pixels_to_change().begin());
  draw_(*drawn_);
  take_over(*drawn_, own_picture(canvas));
  display().present(own_picture(canvas));
}

} // namespace kavo::host
