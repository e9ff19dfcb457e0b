// Where finished pictures go and where the player's actions come from: a window, or what stands in
// its place.
#pragma once

#include <optional>
#include <string>

#include "host/input.h"
#include "host/screen/canvas.h"

namespace kavo::host {

// Where a window stands, in the desktop's own measure.
struct WindowPlace {
  struct Corner { // the upper left one
    int x;
    int y;
    bool operator==(const Corner&) const = default;
  };

  int width = 0; // while it does not fill a display
  int height = 0;
  std::optional<Corner> corner = {}; // unknown where window systems do not tell
  bool is_full_screen = false;

  bool operator==(const WindowPlace&) const = default;
};

// How large the picture is shown in a window, in times, and the largest whole number that fits.
struct WindowScale {
  double now;
  int largest;
};

class Presenter {
public:
  virtual ~Presenter() = default;

  // Shows the whole picture. It may move into the presenter's own memory, and comes home before
  // that goes: the canvas lives as long as the presenter.
  virtual void present(Canvas& canvas) = 0;

  // Reports what happened since the last time. Does not wait.
  virtual void deliver_events(EventSink& sink) = 0;

  // The same, but when nothing has happened yet it waits until something does, or a signal has
  // arrived, or for some seconds, without taking the processor's time. Only programs whose player
  // has been with them wait.
  virtual void wait_for_events(EventSink& sink) { deliver_events(sink); }

  // Whether the picture fills a display, and the wish to change that; where it cannot nothing
  // happens.
  virtual bool is_full_screen() const { return false; }
  virtual void switch_full_screen() {}

  // Nothing where there is no window.
  virtual std::optional<WindowPlace> place() const { return std::nullopt; }
  virtual std::optional<WindowScale> scale() const { return std::nullopt; }
  // Leaves full screen for a window of this size.
  virtual void set_scale(int scale) { static_cast<void>(scale); }

  // Why nobody can play here, for the player to read; empty when somebody can.
  virtual const std::string& unplayable_reason() const = 0;
};

struct ScreenRequest {
  int width; // of the picture, in pixels
  int height;
  std::string title;
  double scale; // of the window at the start
  bool is_full_screen = false;
  bool may_grow = false;                 // to a whole multiple of that, where the display has room
  std::optional<WindowPlace> place = {}; // where it was the last time, which goes before the scale
};

} // namespace kavo::host
