#include "host/signals.h"

#include <atomic>
#include <cstdint>
#include <ctime>

namespace kavo::host {

namespace {

constexpr int64_t patience_ms = 2000;

std::atomic<int64_t> first_arrival_ms = 0; // 0: none has arrived
static_assert(decltype(first_arrival_ms)::is_always_lock_free, "a signal handler uses it");

int64_t now_ms() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000 + 1;
}

void remember(int signal) {
  const int64_t now = now_ms();
  int64_t first = 0;
  if (first_arrival_ms.compare_exchange_strong(first, now) || now - first <= patience_ms)
    return;
  std::signal(signal, SIG_DFL);
  std::raise(signal); // takes effect when this handler returns
}

} // namespace

SignalHandlers::SignalHandlers(std::initializer_list<int> signals, void (*handler)(int)) {
  ours_.reserve(signals.size()); // what fails must not fail when a handler is in place
  struct sigaction ours = {};
  ours.sa_handler = handler;
  ours.sa_flags = static_cast<int>(SA_RESTART);
  sigemptyset(&ours.sa_mask);
  for (const int signal : signals) {
    struct sigaction previous = {};
    sigaction(signal, nullptr, &previous);
    if (previous.sa_handler != SIG_DFL)
      continue;
    sigaction(signal, &ours, nullptr);
    ours_.push_back(signal);
  }
}

SignalHandlers::~SignalHandlers() {
  for (const int signal : ours_)
    std::signal(signal, SIG_DFL);
}

QuitSignals::QuitSignals() : handlers_({SIGINT, SIGTERM}, remember) {
  first_arrival_ms = 0;
}

bool QuitSignals::has_arrived() {
  return first_arrival_ms != 0;
}

} // namespace kavo::host
