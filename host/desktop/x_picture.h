// The picture in a window of an X server that SDL has no pixels for: one whose pixels are of a kind
// that it does not know, such as those of ten bits a component or of a palette, or that is larger
// than any display.
#pragma once

#include <SDL.h>

#include <memory>

#include "host/screen/canvas.h"
#include "host/screen/scaler.h"

namespace kavo::host {

class XPicture {
public:
  // Null when SDL's window is none of an X server's.
  static std::unique_ptr<XPicture> in(SDL_Window* window);

  virtual ~XPicture() = default;

  // Shows the picture in the middle of a window of this size, black around it. The scaled picture
  // is bounded, so that its memory is, however large the window.
  virtual void show(const Canvas& canvas, Size window) = 0;
};

} // namespace kavo::host
