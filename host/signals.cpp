#include "host/signals.h"

namespace kavo::host {

namespace {

volatile std::sig_atomic_t signal_has_arrived = 0;

void remember(int) {
  signal_has_arrived = 1;
}

} // namespace

QuitSignals::QuitSignals() : previous_{{{SIGINT, false, {}}, {SIGTERM, false, {}}}} {
  signal_has_arrived = 0;
  struct sigaction ours = {};
  ours.sa_handler = remember;
  ours.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  sigemptyset(&ours.sa_mask);
  for (Previous& previous : previous_) {
    sigaction(previous.signal, nullptr, &previous.action);
    previous.is_ours = previous.action.sa_handler == SIG_DFL;
    if (previous.is_ours)
      sigaction(previous.signal, &ours, nullptr);
  }
}

QuitSignals::~QuitSignals() {
  for (const Previous& previous : previous_)
    if (previous.is_ours)
      sigaction(previous.signal, &previous.action, nullptr);
}

bool QuitSignals::has_arrived() {
  return signal_has_arrived != 0;
}

} // namespace kavo::host
