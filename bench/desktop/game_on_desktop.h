// The real game on a desktop of its own (Xvfb, 24-bit colour, no window manager), with sound to a
// device that takes it in real time and throws it away.
#pragma once

#include <memory>
#include <optional>

#include "bench/desktop/frame_watch.h"
#include "tests/desktop/desktop.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::bench {

class GameOnDesktop {
public:
  static constexpr int width = 660;
  static constexpr int height = 800;

  // Returns when the title is to be seen. The display has room for a window of `scale` times the
  // picture.
  explicit GameOnDesktop(int scale = 1);

  // From the start of the program's process until another program could read the first frame from
  // the window.
  std::chrono::duration<double> start_time() const { return start_time_; }

  pid_t process() const { return process_->id(); }
  kavo::desktop::Desktop& desktop() { return desktop_; }
  FrameWatch& watch() { return watch_; }
  int scale() const { return scale_; }

  // From the title to the first piece, in a window of the asked size.
  void start_playing();

  // Plays for so long: pieces fall over the whole width, one about every second.
  void play(std::chrono::duration<double> time);

  // Presses P and gives the time until the pause's box appeared in the window, or vanished.
  std::chrono::duration<double> toggle_pause();

private:
  void tap_later(const std::string& key);

  int scale_;
  kavo::test::TemporaryFolder folder_;
  kavo::desktop::Desktop desktop_;
  FrameWatch watch_;
  std::unique_ptr<kavo::desktop::Process> process_;
  std::chrono::duration<double> start_time_{};
  bool is_paused_ = false;
  int pieces_ = 0; // dropped so far
};

} // namespace kavo::bench
