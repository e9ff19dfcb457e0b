// Where finished pictures go and where the player's actions come from: a window, or what stands in
// its place.
#pragma once

#include <string>

#include "host/input.h"
#include "host/screen/canvas.h"

namespace kavo::host {

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

  // Why nobody can play here, for the player to read; empty when somebody can.
  virtual const std::string& unplayable_reason() const = 0;
};

struct ScreenRequest {
  int width; // of the picture, in pixels
  int height;
  std::string title;
  double scale; // of the window at the start
  bool is_full_screen = false;
};

} // namespace kavo::host
