#include "host/screen/screen.h"

#include <utility>

#include "host/command.h"
#include "host/platform.h"

namespace kavo::host {

namespace {

[[noreturn]] void fail_without_screen() {
  throw CommandError("no screen is open; SCREEN opens one");
}

} // namespace

void Screen::open(const ScreenRequest& request) {
  close();
  canvas_.emplace(request.width, request.height);
  auto overlay = std::make_unique<Overlay>(platform_.open_display(request));
  overlay_ = overlay.get();
  overlay_->set_drawing(draw_overlay_);
  presenter_ = std::make_unique<CalmDisplay>(std::move(overlay));
  presenter_->set_calm(is_calm_);
}

void Screen::set_calm(bool is_calm) {
  is_calm_ = is_calm;
  if (presenter_)
    presenter_->set_calm(is_calm);
}

void Screen::set_overlay(Overlay::Draw draw) {
  draw_overlay_ = std::move(draw);
  if (presenter_)
    overlay_->set_drawing(draw_overlay_);
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
