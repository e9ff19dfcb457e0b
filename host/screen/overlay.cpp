#include "host/screen/overlay.h"

#include <algorithm>

namespace kavo::host {

void Overlay::present_again() {
  if (last_ != nullptr)
    present(*last_);
}

void Overlay::present(Canvas& canvas) {
  last_ = &canvas;
  if (!draw_)
    return display_->present(canvas);
  if (!shown_)
    shown_.emplace(canvas.width(), canvas.height());
  std::ranges::copy(canvas.pixels(), shown_->pixels_to_change().begin());
  draw_(*shown_);
  display_->present(*shown_);
}

} // namespace kavo::host
