// The one screen of the program: a picture and the place where it is shown.
#pragma once

#include <memory>
#include <optional>

#include "host/screen/calm_display.h"
#include "host/screen/canvas.h"
#include "host/screen/presenter.h"

namespace kavo::host {

class Platform;

class Screen {
public:
  explicit Screen(Platform& platform) : platform_(platform) {}

  // Replaces the screen that may be open. The new picture is black.
  void open(const ScreenRequest& request);
  void close();
  // Whether the display is a calm one (calm_display.h), at once and when it is opened anew.
  void set_calm(bool is_calm);
  bool is_open() const { return presenter_ != nullptr; }

  // Both throw CommandError while no screen is open.
  Canvas& canvas();
  Presenter& presenter();

private:
  Platform& platform_;
  std::optional<Canvas> canvas_;
  bool is_calm_ = false;
  std::unique_ptr<CalmDisplay> presenter_;
};

} // namespace kavo::host
