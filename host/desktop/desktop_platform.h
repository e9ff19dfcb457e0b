// The desktop as a place to play in, through SDL.
#pragma once

#include "host/platform.h"

namespace kavo::host {

class DesktopPlatform final : public Platform {
public:
  // Before anything else asks SDL for something.
  DesktopPlatform();
  ~DesktopPlatform() override;

  // A window when there is a desktop to put it on. Without one, or when SDL_VIDEODRIVER names a
  // driver without a screen (dummy, offscreen), the twin's display.
  std::unique_ptr<Presenter> open_display(const ScreenRequest& request) override;
  // The machine's sound device.
  std::unique_ptr<sound::Output> make_sound_output() override;
  // By the keyboard's layout: "Left", "Space", "A", …
  std::optional<int> code_of_key(const std::string& name) override;
  // From LANGUAGE, LC_ALL, LC_MESSAGES or LANG.
  std::string locale() override;
  // Below $XDG_CONFIG_HOME.
  std::filesystem::path settings_folder() override;
  std::filesystem::path games_folder() override;
  // Below $XDG_STATE_HOME.
  std::filesystem::path state_folder() override;
  // On standard error.
  void tell(const std::string& line) override;
  // In a window, when the game was started from a menu.
  void show_message(const std::string& text) override;
  [[noreturn]] void end_program(int status) override;
};

} // namespace kavo::host
