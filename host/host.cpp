#include "host/host.h"

#include <SDL.h>

#include <cstdlib>

#include "host/command.h"

namespace kavo::host {

Host::Host() {
  // Before SDL starts, or it would take the signals.
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  SDL_SetMainReady();
}

Host::~Host() {
  sound.reset();
  screen.close();
  SDL_Quit();
}

void Host::show_picture() {
  screen.presenter().present(screen.canvas());
  take_events();
  sound->tend();
  keyboard.end_frame();
  has_taken_events_ = false;
  end_program_if_asked();
}

bool Host::is_key_held(std::string_view key_name) {
  const Presenter& presenter = screen.presenter();
  const int code = key_names_.code_of(key_name);
  if (!presenter.unplayable_reason().empty())
    throw CommandError(presenter.unplayable_reason());
  if (!has_taken_events_)
    take_events();
  return keyboard.is_held(code);
}

void Host::end_frame(int64_t token) {
  frames_.end(token);
  end_program_if_asked();
}

void Host::take_events() {
  has_taken_events_ = true;
  if (screen.is_open())
    events.take_from(screen.presenter());
}

void Host::end_program_if_asked() {
  if (QuitSignals::has_arrived())
    events.ask_to_quit();
  if (!events.is_quitting() || frames_.is_inside())
    return;
  sound.reset();
  screen.close();
  SDL_Quit();
  std::exit(EXIT_SUCCESS);
}

} // namespace kavo::host
