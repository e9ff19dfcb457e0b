// What a player can do while a recorded game is shown, and the line that says what it is.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/settings/settings.h"

namespace kavo::host {

// As the program that plays it tells with each picture.
struct ReplayReport {
  enum class Standing : uint8_t { playing, as_recorded, cut_off, diverged };
  Standing standing = Standing::playing;
  double milliseconds = 0; // of the game that were played again
  double length_ms = 0;    // that were recorded
  int64_t frame = 0;       // how many were the same
};

class ReplayControls {
public:
  // What the program is to do next.
  static constexpr double to_the_end = 0; // without showing all of it
  static constexpr double leave = -1;

  bool is_on() const { return is_on_; }

  // A report comes with every picture of a replay; after the last one it is over.
  void take(const ReplayReport& report);
  void end() { *this = {}; }

  // How many times as fast as it was played, or one of the two above.
  double wish() const;

  bool is_paused() const { return is_on_ && is_paused_; }

  // Space and P pause; 1, 2, 4, 8 and the arrows set the pace; End goes to the end; Escape leaves.
  void press(std::string_view key);
  void click() { toggle_pause(); }

  // In English or German.
  std::string line(Language language) const;

private:
  bool has_ended() const { return report_.standing != ReplayReport::Standing::playing; }
  void toggle_pause();
  void change_pace(int by);

  ReplayReport report_;
  bool is_on_ = false;
  bool is_paused_ = false;
  bool is_to_end_ = false;
  bool is_to_leave_ = false;
  int pace_ = 0; // as a power of two
};

} // namespace kavo::host
