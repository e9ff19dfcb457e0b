#include "recording/replay_program.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "game/audio/sounds.h"
#include "game/commands.h"
#include "game/program.h"
#include "game/state.h"
#include "recording/host_news.h"
#include "recording/kept_games.h"
#include "recording/show.h"
#include "recording/version.h"

namespace kavo::recording {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Wish {
  bool is_to_verify = false;
  fs::path file = {}; // empty: the last game
};

Wish wish_in(int argc, char** argv) {
  Wish wish;
  for (int i = 2; i < argc; ++i) {
    if (std::string_view(argv[i]) == "--verify" && !wish.is_to_verify)
      wish.is_to_verify = true;
    else if (wish.file.empty())
      wish.file = argv[i];
    else
      throw Damaged("--replay takes one file, got \"" + std::string(argv[i]) + "\" as well");
  }
  return wish;
}

fs::path last_game() {
  const auto games = kept_games(host_news().folder);
  if (games.empty())
    throw Damaged(host_news().folder.empty() ? "no folder is known in which games are kept"
                                             : "no game is kept in " + host_news().folder.string());
  return games.front();
}

std::string clock_text(double milliseconds) {
  const auto seconds = static_cast<int64_t>(milliseconds / 1000);
  char text[32];
  static_cast<void>(std::snprintf(text, sizeof text, "%lld:%02lld",
                                  static_cast<long long>(seconds / 60),
                                  static_cast<long long>(seconds % 60)));
  return text;
}

std::string count_of(int64_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string text_of(const Progress& progress) {
  return count_of(progress.score, "point", "points") + ", " +
         count_of(progress.rows, "row", "rows") + ", " + count_of(progress.tips, "tip", "tips") +
         ", level " + std::to_string(progress.level) + ", " + clock_text(progress.milliseconds) +
         " min, " + count_of(progress.frames, "frame", "frames");
}

std::string by_other_version(const Recording& recording) {
  return recording.header.version == game_version
             ? ""
             : " (recorded by version " + recording.header.version + ", this is " + game_version +
                   ")";
}

std::string verdict(const Recording& recording, const Progress& progress, Standing standing) {
  switch (standing) {
  case Standing::as_recorded:
    return "ended as recorded";
  case Standing::cut_off:
    return "the same as far as it was recorded, which is not to the game's end" +
           (recording.damage.empty() ? "" : " (" + recording.damage + ")");
  case Standing::failed:
    return "an error ended the game: " + std::string(chars(Text(qor_err_msg())));
  default:
    return "not as recorded from frame " + std::to_string(progress.frames + 1) + " at " +
           clock_text(progress.milliseconds) + " on" + by_other_version(recording);
  }
}

int verify(const Recording& recording) {
  const auto start = Clock::now();
  Replay replay(recording);
  Standing standing = Standing::playing;
  while (standing == Standing::playing)
    standing = replay.play_frame();
  const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
  std::printf("%s\n%s; played at %.0f times its pace\n", text_of(replay.progress()).c_str(),
              verdict(recording, replay.progress(), standing).c_str(),
              replay.progress().milliseconds / taken.count());
  qor_err_clear();
  return standing == Standing::as_recorded ? EXIT_SUCCESS : EXIT_FAILURE;
}

// What the game does before its first frame, as far as a recorded one needs it.
Out<> open_window() {
  DO(set_geometry());
  DO(command::screen(SCRW, SCRH, window_title, 1));
  DO(set_up_sound());
  return {};
}

Out<> close_window() {
  DO(command::sound_shutdown());
  DO(command::gfx_close());
  return {};
}

int show_in_window(const Recording& recording) {
  static_cast<void>(open_window());
  const Shown shown = error_is_pending() ? Shown{.standing = Standing::failed} : show(recording);
  if (shown.standing == Standing::failed)
    qor_throw_uncaught();
  static_cast<void>(close_window());
  const bool is_left = shown.standing == Standing::playing;
  if (!is_left)
    std::printf("%s\n%s\n", text_of(shown.progress).c_str(),
                verdict(recording, shown.progress, shown.standing).c_str());
  return is_left || shown.standing == Standing::as_recorded ? EXIT_SUCCESS : EXIT_FAILURE;
}

// Without a window nobody plays, and a program of no name has neither scores nor settings.
int replay(const Wish& wish, int argc, char** argv) {
  const int64_t handle = wish.is_to_verify ? qorrt_init(0, nullptr) : qorrt_init(argc, argv);
  qor_runtime_set_handle(handle);
  qorrt_set_event_dispatcher(handle, qorrt_dispatch_event);
  const Recording recording = read_recording(wish.file.empty() ? last_game() : wish.file);
  const int status = wish.is_to_verify ? verify(recording) : show_in_window(recording);
  qorrt_shutdown(handle);
  release_state();
  return status;
}

} // namespace

int replay_to_exit(int argc, char** argv) {
  try {
    return replay(wish_in(argc, argv), argc, argv);
  } catch (const std::exception& error) {
    static_cast<void>(std::fprintf(stderr, "kavo: %s\n", error.what()));
    release_state();
    return EXIT_FAILURE;
  }
}

} // namespace kavo::recording
