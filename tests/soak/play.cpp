#include "tests/soak/play.h"

#include <dlfcn.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "game/program.h"
#include "game/state.h"

namespace kavo::soak {

namespace {

kavo::test::Keys held;

double state_of(const char* key) {
  return held.contains(key) ? 1.0 : 0.0;
}

using Call = double (*)(int64_t, const char*, const void*, const uint32_t*, int64_t);

Call real_call() {
  static const auto call = reinterpret_cast<Call>(dlsym(RTLD_NEXT, "qorrt_call_typed_f64"));
  return call;
}

Out<> play_to_the_end(kavo::test::Visitor& visitor, const std::function<void()>& each_frame) {
  char name[] = "kavo";
  char* arguments[] = {name, nullptr};
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
  setenv("SDL_VIDEODRIVER", "offscreen", 1);
  setenv("QORRT_SEED", "5", 1);
  static_cast<void>(play_to_the_end(visitor, each_frame));
  if (qor_err_code() != 0)
    qor_throw_uncaught();
  release_state();
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

// Stands before the host library's own.
extern "C" double qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                                       const uint32_t* tags, int64_t n) {
  if (std::string_view(name) == "GFX.KEYSTATE")
    return kavo::soak::state_of(static_cast<const qor_slot*>(slots)->str);
  return kavo::soak::real_call()(handle, name, slots, tags, n);
}
