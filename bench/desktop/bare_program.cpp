// The least that a program with SDL2 does to show a picture: every 16 ms, as often as the game, it
// draws all of it anew and shows it. One square moves, so that no frame is the last one again.
#include <SDL.h>

#include <cstdlib>

namespace {

constexpr int width = 660;
constexpr int height = 800;
constexpr int pause_ms = 16;

bool is_asked_to_end() {
  SDL_Event event = {};
  while (SDL_PollEvent(&event) != 0)
    if (event.type == SDL_QUIT)
      return true;
  return false;
}

void show_frame(SDL_Renderer* renderer, int frame) {
  SDL_SetRenderDrawColor(renderer, 12, 26, 44, 255);
  SDL_RenderClear(renderer);
  const SDL_Rect square = {frame % width, height / 2, 24, 24};
  SDL_SetRenderDrawColor(renderer, 232, 230, 200, 255);
  SDL_RenderFillRect(renderer, &square);
  SDL_RenderPresent(renderer);
}

} // namespace

// SDL draws by itself, without a graphics driver.
int main(int, char**) {
  if (SDL_Init(SDL_INIT_VIDEO) != 0)
    return EXIT_FAILURE;
  SDL_Window* window = SDL_CreateWindow("bare", 0, 0, width, height, 0);
  SDL_Renderer* renderer =
      window == nullptr ? nullptr : SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
  if (renderer == nullptr)
    return EXIT_FAILURE;
  for (int frame = 0; !is_asked_to_end(); ++frame) {
    show_frame(renderer, frame);
    SDL_Delay(pause_ms);
  }
  SDL_Quit();
}
