// The picture by which desktops tell the window from others; part of the program, no file is read.
#pragma once

#include <SDL.h>

namespace kavo::host {

void set_icon(SDL_Window* window);

} // namespace kavo::host
