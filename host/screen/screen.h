// The one screen of the program: a picture and the place where it is shown.
#pragma once

#include <memory>
#include <optional>

#include "host/screen/calm_display.h"
#include "host/screen/canvas.h"
#include "host/screen/overlay.h"
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

  // What is shown above all pictures, from the next one on.
  void set_overlay(Overlay::Draw draw);
  // Shows the last picture again with what is above it now; for an open screen.
  void present_again() { overlay_->present_again(); }

  bool is_open() const { return presenter_ != nullptr; }

  // Both throw CommandError while no screen is open.
  Canvas& canvas();
  Presenter& presenter();

private:
  Platform& platform_;
  std::optional<Canvas> canvas_;
  bool is_calm_ = false;
  Overlay::Draw draw_overlay_;
  Overlay* overlay_ = nullptr; // behind the calm display, whose it is
  std::unique_ptr<CalmDisplay> presenter_;
};

} // namespace kavo::host
