// Sees a program's frames from outside, as another client of the X server: the server's damage
// reports say that a window's pixels were written, and single pixels are read back.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace kavo::bench {

using Instant = std::chrono::steady_clock::time_point;

class FrameWatch {
public:
  explicit FrameWatch(const std::string& display_name);
  ~FrameWatch();
  FrameWatch(const FrameWatch&) = delete;
  FrameWatch& operator=(const FrameWatch&) = delete;

  // From now on the next window that a program creates in this size is watched.
  void expect_window(int width, int height);

  // Watches what can be drawn into, a window or a pixmap, by its number on the X server.
  void watch(unsigned long drawable);

  // Waits until its pixels are written, and gives the time at which the report came. One report
  // for all that is written before the next call. Throws std::runtime_error after ten seconds
  // without any.
  Instant next_frame();

  // Waits for the frame after which the pixel has the colour (or has it no longer), and gives the
  // time at which it was read.
  Instant frame_with(int x, int y, uint32_t colour);
  Instant frame_without(int x, int y, uint32_t colour);

  // 0x00RRGGBB; nothing while the window is not shown.
  std::optional<uint32_t> pixel(int x, int y) const;

private:
  struct Server;
  std::unique_ptr<Server> server_;
};

} // namespace kavo::bench
