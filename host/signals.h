// The signals that the program answers while its host lives.
#pragma once

#include <csignal>
#include <initializer_list>
#include <vector>

namespace kavo::host {

// Gives signals a handler for as long as it lives. A signal that the program or its parent handles
// or ignores already is left alone.
class SignalHandlers {
public:
  SignalHandlers(std::initializer_list<int> signals, void (*handler)(int));
  ~SignalHandlers();
  SignalHandlers(const SignalHandlers&) = delete;
  SignalHandlers& operator=(const SignalHandlers&) = delete;

private:
  std::vector<int> ours_;
};

// SIGINT (Ctrl-C) and SIGTERM as a wish to end in order; one listens at a time. However often they
// come they are one wish, for some programs send them twice. One that comes more than two seconds
// after the first has its usual effect, so that a program that hangs can still be stopped.
class QuitSignals {
public:
  QuitSignals();

  static bool has_arrived();

  // A descriptor that can be read from once one has arrived, for those who wait on several; -1 when
  // the system has none to give.
  static int descriptor();

private:
  SignalHandlers handlers_;
};

// Writing to a pipe that nobody reads and beyond the largest size of a file fails with an error
// like every other failure to write, instead of ending the program.
class WriteSignals {
  SignalHandlers handlers_{{SIGPIPE, SIGXFSZ}, SIG_IGN};
};

} // namespace kavo::host
