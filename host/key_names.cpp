#include "host/key_names.h"

#include <SDL_keyboard.h>

#include "host/command.h"

namespace kavo::host {

int KeyNames::code_of(std::string_view name) {
  const auto known = known_.find(name);
  if (known != known_.end())
    return known->second;
  std::string key(name);
  const SDL_Keycode code = SDL_GetKeyFromName(key.c_str());
  // SDL ignores case; a name that is not its own is a mistake in the program.
  if (code == SDLK_UNKNOWN || key != SDL_GetKeyName(code))
    throw CommandError("argument 1: unknown key " + shown(name));
  return known_.emplace(std::move(key), code).first->second;
}

} // namespace kavo::host
