#include "host/desktop/display_loss.h"

#include <X11/Xlib.h>
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace kavo::host {

namespace {

int end_program(Display*) {
  static_cast<void>(std::fputs("no display: it went away while the game ran; start the game again "
                               "in a desktop session\n",
                               stderr));
  std::exit(EXIT_FAILURE);
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

// Xlib's functions that take a handler. The library is found, not linked: which window system is
// used is SDL's business.
template<typename SetHandler, typename Handler>
void hand_to_xlib(const char* name, Handler handler) {
  void* const library = dlopen("libX11.so.6", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr)
    return;
  const auto set_handler = reinterpret_cast<SetHandler>(dlsym(library, name));
  if (set_handler != nullptr)
    set_handler(handler);
  dlclose(library);
}

} // namespace

void end_in_order_when_the_display_is_lost() {
  hand_to_xlib<decltype(&XSetIOErrorHandler)>("XSetIOErrorHandler", end_program);
}

void play_on_after_errors_of_the_display() {
  hand_to_xlib<decltype(&XSetErrorHandler)>("XSetErrorHandler", note_error);
}

} // namespace kavo::host
