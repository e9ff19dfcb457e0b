// The one screen of the program: a picture and the place where it is shown.
#pragma once

#include <memory>
#include <optional>

#include "host/screen/canvas.h"
#include "host/screen/presenter.h"

namespace kavo::host {

class Screen {
public:
  // Replaces the screen that may be open. The new picture is black.
  void open(const ScreenRequest& request);
  void close();
  bool is_open() const { return presenter_ != nullptr; }

  // Both throw CommandError while no screen is open.
  Canvas& canvas();
  Presenter& presenter();

private:
  std::optional<Canvas> canvas_;
  std::unique_ptr<Presenter> presenter_;
};

} // namespace kavo::host
