#include "bench/desktop/pacing.h"

#include <sched.h>
#include <unistd.h>

#include <future>
#include <thread>
#include <utility>

#include "bench/desktop/bare_frames.h"
#include "bench/desktop/process_cost.h"

namespace kavo::bench {

namespace {

using Clock = std::chrono::steady_clock;

// Who notes when a frame came is not to wait for others who want the processor. Left as it is
// where the system does not allow it.
void go_before_others() {
  const sched_param lowest = {sched_get_priority_min(SCHED_FIFO)};
  sched_setscheduler(0, SCHED_FIFO | SCHED_RESET_ON_FORK, &lowest);
}

std::vector<double> frame_intervals(FrameWatch& watch, std::chrono::duration<double> time,
                                    const std::function<void()>& at_frame) {
  std::vector<double> intervals;
  const auto end = Clock::now() + time;
  Instant last = watch.next_frame();
  for (at_frame(); last < end; at_frame()) {
    const Instant now = watch.next_frame();
    intervals.push_back(std::chrono::duration<double>(now - last).count());
    last = now;
  }
  return intervals;
}

// In a thread of its own, which ends with its priority.
std::future<std::vector<double>> watched_intervals(FrameWatch& watch,
                                                   std::chrono::duration<double> time,
                                                   const std::function<void()>& at_frame) {
  return std::async(std::launch::async, [&watch, time, at_frame] {
    go_before_others();
    return frame_intervals(watch, time, at_frame);
  });
}

double others_seconds(GameOnDesktop& game) {
  return all_processor_seconds() - processor_seconds(game.process()) -
         processor_seconds(game.desktop().server()) - processor_seconds(getpid());
}

} // namespace

std::vector<double> played_intervals(GameOnDesktop& game, std::chrono::duration<double> time,
                                     const std::function<void()>& at_frame) {
  auto intervals = watched_intervals(game.watch(), time, at_frame);
  game.play(time);
  return intervals.get();
}

Pacing measure_pacing(GameOnDesktop& game, std::chrono::duration<double> time) {
  const BareFrames bare(game.desktop().display_name());
  FrameWatch bare_watch(game.desktop().display_name());
  bare_watch.watch(bare.picture());
  const double others_before = others_seconds(game);
  const auto start = Clock::now();
  Pacing pacing = {};
  auto bare_intervals = watched_intervals(bare_watch, time, [] {});
  double worked = main_thread_seconds(game.process());
  pacing.game = played_intervals(game, time, [&] {
    const double now = main_thread_seconds(game.process());
    pacing.work.push_back(now - std::exchange(worked, now));
  });
  pacing.bare = bare_intervals.get();
  const std::chrono::duration<double> all = Clock::now() - start;
  pacing.others_part_of_time =
      (others_seconds(game) - others_before) / (all.count() * std::thread::hardware_concurrency());
  return pacing;
}

} // namespace kavo::bench
