// Pictures as PNG.
#pragma once

#include <string>

#include "host/screen/canvas.h"

namespace kavo::host {

// The bytes of a PNG file with the canvas in 8 bits per colour. Throws CommandError with libpng's
// reason.
std::string png_of(const Canvas& canvas);

} // namespace kavo::host
