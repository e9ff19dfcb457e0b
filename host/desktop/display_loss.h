// What becomes of the program when the X server ends or cuts the connection, or refuses a request.
#pragma once

#include <SDL_video.h>

namespace kavo::host {

// From now on the program then ends with a message for its player and exit status 1; Xlib allows
// nothing but an end. Does nothing when Xlib is not in use.
void end_in_order_when_the_display_is_lost();

// The same end when the Wayland compositor of the window has gone: SDL then tells of a wish to
// leave, which is not the player's. Does nothing while the compositor is there, or on X.
void end_if_the_compositor_is_lost(SDL_Window* window);

// From now on a request that the X server refuses is noted once on standard error and play goes on,
// where Xlib would end the program: a window manager may take from under the window what a request
// names. Does nothing when Xlib is not in use.
void play_on_after_errors_of_the_display();

} // namespace kavo::host
