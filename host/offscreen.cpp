#include "host/offscreen.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <utility>

namespace kavo::host {

namespace {

class OffscreenDisplay final : public Presenter {
public:
  explicit OffscreenDisplay(std::string unplayable_reason)
      : unplayable_reason_(std::move(unplayable_reason)) {}

  void present(Canvas&) override {}
  void deliver_events(EventSink&) override {}
  const std::string& unplayable_reason() const override { return unplayable_reason_; }

private:
  std::string unplayable_reason_;
};

class NoSound final : public sound::Output {
public:
  int open() override { throw sound::OutputError("there is no device here"); }
  void start(sound::AudioSource&) override {}
  bool is_lost() const override { return false; }
  void close() override {}
  double fade_in_seconds() const override { return 0; }
  double fade_out_seconds() const override { return 0; }
  void wait() override {}
};

constexpr std::string_view named_keys[] = {"Left",   "Right",     "Up",     "Down", "Space",
                                           "Return", "Escape",    "Tab",    "Home", "End",
                                           "Insert", "Backspace", "Delete", "F1",   "F11"};

bool is_letter_or_digit(std::string_view name) {
  return name.size() == 1 &&
         ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= '0' && name[0] <= '9'));
}

} // namespace

std::unique_ptr<Presenter> open_offscreen_display(std::string unplayable_reason) {
  return std::make_unique<OffscreenDisplay>(std::move(unplayable_reason));
}

std::unique_ptr<Presenter> Offscreen::open_display(const ScreenRequest&) {
  return open_offscreen_display("");
}

std::unique_ptr<sound::Output> Offscreen::make_sound_output() {
  return std::make_unique<NoSound>();
}

std::optional<int> Offscreen::code_of_key(const std::string& name) {
  constexpr int first_named = 256; // above all characters
  if (is_letter_or_digit(name))
    return name[0];
  const auto* const found = std::ranges::find(named_keys, name);
  if (found == std::end(named_keys))
    return std::nullopt;
  return first_named + static_cast<int>(found - std::begin(named_keys));
}

void Offscreen::tell(const std::string& line) {
  static_cast<void>(std::fprintf(stderr, "%s\n", line.c_str()));
}

void Offscreen::end_program(int status) {
  std::exit(status);
}

} // namespace kavo::host
