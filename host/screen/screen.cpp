#include "host/screen/screen.h"

#include "host/command.h"

namespace kavo::host {

namespace {

[[noreturn]] void fail_without_screen() {
  throw CommandError("no screen is open; SCREEN opens one");
}

} // namespace

void Screen::open(const ScreenRequest& request) {
  close();
  canvas_.emplace(request.width, request.height);
  presenter_ = open_presenter(request);
}

void Screen::close() {
  presenter_.reset();
  canvas_.reset();
}

Canvas& Screen::canvas() {
  if (!canvas_)
    fail_without_screen();
  return *canvas_;
}

Presenter& Screen::presenter() {
  if (!presenter_)
    fail_without_screen();
  return *presenter_;
}

} // namespace kavo::host
