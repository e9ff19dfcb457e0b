#include "host/desktop/display_loss.h"

#include <SDL_syswm.h>
#include <X11/Xlib.h>
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace kavo::host {

namespace {

[[noreturn]] void end_program() {
  static_cast<void>(std::fputs("no display: it went away while the game ran; start the game again "
                               "in a desktop session\n",
                               stderr));
  std::exit(EXIT_FAILURE);
}

int end_program_of(Display*) {
  end_program();
}

int note_error(Display*, XErrorEvent* error) {
  static bool is_noted = false;
  if (!is_noted)
    static_cast<void>(std::fprintf(stderr,
                                   "the X server refused a request (error %d, request %d.%d); play "
                                   "goes on, and further ones are not told\n",
                                   error->error_code, error->request_code, error->minor_code));
  is_noted = true;
  return 0;
}

// Calls the library's function if the library is in use. It is found, not linked: which window
// system is used is SDL's business. 0 otherwise.
template<typename Function, typename Argument>
auto call(const char* library_name, const char* name, Argument argument) {
  decltype(std::declval<Function>()(argument)) result{};
  void* const library = dlopen(library_name, RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr)
    return result;
  const auto function = reinterpret_cast<Function>(dlsym(library, name));
  if (function != nullptr)
    result = function(argument);
  dlclose(library);
  return result;
}

} // namespace

void end_in_order_when_the_display_is_lost() {
  call<decltype(&XSetIOErrorHandler)>("libX11.so.6", "XSetIOErrorHandler", end_program_of);
}

void end_if_the_compositor_is_lost(SDL_Window* window) {
  SDL_SysWMinfo info = {};
  SDL_VERSION(&info.version);
  if (SDL_GetWindowWMInfo(window, &info) == SDL_FALSE || info.subsystem != SDL_SYSWM_WAYLAND)
    return;
  using GetError = int (*)(wl_display*);
  wl_display* const display = info.info.wl.display; // NOLINT(*-union-access)
  if (call<GetError>("libwayland-client.so.0", "wl_display_get_error", display) != 0)
    end_program();
}

void play_on_after_errors_of_the_display() {
  call<decltype(&XSetErrorHandler)>("libX11.so.6", "XSetErrorHandler", note_error);
}

} // namespace kavo::host
