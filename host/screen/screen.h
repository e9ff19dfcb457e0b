// The one screen of the program: a picture and the place where it is shown.
#pragma once

#include <memory>
#include <optional>

#include "host/screen/canvas.h"
#include "host/screen/presenter.h"

namespace kavo::host {

class Platform;

class Screen {
public:
  explicit Screen(Platform& platform) : platform_(platform) {}

  // Replaces the screen that may be open. The new picture is black. The display is a calm one
  // (calm_display.h) when QORRT_CALM is neither empty nor 0.
  void open(const ScreenRequest& request);
  void close();
  bool is_open() const { return presenter_ != nullptr; }

  // Both throw CommandError while no screen is open.
  Canvas& canvas();
  Presenter& presenter();

private:
  Platform& platform_;
  std::optional<Canvas> canvas_;
  std::unique_ptr<Presenter> presenter_;
};

} // namespace kavo::host
