// What the host shows above a picture on its way to another display: the picture itself stays as it
// is, and so does what the program saves of it.
#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "host/screen/display_in_front.h"

namespace kavo::host {

class Overlay final : public DisplayInFront {
public:
  using Draw = std::function<void(Canvas&)>;

  using DisplayInFront::DisplayInFront;

  // From the next picture on; empty shows pictures as they are.
  void set_drawing(Draw draw) { draw_ = std::move(draw); }

  // Shows the last picture anew, with what is above it by now. Nothing before the first one.
  void present_again();

  void present(Canvas& canvas) override;

private:
  Draw draw_;
  std::optional<Canvas> drawn_; // the last picture with what is above it
  Canvas* last_ = nullptr;      // its owner's, who also owns this
};

} // namespace kavo::host
