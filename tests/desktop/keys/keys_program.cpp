// A window that tells what its keys do, one line for each frame in which anything changed: "+left
// -space" for a press of Left and a release of Space. The keys are read by the game's own code,
// the frames are as long as the game's.
//
//   keys_program [milliseconds to sleep in a frame]
//
// F5 holds the loop up for a second with frames that read no key, as the animations of the game
// do, and begins with the line "busy". F6 ends the program. What X repeats while a key is held is
// told by lines of their own: "repeat".
#include <cstdio>
#include <cstdlib>
#include <string>

#include "game/commands.h"
#include "game/frame_scope.h"
#include "game/shell/input.h"
#include "game/state.h"

namespace {

using kavo::FrameScope;
using kavo::Out;

constexpr unsigned game_frame_ms = 16;
constexpr int frames_held_up = 60;
constexpr int frames_after_the_end = 4; // in which whatever is left would show

unsigned frame_ms = game_frame_ms;

void say(const std::string& line) {
  std::fputs((line + "\n").c_str(), stdout);
  std::fflush(stdout);
}

void tell_repeat(QorArray* arguments) {
  const auto* event = static_cast<const QorMap*>(qor_array_get_ptr(arguments, 0));
  if (qor_map_get_f64(event, "repeat") != 0.0)
    say("repeat");
}

void tell_changes() {
  const struct {
    const char* name;
    bool is_held;
    bool was_held;
    bool is_pressed;
  } keys[] = {
      {"left", kavo::KL, kavo::PL != 0.0, kavo::EL},
      {"right", kavo::KR, kavo::PR != 0.0, kavo::ER},
      {"up", kavo::KU, kavo::PU != 0.0, kavo::EU},
      {"down", kavo::KDN, kavo::PDN != 0.0, kavo::EDN},
      {"space", kavo::KSPACE != 0.0, kavo::PSPACE != 0.0, kavo::ESPACE},
      {"return", kavo::KENTER != 0.0, kavo::PENTER != 0.0, kavo::EENTER},
      {"p", kavo::KP != 0.0, kavo::PP != 0.0, kavo::EP},
      {"o", kavo::KO != 0.0, kavo::PO != 0.0, kavo::EO},
      {"m", kavo::KMK != 0.0, kavo::PMK != 0.0, kavo::EMK},
      {"escape", kavo::KESC != 0.0, kavo::PESC != 0.0, kavo::EESC},
  };
  std::string line;
  for (const auto& key : keys) {
    if (key.is_pressed)
      line += std::string(" +") + key.name;
    if (key.was_held && !key.is_held)
      line += std::string(" -") + key.name;
  }
  if (!line.empty())
    say(line.substr(1));
}

Out<> be_busy() {
  FrameScope scope;
  say("busy");
  for (int frame = 0; frame < frames_held_up; ++frame) {
    DO(kavo::command::screen_flip());
    DO(qor_sleep(game_frame_ms));
    scope.next_pass();
  }
  return {};
}

// True when the program is to end.
Out<bool> run_frame() {
  const FrameScope scope;
  DO(kavo::poll_keys());
  tell_changes();
  const bool is_to_end = TRY(kavo::command::key_state("F6")) != 0.0;
  const bool is_to_be_busy = TRY(kavo::command::key_state("F5")) != 0.0;
  DO(kavo::command::screen_flip());
  if (is_to_be_busy)
    DO(be_busy());
  kavo::remember_keys();
  DO(qor_sleep(frame_ms));
  return is_to_end;
}

Out<> run() {
  DO(kavo::command::screen(66, 80, "keys", 1));
  while (!TRY(run_frame())) {
  }
  for (int frame = 0; frame < frames_after_the_end; ++frame)
    static_cast<void>(TRY(run_frame()));
  return {};
}

} // namespace

int main(int argc, char** argv) {
  if (argc > 1)
    frame_ms = static_cast<unsigned>(std::atoi(argv[1]));
  // A program of no name, for it has no scores.
  const int64_t handle = qorrt_init(0, nullptr);
  qor_runtime_set_handle(handle);
  qorrt_set_event_dispatcher(handle, qorrt_dispatch_event);
  qorrt_register_event_handler("KEYDOWN", tell_repeat);
  static_cast<void>(run());
  if (qor_err_code() != 0)
    qor_throw_uncaught();
  qorrt_shutdown(handle);
}
