// The place that a program is played in, and all that the host knows of it: where pictures go and
// actions come from, where sound goes, what the names of keys mean, how to tell the player
// something, how to end. A desktop is one such place; its twin without a window (offscreen.h), a
// test's stage are others.
//
// Whoever links the host chooses one by defining make_platform(), in one line.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "host/screen/presenter.h"
#include "host/sound/output.h"

namespace kavo::host {

class Platform {
public:
  Platform() = default;
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;
  // After everything that it handed out has gone.
  virtual ~Platform() = default;

  // One display is open at a time. Never fails: where nobody can see pictures the presenter gives
  // the reason (Presenter::unplayable_reason) and takes them all the same.
  virtual std::unique_ptr<Presenter> open_display(const ScreenRequest& request) = 0;

  // Closed; SOUND.INIT opens it. Asked for once.
  virtual std::unique_ptr<sound::Output> make_sound_output() = 0;

  // What a key of this name stands for: the code that its events carry. Nothing when no key is
  // called exactly that.
  virtual std::optional<int> code_of_key(const std::string& name) = 0;

  // The player's language as the system names it, such as "de_DE.UTF-8"; empty when nobody knows.
  virtual std::string locale() { return {}; }

  // Where the player's settings lie, whether or not it is there yet; empty where none are kept.
  virtual std::filesystem::path settings_folder() { return {}; }

  // Where the player's last games are kept, whether or not it is there yet; empty where none are.
  virtual std::filesystem::path games_folder() { return {}; }
  // Where what the program remembers by itself lies, in the same way.
  virtual std::filesystem::path state_folder() { return {}; }

  // One line, without its end, that the player should read. Play goes on.
  virtual void tell(const std::string& line) = 0;

  // What the player should have read before play begins or before the program ends, for places
  // where nobody reads tell()'s lines. Returns when that is done; at once in all other places.
  virtual void show_message(const std::string& text) { static_cast<void>(text); }

  // Ends the program. Sound is silent and the display closed by then.
  [[noreturn]] virtual void end_program(int status) = 0;
};

// The place that this program is played in; called whenever a host starts.
std::unique_ptr<Platform> make_platform();

} // namespace kavo::host
