// SIGINT (Ctrl-C) and SIGTERM as a wish to end in order.
#pragma once

#include <array>
#include <csignal>

namespace kavo::host {

// Listens while it lives; one at a time. A signal that the program or its parent handles or
// ignores already is left alone. The first signal sets a flag; the second one has its usual
// effect again, so that a program that hangs can still be stopped.
class QuitSignals {
public:
  QuitSignals();
  ~QuitSignals();
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;

  static bool has_arrived();

private:
  struct Previous {
    int signal;
    bool is_ours;
    struct sigaction action;
  };
  std::array<Previous, 2> previous_;
};

} // namespace kavo::host
