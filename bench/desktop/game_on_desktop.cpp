#include "bench/desktop/game_on_desktop.h"

#include <array>
#include <cstdlib>
#include <thread>

namespace kavo::bench {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr uint32_t night = 0x0C1A2C;      // behind the title
constexpr uint32_t well_frame = 0x463422; // while the stack is low
constexpr uint32_t pause_box = 0x141822;

struct Point {
  int x;
  int y;
};
constexpr Point in_well_frame = {146, 300};
constexpr Point in_pause_box = {225, 315};

// The kernel wakes a tap's reader before the next: no two of them share a frame.
constexpr auto between_taps = 40ms;

// Columns from the middle, so that the stack grows evenly and no side outweighs the other.
constexpr std::array<int, 6> targets = {-4, 4, -2, 2, 0, -3};

kavo::desktop::Launch launch(const std::string& folder) {
  kavo::desktop::Launch launch;
  launch.arguments = {KAVO_PROGRAM};
  launch.folder = folder;
  // As at a first start, but in a window of one size on every display.
  launch.environment = {{"SDL_AUDIODRIVER", "dummy"},
                        {"QORRT_SEED", "1"},
                        {"QORRT_SCALE", "1"},
                        {"XDG_CONFIG_HOME", folder + "/config"},
                        {"XDG_STATE_HOME", folder + "/state"}};
  return launch;
}

} // namespace

GameOnDesktop::GameOnDesktop(int scale)
    : scale_(scale), desktop_(width * scale + 20, height * scale + 60),
      watch_(desktop_.display_name()) {
  watch_.expect_window(width, height);
  const Instant start = Clock::now();
  process_ = desktop_.start(launch(folder_.path()));
  start_time_ = watch_.frame_with(1, 1, night) - start;
}

void GameOnDesktop::start_playing() {
  const kavo::desktop::DesktopWindow window = desktop_.wait_for_window("KAVO - Schlagseite");
  window.focus();
  // All of it on the display: what lies beside it is not drawn, and nobody would see the frame.
  window.move(0, 0);
  if (scale_ != 1)
    window.resize(width * scale_, height * scale_);
  desktop_.tap("space");
  watch_.frame_with(in_well_frame.x * scale_, in_well_frame.y * scale_, well_frame);
}

void GameOnDesktop::play(std::chrono::duration<double> time) {
  const auto end = Clock::now() + time;
  while (Clock::now() < end) {
    const int target = targets[static_cast<size_t>(pieces_++) % targets.size()];
    for (int i = 0; i < std::abs(target); ++i)
      tap_later(target < 0 ? "Left" : "Right");
    std::this_thread::sleep_for(700ms);
    tap_later("space");
  }
}

void GameOnDesktop::tap_later(const std::string& key) {
  std::this_thread::sleep_for(between_taps);
  desktop_.tap(key);
}

std::chrono::duration<double> GameOnDesktop::toggle_pause() {
  is_paused_ = !is_paused_;
  const int x = in_pause_box.x * scale_;
  const int y = in_pause_box.y * scale_;
  const Instant pressed = Clock::now();
  desktop_.press("p");
  const Instant seen =
      is_paused_ ? watch_.frame_with(x, y, pause_box) : watch_.frame_without(x, y, pause_box);
  desktop_.release("p");
  return seen - pressed;
}

} // namespace kavo::bench
