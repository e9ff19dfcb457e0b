// Another program, started with its own environment and looked at from outside.
#pragma once

#include <sys/types.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kavo::desktop {

struct Launch {
  std::vector<std::string> arguments;                            // the first is the program
  std::map<std::string, std::optional<std::string>> environment; // changes; nullopt unsets
  std::string folder = ".";                                      // where it runs
  std::function<void()> last_act = {}; // in the new process, before it becomes the program
};

// How a program ended and all that it said.
struct Outcome {
  bool has_exited; // false: a signal ended it
  int code;        // exit status, or the signal
  std::string output;
  std::string errors;
};

// Ends with the test: a process that still runs is killed.
class Process {
public:
  explicit Process(const Launch& launch);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  pid_t id() const { return id_; }
  bool is_running();
  void send_signal(int signal) const;

  // What it has written to standard output by now.
  std::string output_so_far() const;
  // And to standard error.
  std::string errors_so_far() const;

  // Waits until it ends. Throws std::runtime_error, with what it said so far, when that takes
  // longer than a minute.
  Outcome wait();

private:
  void reap(bool is_to_block);

  pid_t id_ = -1;
  std::optional<int> status_;
  int output_ = -1; // memory files: the program never blocks on them
  int errors_ = -1;
};

} // namespace kavo::desktop
