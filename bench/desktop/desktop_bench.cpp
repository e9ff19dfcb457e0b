// The whole program from outside: how fast it starts and answers, how evenly its frames come, and
// what it takes of processor and memory while it is played, in windows of one, two and three times
// the picture's size.
//
//   bench_desktop [start] [play] [light] [frames] [keys] [present] [size] [1x] [2x] [3x]
//
// Without a word all parts, without a size all sizes of window.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/desktop/game_on_desktop.h"
#include "bench/desktop/pacing.h"
#include "bench/desktop/presents.h"
#include "bench/desktop/process_cost.h"
#include "bench/figure.h"

namespace {

using namespace std::chrono_literals;
using kavo::bench::at_most;
using kavo::bench::Figure;
using kavo::bench::GameOnDesktop;

constexpr double ms = 1e6; // in nanoseconds
constexpr int starts = 21;
constexpr int key_presses = 300;
constexpr auto play_time = 25s;
constexpr auto light_time = 15s;
constexpr auto pacing_time = 60s; // some 3,600 frames
constexpr double pause_ms = 16;   // that the game sleeps in every frame

Figure time_figure(const std::string& what, double seconds,
                   std::optional<kavo::bench::Bound> bound = std::nullopt) {
  return {what, seconds * 1e9, "ns", bound};
}

Figure figure(const std::string& what, double value, const std::string& unit,
              std::optional<kavo::bench::Bound> bound = std::nullopt) {
  return {what, value, unit, bound};
}

// The value below which so large a part of all lies.
double quantile(std::vector<double> values, double part) {
  std::sort(values.begin(), values.end());
  const auto index = static_cast<size_t>(std::ceil(part * static_cast<double>(values.size())));
  return values[std::max<size_t>(index, 1) - 1];
}

std::string at_scale(const std::string& what, int scale) {
  return what + ", window " + std::to_string(scale) + "x";
}

std::vector<Figure> measure_start() {
  std::vector<double> seconds;
  seconds.reserve(starts);
  for (int i = 0; i < starts; ++i)
    seconds.push_back(GameOnDesktop().start_time().count());
  return {time_figure("start: exec to first frame", quantile(seconds, 0.5), at_most(60 * ms))};
}

// What all frames so far took: the game's main thread draws a picture, then waits while the X
// server copies it.
double frame_work_seconds(GameOnDesktop& game) {
  return kavo::bench::main_thread_seconds(game.process()) +
         kavo::bench::processor_seconds(game.desktop().server());
}

std::vector<Figure> measure_play(int scale) {
  GameOnDesktop game(scale);
  game.start_playing();
  game.play(2s);
  const double all_before = kavo::bench::processor_seconds(game.process());
  const kavo::bench::Instant start = std::chrono::steady_clock::now();
  std::vector<double> work; // of each frame
  double worked = frame_work_seconds(game);
  const std::vector<double> intervals = kavo::bench::played_intervals(game, play_time, [&] {
    const double now = frame_work_seconds(game);
    work.push_back(now - std::exchange(worked, now));
  });
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  const double all = kavo::bench::processor_seconds(game.process()) - all_before;
  const kavo::bench::Memory memory = kavo::bench::memory_of(game.process());
  const double median = quantile(intervals, 0.5);
  const auto bound = [scale](double limit) {
    return scale == 1 ? std::optional(at_most(limit)) : std::nullopt;
  };
  return {
      figure(at_scale("processor while playing with music", scale), 100 * all / time.count(), "%",
             bound(3)),
      figure(at_scale("memory, resident", scale), memory.resident_mb, "MB", bound(24)),
      figure(at_scale("memory, private", scale), memory.private_mb, "MB", bound(12)),
      time_figure(at_scale("frame interval, median", scale), median),
      time_figure(at_scale("frame interval beyond 16 ms and its work", scale),
                  median - pause_ms / 1000 - quantile(work, 0.5), bound(0.3 * ms)),
  };
}

// What a program and its X server took of a processor, each as a part of the time.
struct Load {
  double program;
  double server;
  double both() const { return program + server; }
};

Load load_of(pid_t program, pid_t server, const std::function<void()>& pass_time) {
  const auto start = std::chrono::steady_clock::now();
  const double program_before = kavo::bench::processor_seconds(program);
  const double server_before = kavo::bench::processor_seconds(server);
  pass_time();
  const double program_after = kavo::bench::processor_seconds(program);
  const double server_after = kavo::bench::processor_seconds(server);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  return {(program_after - program_before) / time.count(),
          (server_after - server_before) / time.count()};
}

void let_pass() {
  std::this_thread::sleep_for(light_time);
}

Load load_of_bare_program() {
  kavo::desktop::Desktop desktop(GameOnDesktop::width + 20, GameOnDesktop::height + 60);
  const auto bare = desktop.start({{BARE_PROGRAM}, {}, "."});
  desktop.wait_for_window("bare");
  std::this_thread::sleep_for(1s);
  return load_of(bare->id(), desktop.server(), let_pass);
}

std::vector<Figure> beside_bare_program(const std::string& what, const Load& load, const Load& bare,
                                        double most) {
  Figure both = figure(what + ", game and X server", 100 * load.both(), "%", at_most(most));
  both.peer = "a bare SDL2 program and its X server";
  both.peer_value = 100 * bare.both();
  return {figure(what + ", game", 100 * load.program, "%"),
          figure(what + ", X server", 100 * load.server, "%"), both};
}

// Still: only the stars of the title twinkle, with the sound on. Waiting: its player is elsewhere.
std::vector<Figure> measure_light() {
  const Load bare = load_of_bare_program();
  GameOnDesktop game;
  const pid_t process = game.process(), server = game.desktop().server();
  std::this_thread::sleep_for(7s); // until the line that tells of help is gone
  const Load still = load_of(process, server, let_pass);
  game.start_playing();
  const Load play = load_of(process, server, [&game] { game.play(light_time); });
  game.desktop().wait_for_window("KAVO - Schlagseite").take_focus_away();
  std::this_thread::sleep_for(1s);
  const Load waiting = load_of(process, server, let_pass);
  std::vector<Figure> figures = beside_bare_program("processor on the title", still, bare, 0.15);
  const std::vector<Figure> playing = beside_bare_program("processor in play", play, bare, 0.35);
  figures.insert(figures.end(), playing.begin(), playing.end());
  figures.push_back(
      figure("processor while it waits for its player", 100 * waiting.program, "%", at_most(0.1)));
  return figures;
}

// The machine's share is judged by bare frames beside the game's: where those come after 16 ms,
// 20 ms are a quarter more.
std::vector<Figure> measure_frames(int scale) {
  GameOnDesktop game(scale);
  game.start_playing();
  game.play(2s);
  const kavo::bench::Pacing pacing = kavo::bench::measure_pacing(game, pacing_time);
  const double late = quantile(pacing.game, 0.999);
  Figure beside_bare =
      time_figure(at_scale("the same beside bare frames", scale), late, at_most(20 / pause_ms));
  beside_bare.peer = "one pixel every 16 ms";
  beside_bare.peer_value = quantile(pacing.bare, 0.999) * 1e9;
  return {
      time_figure(at_scale("frame interval, 99.9th percentile", scale), late, at_most(20 * ms)),
      beside_bare,
      time_figure(at_scale("the game's work in a frame, 99.9th percentile", scale),
                  quantile(pacing.work, 0.999)),
      figure(at_scale("processors used by others meanwhile", scale),
             100 * pacing.others_part_of_time, "%"),
  };
}

std::vector<Figure> measure_keys(int scale) {
  GameOnDesktop game(scale);
  game.start_playing();
  std::mt19937 random(1);
  std::uniform_real_distribution<double> pause(0.03, 0.06); // any moment of a frame
  std::vector<double> seconds;
  for (int i = 0; i < key_presses; ++i) {
    std::this_thread::sleep_for(std::chrono::duration<double>(pause(random)));
    seconds.push_back(game.toggle_pause().count());
  }
  return {
      time_figure(at_scale("key to changed pixels, median", scale), quantile(seconds, 0.5),
                  at_most(12 * ms)),
      time_figure(at_scale("key to changed pixels, 99th percentile", scale),
                  quantile(seconds, 0.99), at_most(22 * ms)),
  };
}

// The sizes of window that the command line asks for.
std::vector<int>& scales() {
  static std::vector<int> scales;
  return scales;
}

// One cost in windows of growing sizes.
Figure in_series(Figure figure, int scale) {
  figure.series = figure.what.substr(0, figure.what.rfind(", window"));
  figure.size = scale * scale;
  return figure;
}

// One figure after the other, each in all sizes. The first so many of them are costs: they are to
// grow no faster than the window's pixels.
std::vector<Figure> at_every_scale(const std::function<std::vector<Figure>(int)>& measure,
                                   size_t costs = 0) {
  std::vector<std::vector<Figure>> rows; // each figure's
  for (const int scale : scales()) {
    const std::vector<Figure> measured = measure(scale);
    rows.resize(measured.size());
    for (size_t i = 0; i < measured.size(); ++i)
      rows[i].push_back(i < costs ? in_series(measured[i], scale) : measured[i]);
  }
  std::vector<Figure> all;
  for (const std::vector<Figure>& row : rows)
    all.insert(all.end(), row.begin(), row.end());
  return all;
}

// A picture that needs no scaling costs no pixel: growth begins with the first that does.
std::vector<Figure> measure_present() {
  const kavo::desktop::Desktop desktop(GameOnDesktop::width * 3 + 20,
                                       GameOnDesktop::height * 3 + 60);
  std::vector<Figure> figures;
  for (const int scale : scales()) {
    const double seconds = kavo::bench::present_seconds(desktop.display_name(), scale);
    const std::string what = at_scale("present", scale);
    figures.push_back(scale == 1 ? time_figure(what, seconds, at_most(0.2 * ms))
                                 : in_series(time_figure(what, seconds, at_most(3 * ms)), scale));
  }
  return figures;
}

std::vector<Figure> measure_size() {
  double bytes = 0;
  const kavo::test::TemporaryFolder folder;
  for (const std::string path : {KAVO_PROGRAM, KAVO_LIBRARY}) {
    const std::string stripped = folder / "stripped";
    const kavo::desktop::Outcome outcome =
        kavo::desktop::Process({{"strip", "-o", stripped, path}, {}, "."}).wait();
    if (outcome.code != 0)
      throw std::runtime_error("strip " + path + ": " + outcome.errors);
    bytes += static_cast<double>(std::filesystem::file_size(stripped));
  }
  return {figure("kavo and libqorrt.so, stripped", bytes / 1e6, "MB", at_most(1.5))};
}

const std::map<std::string, std::function<std::vector<Figure>()>> parts = {
    {"start", measure_start},
    {"play", [] { return at_every_scale(measure_play, 3); }},
    {"light", measure_light},
    {"frames", [] { return at_every_scale(measure_frames); }},
    {"keys", [] { return at_every_scale(measure_keys); }},
    {"present", measure_present},
    {"size", measure_size},
};

std::vector<std::string> wanted_parts(int argc, char** argv) {
  const std::map<std::string, int> sizes = {{"1x", 1}, {"2x", 2}, {"3x", 3}};
  std::vector<std::string> wanted;
  for (const std::string& word : std::vector<std::string>(argv + 1, argv + argc)) {
    if (const auto size = sizes.find(word); size != sizes.end())
      scales().push_back(size->second);
    else
      wanted.push_back(word);
  }
  if (scales().empty())
    scales() = {1, 2, 3};
  if (wanted.empty())
    wanted = {"start", "play", "light", "frames", "keys", "present", "size"};
  return wanted;
}

} // namespace

int main(int argc, char** argv) {
  try {
    std::vector<Figure> figures;
    for (const std::string& name : wanted_parts(argc, argv)) {
      const auto part = parts.find(name);
      if (part == parts.end())
        throw std::runtime_error("there is no part " + name);
      std::cerr << "measuring: " << name << '\n';
      const std::vector<Figure> measured = part->second();
      figures.insert(figures.end(), measured.begin(), measured.end());
    }
    kavo::bench::write_figures("bench_desktop", figures);
  } catch (const std::exception& error) {
    std::cerr << "bench_desktop: " << error.what() << '\n';
    return 1;
  }
}
