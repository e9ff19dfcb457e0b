// What becomes of the program when the X server ends or cuts the connection.
#pragma once

namespace kavo::host {

// From now on the program then ends with a message for its player and exit status 1; Xlib allows
// nothing but an end. Does nothing when Xlib is not in use.
void end_in_order_when_the_display_is_lost();

} // namespace kavo::host
