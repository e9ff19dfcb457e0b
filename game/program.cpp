#include "game/program.h"

#include "game/audio/sounds.h"
#include "game/commands.h"
#include "game/frame_scope.h"
#include "game/highscores/table.h"
#include "game/playfield/pieces.h"
#include "game/shell/input.h"
#include "game/shell/scenes.h"
#include "game/shell/screens.h"
#include "game/state.h"
#include "game/wiring.h"

namespace kavo {

namespace {

constexpr unsigned frame_pause_ms = 16;

void start_host(int argc, char** argv) {
  qor_set_args(argc, argv);
  const int64_t handle = qorrt_init(argc, argv);
  qor_runtime_set_handle(handle);
  qorrt_set_event_dispatcher(handle, qorrt_dispatch_event);
}

// The stars stay where they are for the whole run.
Out<> place_background_stars() {
  for (BI = 0; BI < NBG; ++BI) {
    const int64_t x = qor_int(TRY(command::rnd(1)) * static_cast<double>(SCRW));
    DO(qor_array_set(BGSTAR_X.get(), BI, static_cast<double>(x)));
    const int64_t y = qor_int(TRY(command::rnd(1)) * 110);
    DO(qor_array_set(BGSTAR_Y.get(), BI, static_cast<double>(y)));
  }
  return {};
}

Out<> create_state() {
  DO(set_initial_values());
  DO(command::rnd(-1.0));
  DO(place_background_stars());
  // A falling piece and a preview exist before the first game: the scenes draw with them.
  DO(ROLLNEXT());
  DO(SPAWNPIECE());
  DO(LOADHIGH());
  return {};
}

void read_arguments() {
  ARGS.reset(qor_os_args());
  const int64_t count = qor_array_len(ARGS.get());
  TESTMODE = count >= 2 && qor_str_eq(qor_array_get_str(ARGS.get(), 1), "shot") != 0;
  TESTTAB$ = copy(count > 2 ? qor_array_get_str(ARGS.get(), 2) : "");
}

Out<> run_frames() {
  do {
    DO(run_frame());
    wiring.frame_ended();
  } while (!QUITFLAG);
  return {};
}

} // namespace

Out<> start_up(int argc, char** argv) {
  ENTER();
  DO(start_host(argc, argv));
  DO(qor_mkdir_native("tmp"));
  DO(set_geometry());
  DO(command::screen(SCRW, SCRH, window_title, 1));
  DO(set_up_sound());
  DO(create_state());
  DO(read_arguments());
  return {};
}

Out<> run_frame() {
  ENTER();
  const FrameScope scope;
  DO(NOW = qor_tick());
  DO(poll_keys());
  if (EMK)
    DO(toggle_music());
  DO(run_screen());
  DO(remember_keys());
  DO(qor_sleep(frame_pause_ms));
  return {};
}

Out<> shut_down() {
  ENTER();
  DO(command::sound_shutdown());
  DO(command::gfx_close());
  qor_print_str("done");
  qor_print_nl();
  DO(qorrt_shutdown(qor_runtime_handle()));
  return {};
}

Out<> run_program(int argc, char** argv) {
  DO(start_up(argc, argv));
  if (TESTMODE) {
    DO(run_scene());
    return {};
  }
  DO(run_frames());
  DO(shut_down());
  return {};
}

int run_to_exit(int argc, char** argv) {
  static_cast<void>(run_program(argc, argv));
  if (qor_err_code() != 0)
    qor_throw_uncaught();
  release_state();
  return 0;
}

} // namespace kavo
