#include "host/desktop/key_meaning.h"

namespace kavo::host {

namespace {

// Unicode has Latin's letters, accented ones too, before all others. Keys without a letter are
// above all letters.
bool is_letter_of_other_script(SDL_Keycode code) {
  constexpr SDL_Keycode first_after_latin = 0x0370;
  return code >= first_after_latin && (code & SDLK_SCANCODE_MASK) == 0;
}

SDL_Keycode latin_meaning_of(const SDL_Keysym& key) {
  const bool is_letter_key = key.scancode >= SDL_SCANCODE_A && key.scancode <= SDL_SCANCODE_Z;
  if (is_letter_key && is_letter_of_other_script(key.sym))
    return SDLK_a + (key.scancode - SDL_SCANCODE_A);
  return key.sym;
}

} // namespace

SDL_Keycode meaning_of(const SDL_Keysym& key) {
  const bool has_digits = (key.mod & KMOD_NUM) != 0;
  switch (key.sym) {
  case SDLK_KP_ENTER:
    return SDLK_RETURN;
  case SDLK_KP_4:
    return has_digits ? key.sym : SDLK_LEFT;
  case SDLK_KP_6:
    return has_digits ? key.sym : SDLK_RIGHT;
  case SDLK_KP_8:
    return has_digits ? key.sym : SDLK_UP;
  case SDLK_KP_2:
    return has_digits ? key.sym : SDLK_DOWN;
  default:
    return latin_meaning_of(key);
  }
}

} // namespace kavo::host
