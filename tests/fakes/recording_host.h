// A host without a world: it answers the thirteen operations, writes down every command, follows a
// script for chance and keys, can fail on command, and does the array and file commands for real.
//
// It is strict about the call convention: a command that is sent while the one before it has not
// been polled is a failure, and so is any command after one that failed.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kavo::test {

class RecordingHost {
public:
  // ---- script ----
  std::deque<double> chance;              // what RND answers next; after these, `random` decides
  uint64_t random_seed = 1;               // seed of the numbers that follow the script
  std::set<std::string> keys;             // names of the keys that are held, which read 1
  std::map<std::string, double> readings; // keys that read this instead
  std::function<void()> on_flip;          // called after every SCREENFLIP
  std::function<void()> on_frame;         // called when the main loop begins a frame
  int64_t fail_at = 0;                    // the command with this number (from 1) fails; 0 for none
  std::string fail_name;                  // commands of this name fail; "" for none
  bool is_discarding = false;             // count commands, but write nothing down

  // ---- record ----
  std::vector<std::string> trace;  // one line a command, see describe()
  std::vector<std::string> faults; // breaches of the convention
  int64_t commands = 0;
  int64_t draws = 0;       // RND results that were handed out
  int64_t open_frames = 0; // frame scopes that are open now
  int64_t frames = 0;      // frame scopes opened so far
  bool is_shut_down = false;
  std::vector<std::string> arguments; // of the program that started the host
  bool can_dispatch_events = false;   // the runtime's dispatcher was handed over

  // The lines whose command has this name.
  std::vector<std::string> sent(std::string_view name) const;
  int64_t count(std::string_view name) const;

  // Forgets the record, keeps the script.
  void forget();

  // Back to the first moment.
  void reset() { *this = RecordingHost(); }

  // ---- used by the operations ----
  static constexpr int64_t handle = 7;
  void expect_handle(int64_t given) {
    if (given != handle)
      faults.push_back("an operation under the handle " + std::to_string(given));
  }
  bool begin_command(const char* name);
  void polled() { has_debt_ = false; }
  void fail(std::string message);
  void clear_error() { error_.clear(); }
  const char* error() const { return error_.empty() ? nullptr : error_.c_str(); }
  double next_chance();
  double reading_of(const std::string& key) const;

private:
  std::string error_;
  std::string unpolled_;
  bool has_debt_ = false;
  bool has_failed_ = false;
};

RecordingHost& recording_host();

} // namespace kavo::test
