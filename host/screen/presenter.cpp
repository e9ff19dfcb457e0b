#include "host/screen/presenter.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "host/command.h"
#include "host/screen/calm_display.h"
#include "host/screen/offscreen.h"
#include "host/screen/window.h"

namespace kavo::host {

namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string no_display(const std::string& reason) {
  return "no display: start the game in a desktop session, or set DISPLAY or WAYLAND_DISPLAY (" +
         reason + ")";
}

bool is_calm_wanted() {
  const std::string_view calm = environment("QORRT_CALM");
  return !calm.empty() && calm != "0";
}

std::unique_ptr<Presenter> open_window(const ScreenRequest& request) {
  auto window = std::make_unique<Window>(request);
  if (is_calm_wanted())
    return std::make_unique<CalmDisplay>(request.width, request.height, std::move(window));
  return window;
}

} // namespace

std::unique_ptr<Presenter> open_presenter(const ScreenRequest& request) {
  const std::string_view driver = environment("SDL_VIDEODRIVER");
  if (driver == "dummy" || driver == "offscreen")
    return std::make_unique<Offscreen>("");
  const bool has_desktop =
      !environment("DISPLAY").empty() || !environment("WAYLAND_DISPLAY").empty();
  if (driver.empty() && !has_desktop)
    return std::make_unique<Offscreen>(no_display("neither is set"));
  try {
    return open_window(request);
  } catch (const CommandError& error) {
    return std::make_unique<Offscreen>(no_display(error.what()));
  }
}

} // namespace kavo::host
