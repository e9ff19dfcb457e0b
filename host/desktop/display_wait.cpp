#include "host/desktop/display_wait.h"

#include <SDL_syswm.h>
#include <SDL_timer.h>
#include <X11/Xlib.h>
#include <dlfcn.h>
#include <poll.h>

#include <algorithm>
#include <array>

#include "host/signals.h"

namespace kavo::host {

namespace {

constexpr int unknown_display_ms = 50; // between two looks

// The library is found, not linked: which window system is used is SDL's business.
int descriptor_of_wayland(wl_display* display) {
  void* const library = dlopen("libwayland-client.so.0", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr)
    return -1;
  const auto get = reinterpret_cast<int (*)(wl_display*)>(dlsym(library, "wl_display_get_fd"));
  const int descriptor = get == nullptr ? -1 : get(display);
  dlclose(library);
  return descriptor;
}

int descriptor_of_display(SDL_Window* window) {
  SDL_SysWMinfo info = {};
  SDL_VERSION(&info.version);
  if (SDL_GetWindowWMInfo(window, &info) == SDL_FALSE)
    return -1;
  if (info.subsystem == SDL_SYSWM_X11)
    return ConnectionNumber(info.info.x11.display); // NOLINT(*-union-access)
  if (info.subsystem == SDL_SYSWM_WAYLAND)
    return descriptor_of_wayland(info.info.wl.display); // NOLINT(*-union-access)
  return -1;
}

} // namespace

void wait_for_display(SDL_Window* window, int at_most_ms) {
  std::array<pollfd, 2> waited_for = {
      {{descriptor_of_display(window), POLLIN, 0}, {QuitSignals::descriptor(), POLLIN, 0}}};
  const bool is_known =
      std::ranges::all_of(waited_for, [](const pollfd& one) { return one.fd >= 0; });
  if (QuitSignals::has_arrived())
    return;
  ::poll(waited_for.data(), waited_for.size(),
         is_known ? at_most_ms : std::min(at_most_ms, unknown_display_ms));
}

} // namespace kavo::host
