// The player's settings: read when play begins, effective at once when they change, and kept.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/settings/settings.h"

namespace kavo::host {

// What a start asks of the window, and no setting does: it remembers its own place.
struct WindowWish {
  std::optional<int> scale; // the picture's size, in times
  std::optional<bool> is_full_screen;
};

class SettingsStore {
public:
  // `is_key` says whether a key is called that, where the game is played; without it any name is
  // one.
  explicit SettingsStore(IsKey is_key = {}) : is_key_(std::move(is_key)) {}

  // From settings.ini in this folder; without a folder nothing is read and nothing kept. A first
  // start leaves a file there, if it can. What the environment asks for (QORRT_CALM, QORRT_RECORD,
  // QORRT_MUSIC, QORRT_EFFECTS, QORRT_LANG) goes before the file and is not kept.
  void open(const std::filesystem::path& folder);

  const Settings& current() const { return current_; }

  // Effective at once. What differs from the current settings is kept in the file as it is by then,
  // for another copy of the program or the player may have changed it meanwhile. Never fails: the
  // reason for which it cannot be kept is told once.
  void change(const Settings& wanted);

  // From QORRT_SCALE and QORRT_FULLSCREEN.
  const WindowWish& window() const { return window_; }

  // There was no file.
  bool is_first_start() const { return is_first_start_; }

  // What the player should know: lines that have come up since the last time.
  std::vector<std::string> take_news();

private:
  void read_file();
  void read_environment();
  void read_window_wish();
  void keep(const Settings& before, const Settings& after);
  void give_up(const std::string& reason);

  IsKey is_key_;
  std::filesystem::path file_; // empty: none
  Settings current_;
  WindowWish window_;
  bool is_first_start_ = false;
  bool has_given_up_ = false;
  std::vector<std::string> news_;
};

} // namespace kavo::host
