#include "host/desktop/message_window.h"

#include <SDL.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <string_view>

namespace kavo::host {

namespace {

constexpr const char* title = "KAVO";
constexpr size_t line_width = 72; // characters

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool is_wanted() {
  const std::string_view driver = environment("SDL_VIDEODRIVER");
  const bool has_desktop =
      !environment("DISPLAY").empty() || !environment("WAYLAND_DISPLAY").empty();
  return environment("QORRT_MESSAGES") == "window" && ::isatty(STDERR_FILENO) == 0 && has_desktop &&
         driver != "dummy" && driver != "offscreen";
}

// The program answers these signals while it plays; here nothing would hear of its answer.
class UnansweredSignals {
public:
  UnansweredSignals() {
    for (size_t i = 0; i < signals.size(); ++i) {
      struct sigaction usual = {};
      usual.sa_handler = SIG_DFL;
      sigaction(signals[i], &usual, &answers_[i]);
    }
  }
  ~UnansweredSignals() {
    for (size_t i = 0; i < signals.size(); ++i)
      sigaction(signals[i], &answers_[i], nullptr);
  }
  UnansweredSignals(const UnansweredSignals&) = delete;
  UnansweredSignals& operator=(const UnansweredSignals&) = delete;

private:
  static constexpr std::array signals = {SIGINT, SIGTERM};
  std::array<struct sigaction, signals.size()> answers_ = {};
};

// SDL shows the window in a process of its own, which must not outlive this one.
bool is_showing = false;

void end_with_parent() {
  if (is_showing)
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace

void show_message_window(const std::string& text) {
  if (!is_wanted())
    return;
  static const bool is_tied = pthread_atfork(nullptr, nullptr, end_with_parent) == 0;
  static_cast<void>(is_tied);
  const UnansweredSignals signals;
  is_showing = true;
  SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_INFORMATION, title, wrapped(text, line_width).c_str(),
                           nullptr);
  is_showing = false;
}

std::string wrapped(const std::string& text, size_t width) {
  std::string result;
  size_t column = 0;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find_first_of(" \n", start), text.size());
    if (column > 0 && column + 1 + (end - start) > width) {
      result += '\n';
      column = 0;
    } else if (column > 0) {
      result += ' ';
      ++column;
    }
    result.append(text, start, end - start);
    column += end - start;
    start = end + 1;
    if (end < text.size() && text[end] == '\n') {
      result += '\n';
      column = 0;
    }
  }
  return result;
}

} // namespace kavo::host
