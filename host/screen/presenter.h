// Where finished pictures go and where the player's actions come from. Two kinds: a window on the
// desktop, and its twin without one.
#pragma once

#include <memory>
#include <string>

#include "host/screen/canvas.h"

namespace kavo::host {

struct Key {
  int scancode;     // where the key lies on the keyboard, or on a game controller
  int code;         // what the layout makes of it
  const char* name; // the layout's name for it; lives as long as the call that passes it
};

// Receives what the player did, in order. Coordinates are the picture's pixels.
class EventSink {
public:
  virtual ~EventSink() = default;
  virtual void key_went_down(const Key& key, bool is_repeat) = 0;
  virtual void key_went_up(const Key& key) = 0;
  virtual void keyboard_was_taken() = 0; // another window has it now; no key is held any more
  virtual void button_went_down(int button, int x, int y) = 0;
  virtual void button_went_up(int button, int x, int y) = 0;
  virtual void pointer_moved(int x, int y) = 0;
  virtual void close_was_asked() = 0;
};

class Presenter {
public:
  virtual ~Presenter() = default;

  // Shows the whole picture. It may move into the presenter's own memory, and comes home before
  // that goes: the canvas lives as long as the presenter.
  virtual void present(Canvas& canvas) = 0;

  // Reports what happened since the last time. Does not wait.
  virtual void deliver_events(EventSink& sink) = 0;

  // Why nobody can play here, for the player to read; empty when somebody can.
  virtual const std::string& unplayable_reason() const = 0;
};

struct ScreenRequest {
  int width; // of the picture, in pixels
  int height;
  std::string title;
  double scale; // of the window at the start
};

// A window when there is a desktop to put it on; a calm one (calm_display.h) when QORRT_CALM is
// neither empty nor 0. Without one, or when SDL_VIDEODRIVER names a driver without a screen (dummy,
// offscreen), the twin; which never fails.
std::unique_ptr<Presenter> open_presenter(const ScreenRequest& request);

} // namespace kavo::host
