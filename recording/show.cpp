#include "recording/show.h"

#include "game/audio/sounds.h"
#include "game/commands.h"
#include "game/frame_scope.h"

namespace kavo::recording {

namespace {

constexpr int64_t over = -1;

// Waits by the real clock until it is time for what the recorded one tells.
class Pacer {
public:
  explicit Pacer(const qor_clock& clock) : clock_(clock) {}

  // How many times as fast; 0 waits for nothing.
  void set_pace(double pace) {
    if (pace != pace_)
      is_set_ = false;
    pace_ = pace;
  }

  // Who comes late, as after a pause, need not catch up.
  void wait_until(double recorded_ms) {
    constexpr double longest_ms = 1000;
    constexpr double latest_ms = -100;
    if (pace_ <= 0)
      return;
    const double now = clock_.tick(clock_.context);
    const double rest = start_ + (recorded_ms - recorded_start_) / pace_ - now;
    if (!is_set_ || !(rest > latest_ms) || rest > longest_ms) {
      start_ = now;
      recorded_start_ = recorded_ms;
      is_set_ = true;
    } else if (rest >= 1) {
      clock_.sleep(clock_.context, static_cast<uint32_t>(rest));
    }
  }

private:
  qor_clock clock_;
  double pace_ = 1;
  bool is_set_ = false;
  double start_ = 0;
  double recorded_start_ = 0;
};

int64_t number_of(Standing standing) {
  switch (standing) {
  case Standing::as_recorded:
    return 1;
  case Standing::cut_off:
    return 2;
  case Standing::diverged:
    return 3;
  default:
    return 0;
  }
}

// A host that knows no such command shows the game at its own pace.
double wish_after(int64_t standing, const Progress& progress, const Recording& recording) {
  auto answer = command::replay(standing, progress.milliseconds, recording.last.milliseconds,
                                progress.frames);
  const double wish = Opener::open(answer);
  if (!error_is_pending())
    return wish;
  qor_err_clear();
  return standing == 0 ? 1 : over;
}

// On the way to the end one picture in so many is shown, and the last ones.
bool is_to_be_seen(const Progress& progress, const Recording& recording) {
  constexpr int64_t frames_for_a_picture = 120;
  return progress.frames % frames_for_a_picture == 0 || progress.frames + 2 > recording.last.frames;
}

// The last picture stays.
void show_it_longer() {
  constexpr uint32_t frame_ms = 16;
  const FrameScope scope;
  static_cast<void>(command::screen_flip());
  error_is_pending();
  qor_sleep(frame_ms);
}

} // namespace

Shown show(const Recording& recording) {
  Pacer pacer(qor_clock_in_use());
  Replay replay(recording);
  replay.set_pause([&pacer](double recorded_ms) { pacer.wait_until(recorded_ms); });
  static_cast<void>(apply_music_switch());
  Standing standing = Standing::playing;
  while (standing != Standing::failed && !error_is_pending()) {
    const double wish = wish_after(number_of(standing), replay.progress(), recording);
    if (wish < 0)
      break;
    pacer.set_pace(wish);
    replay.set_presented(wish > 0 || is_to_be_seen(replay.progress(), recording));
    if (standing == Standing::playing)
      standing = replay.play_frame();
    else
      show_it_longer();
  }
  if (standing != Standing::failed)
    wish_after(over, replay.progress(), recording);
  return {.standing = standing, .progress = replay.progress()};
}

} // namespace kavo::recording
