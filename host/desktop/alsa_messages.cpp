#include "host/desktop/alsa_messages.h"

#include <dlfcn.h>

namespace kavo::sound {

namespace {

using Handler = void (*)(const char* file, int line, const char* function, int error,
                         const char* format, ...);
using SetHandler = int (*)(Handler handler);

void say_nothing(const char*, int, const char*, int, const char*, ...) {}

} // namespace

// The library is found, not linked: which sound system is used is SDL's business.
void silence_alsa() {
  void* const library = dlopen("libasound.so.2", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr)
    return;
  const auto set_handler =
      reinterpret_cast<SetHandler>(dlsym(library, "snd_lib_error_set_handler"));
  if (set_handler != nullptr)
    set_handler(say_nothing);
  dlclose(library);
}

} // namespace kavo::sound
