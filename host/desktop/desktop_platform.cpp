#include "host/desktop/desktop_platform.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "host/command_error.h"
#include "host/desktop/message_window.h"
#include "host/desktop/players_folder.h"
#include "host/desktop/sdl_output.h"
#include "host/desktop/window.h"
#include "host/offscreen.h"

namespace kavo::host {

namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string no_display(const std::string& reason) {
  return "no display: start the game in a desktop session, or set DISPLAY or WAYLAND_DISPLAY (" +
         reason + ")";
}

// What the sound server's mixer shows of the game. SDL's hints and the libraries' own variables
// hold what a player has set already; SDL knows of no icon, which the servers' libraries take from
// there.
void introduce_to_the_mixer() {
  SDL_SetHint(SDL_HINT_APP_NAME, "KAVO");
  SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_NAME, "KAVO");
  setenv("PULSE_PROP_application.icon_name", "kavo", 0);
  setenv("PULSE_PROP_media.role", "game", 0);
  SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_ROLE, "game"); // to PipeWire only
  setenv("PIPEWIRE_PROPS", "{ application.icon_name = kavo }", 0);
}

} // namespace

DesktopPlatform::DesktopPlatform() {
  introduce_to_the_mixer();
  // Before SDL starts, or it would take the signals.
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  // SDL looks for the session's bus; where none is named, that would start one.
  setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 0);
  SDL_SetMainReady();
}

DesktopPlatform::~DesktopPlatform() {
  SDL_Quit();
}

std::unique_ptr<Presenter> DesktopPlatform::open_display(const ScreenRequest& request) {
  const std::string_view driver = environment("SDL_VIDEODRIVER");
  if (driver == "dummy" || driver == "offscreen")
    return open_offscreen_display("");
  const bool has_desktop =
      !environment("DISPLAY").empty() || !environment("WAYLAND_DISPLAY").empty();
  if (driver.empty() && !has_desktop)
    return open_offscreen_display(no_display("neither is set"));
  try {
    return std::make_unique<Window>(request);
  } catch (const CommandError& error) {
    return open_offscreen_display(no_display(error.what()));
  }
}

std::unique_ptr<sound::Output> DesktopPlatform::make_sound_output() {
  return std::make_unique<sound::SdlOutput>();
}

// SDL ignores case; a name that is not its own is a mistake in the program.
std::optional<int> DesktopPlatform::code_of_key(const std::string& name) {
  const SDL_Keycode code = SDL_GetKeyFromName(name.c_str());
  if (code == SDLK_UNKNOWN || name != SDL_GetKeyName(code))
    return std::nullopt;
  return code;
}

// LANGUAGE is a list of which the first one counts, and only where there is a locale at all.
std::string DesktopPlatform::locale() {
  std::string_view locale;
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (locale.empty())
      locale = environment(variable);
  const std::string_view languages = environment("LANGUAGE");
  const bool is_plain = locale.empty() || locale == "C" || locale == "POSIX" || locale == "C.UTF-8";
  return std::string(is_plain || languages.empty() ? locale
                                                   : languages.substr(0, languages.find(':')));
}

std::filesystem::path DesktopPlatform::settings_folder() {
  return players_folder("XDG_CONFIG_HOME", ".config");
}

std::filesystem::path DesktopPlatform::games_folder() {
  const std::filesystem::path folder = state_folder();
  return folder.empty() ? folder : folder / "games";
}

std::filesystem::path DesktopPlatform::state_folder() {
  return players_folder("XDG_STATE_HOME", ".local/state");
}

void DesktopPlatform::tell(const std::string& line) {
  static_cast<void>(std::fprintf(stderr, "%s\n", line.c_str()));
}

void DesktopPlatform::show_message(const std::string& text) {
  show_message_window(text);
}

void DesktopPlatform::end_program(int status) {
  SDL_Quit();
  std::exit(status);
}

} // namespace kavo::host
