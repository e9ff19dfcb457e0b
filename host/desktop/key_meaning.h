// What a key of the desktop's keyboard stands for.
#pragma once

#include <SDL_keyboard.h>

namespace kavo::host {

// The layout's code of the key, but for two kinds. The keypad stands in for Return and, while Num
// Lock is off, for the arrow keys. A letter of another script is the Latin letter that shares its
// place on most keyboards, or nobody could press A with a Russian layout.
SDL_Keycode meaning_of(const SDL_Keysym& key);

} // namespace kavo::host
