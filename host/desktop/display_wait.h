// Waiting for what a window system has to tell, without asking again and again.
#pragma once

#include <SDL_video.h>

namespace kavo::host {

// Returns when the window's display has something to tell, when a signal that is a wish to end has
// arrived, or after so many milliseconds. All that was told before has to be taken by then.
void wait_for_display(SDL_Window* window, int at_most_ms);

} // namespace kavo::host
