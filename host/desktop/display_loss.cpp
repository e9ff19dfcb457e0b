#include "host/desktop/display_loss.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace kavo::host {

namespace {

using Handler = int (*)(void* display);
using SetHandler = Handler (*)(Handler handler);

int end_program(void*) {
  static_cast<void>(std::fputs("no display: it went away while the game ran; start the game again "
                               "in a desktop session\n",
                               stderr));
  std::exit(EXIT_FAILURE);
}

} // namespace

// The library is found, not linked: which window system is used is SDL's business.
void end_in_order_when_the_display_is_lost() {
  void* const library = dlopen("libX11.so.6", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr)
    return;
  const auto set_handler = reinterpret_cast<SetHandler>(dlsym(library, "XSetIOErrorHandler"));
  if (set_handler != nullptr)
    set_handler(end_program);
  dlclose(library);
}

} // namespace kavo::host
