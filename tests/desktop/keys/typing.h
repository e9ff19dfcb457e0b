// Somebody types on a real X server, and the program with the game's reading of keys tells what it
// saw. What was typed and what was seen are compared change by change.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/desktop.h"

namespace kavo::typing {

// The ten keys of the game by their first names, as X calls them.
extern const std::vector<std::string> game_keys;
// The four directions, each by both of its keys.
extern const std::vector<std::string> direction_keys;

class Typist {
public:
  // The program sleeps so long in each frame.
  explicit Typist(int frame_ms = 16);

  // A press of a key waits until X counts it as one of its own: a release and a press of one key
  // within two milliseconds are taken for auto-repeat.
  void press(const std::string& key);
  void release(const std::string& key);
  void tap(const std::string& key);
  bool is_down(const std::string& key) const;

  // Presses that reach nobody, and changes that the program is not to see: not counted.
  void press_unseen(const std::string& key);
  void release_unseen(const std::string& key);
  // Counts as the release of what is held.
  void take_the_keyboard_away();
  void give_it_back();

  void move_pointer_out_and_in();

  // Holds the program up: with frames that read no key, or by stopping it altogether.
  void make_it_busy();
  void stop_it();
  void let_it_go_on();

  // A frame reports one quick tap at the most, and a busy machine has few frames: waits until the
  // program has seen all but the last few presses.
  void let_it_catch_up() const;

  // Waits until the program has written the text so often; false when it does not.
  bool says(const std::string& text, int times = 1) const;
  int count_in_output(const std::string& text) const;

  // Ends the program, lets go of what is held first, and finds what it saw to be what was typed:
  // all changes, each once, frame by frame in their order, no two of one key in one frame. The
  // first difference in words, or nothing.
  std::string difference_at_the_end();

  int presses() const { return presses_; }
  // How many frames of the program anything changed in; known at the end.
  int frames() const { return frames_; }

private:
  void count(const std::string& key, bool is_down);
  std::string difference_to(const std::string& output);

  kavo::desktop::Desktop desktop_;
  std::unique_ptr<kavo::desktop::Process> program_;
  std::optional<kavo::desktop::DesktopWindow> window_;
  std::map<std::string, std::chrono::steady_clock::time_point> released_;
  std::vector<std::string> held_;
  std::vector<std::string> typed_; // "+left", "-left", in order
  int presses_ = 0;
  int frames_ = 0;
};

} // namespace kavo::typing
