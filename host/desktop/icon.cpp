#include "host/desktop/icon.h"

#include <memory>

#include "host/desktop/icon_data.h"

namespace kavo::host {

namespace {

struct FreeSurface {
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};

} // namespace

// A window without its icon is still a window: nothing here fails.
void set_icon(SDL_Window* window) {
  constexpr int bytes_per_pixel = 4;
  // SDL only reads the pixels, which it cannot say.
  const std::unique_ptr<SDL_Surface, FreeSurface> surface(SDL_CreateRGBSurfaceWithFormatFrom(
      const_cast<uint8_t*>(icon_rgba), icon_width, icon_height, bytes_per_pixel * 8,
      icon_width * bytes_per_pixel, SDL_PIXELFORMAT_RGBA32));
  if (surface)
    SDL_SetWindowIcon(window, surface.get());
}

} // namespace kavo::host
