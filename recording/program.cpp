#include "recording/program.h"

#include <cstdio>
#include <string_view>
#include <utility>

#include "game/program.h"
#include "game/wiring.h"
#include "recording/host_news.h"
#include "recording/kept_games.h"
#include "recording/recorder.h"
#include "recording/replay_program.h"

namespace kavo::recording {

namespace {

std::unique_ptr<Sink> open_kept_game(const Header& header) {
  const HostNews& news = host_news();
  return news.is_recording_wanted && !news.folder.empty() ? keep_game(news.folder, header)
                                                          : nullptr;
}

// Ends with the program, which the host may end from within a frame.
Recorder& recorder() {
  static Recorder recorder(open_kept_game, [](const std::string& line) {
    static_cast<void>(std::fprintf(stderr, "%s\n", line.c_str()));
  });
  return recorder;
}

void frame_ended() {
  HostNews& news = host_news();
  if (std::exchange(news.has_changed, false) && !news.is_recording_wanted)
    recorder().stop();
  recorder().frame_ended();
}

} // namespace

int run_to_exit(int argc, char** argv) {
  if (argc > 1 && std::string_view(argv[1]) == "--replay")
    return replay_to_exit(argc, argv);
  recorder();
  wiring.frame_ended = frame_ended;
  return kavo::run_to_exit(argc, argv);
}

} // namespace kavo::recording
