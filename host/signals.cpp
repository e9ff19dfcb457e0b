#include "host/signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
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

std::atomic<int> wakes_those_who_wait = -1;
static_assert(decltype(wakes_those_who_wait)::is_always_lock_free, "a signal handler uses it");

int woken = -1; // the end to wait on

// Of the signals that another listener has heard.
void empty_pipe() {
  std::array<char, 64> bytes = {};
  while (woken >= 0 && ::read(woken, bytes.data(), bytes.size()) > 0)
    continue;
}

void wake_those_who_wait() {
  const int error_of_the_interrupted = errno;
  if (wakes_those_who_wait >= 0)
    static_cast<void>(!::write(wakes_those_who_wait, "", 1)); // a full pipe has woken them already
  errno = error_of_the_interrupted;
}

void remember(int signal) {
  const int64_t now = now_ms();
  int64_t first = 0;
  if (first_arrival_ms.compare_exchange_strong(first, now) || now - first <= patience_ms)
    return wake_those_who_wait();
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
  empty_pipe();
}

// Both ends stay open as long as the program runs.
int QuitSignals::descriptor() {
  if (wakes_those_who_wait >= 0)
    return woken;
  std::array<int, 2> ends = {-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
    return -1;
  woken = ends[0];
  wakes_those_who_wait = ends[1];
  return woken;
}

bool QuitSignals::has_arrived() {
  return first_arrival_ms != 0;
}

} // namespace kavo::host
