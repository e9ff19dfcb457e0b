#include "tests/soak/play.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "game/program.h"
#include "game/state.h"
#include "tests/fakes/stage.h"

namespace kavo::soak {

namespace {

// Tells the game which keys went up and down since the last picture.
class Keyboard {
public:
  void hold(const kavo::test::Keys& keys, host::EventSink& sink) {
    for (const std::string& name : held_)
      if (!keys.contains(name))
        sink.key_went_up(kavo::test::key_named(name));
    for (const std::string& name : keys)
      if (!held_.contains(name))
        sink.key_went_down(kavo::test::key_named(name), false);
    held_ = keys;
  }

private:
  kavo::test::Keys held_;
};

Out<> play_to_the_end(kavo::test::Visitor& visitor, const std::function<void()>& each_frame) {
  char name[] = "kavo";
  char* arguments[] = {name, nullptr};
  kavo::test::Keys held;
  kavo::test::stage().play = [&, keyboard = Keyboard()](host::EventSink& sink) mutable {
    keyboard.hold(held, sink);
  };
  DO(start_up(1, arguments));
  while (!QUITFLAG) {
    each_frame();
    held = visitor.keys();
    DO(run_frame());
  }
  DO(shut_down());
  return {};
}

} // namespace

void play(kavo::test::Visitor& visitor, const std::function<void()>& each_frame) {
  setenv("QORRT_SEED", "5", 1);
  static_cast<void>(play_to_the_end(visitor, each_frame));
  if (qor_err_code() != 0)
    qor_throw_uncaught();
  release_state();
  kavo::test::stage() = {};
}

void tell_what_was_played(const kavo::test::Visitor& visitor) {
  std::printf("%lld frames, %lld games, %lld names entered\n",
              static_cast<long long>(visitor.frames()), static_cast<long long>(visitor.games()),
              static_cast<long long>(visitor.names()));
}

int64_t whole_number(const char* text) {
  int64_t number = 0;
  const char* end = text + std::strlen(text);
  const auto [rest, error] = std::from_chars(text, end, number);
  return error == std::errc() && rest == end && number > 0 ? number : 0;
}

} // namespace kavo::soak
