#include "host/screen/screen.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "host/command.h"
#include "host/platform.h"
#include "host/screen/calm_display.h"

namespace kavo::host {

namespace {

bool is_calm_wanted() {
  const char* calm = std::getenv("QORRT_CALM");
  return calm != nullptr && *calm != '\0' && std::string_view(calm) != "0";
}

[[noreturn]] void fail_without_screen() {
  throw CommandError("no screen is open; SCREEN opens one");
}

} // namespace

void Screen::open(const ScreenRequest& request) {
  close();
  canvas_.emplace(request.width, request.height);
  presenter_ = platform_.open_display(request);
  if (is_calm_wanted())
    presenter_ =
        std::make_unique<CalmDisplay>(request.width, request.height, std::move(presenter_));
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
