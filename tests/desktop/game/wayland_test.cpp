// The game on a Wayland desktop: a compositor (weston) that shows its screen in a window of a
// test's own X server, where the pixels can be read and the keys pressed.
#include "tests/desktop/game/playing.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace {

using desktop::Bitmap;

constexpr int width = 660;
constexpr int height = 800;

// A screen as large as the game's picture, of so many pixels for each of the picture's. Its shell
// shows one program and nothing else.
class WaylandDesktop {
public:
  explicit WaylandDesktop(int scale)
      : compositor_(desktop_.start(
            {{"weston", "--no-config", "--backend=x11-backend.so", "--use-pixman",
              "--shell=kiosk-shell.so", "--idle-time=0", "--socket=" + socket_,
              "--width=" + std::to_string(width), "--height=" + std::to_string(height),
              "--scale=" + std::to_string(scale)},
             {{"XDG_RUNTIME_DIR", folder.path()}},
             folder.path()})),
        screen_(desktop_.wait_for_window("Weston Compositor - screen0")) {
    // Weston gives its keyboard to what is below its pointer.
    desktop_.move_pointer(100, 100);
    screen_.focus();
    if (!desktop::eventually([&] { return std::filesystem::exists(folder / socket_); }))
      throw std::runtime_error("weston did not start: " + compositor_->wait().errors);
  }

  std::unique_ptr<desktop::Process> start_game() const {
    desktop::Launch launch = playing::launch(folder.path(), "1", {});
    launch.environment["DISPLAY"] = std::nullopt;
    launch.environment["WAYLAND_DISPLAY"] = socket_;
    launch.environment["XDG_RUNTIME_DIR"] = folder.path();
    // Wayland's libraries leave memory behind that is theirs; what the game leaves behind is seen
    // under X.
    launch.environment["ASAN_OPTIONS"] = "detect_leaks=0";
    return desktop_.start(launch);
  }

  Bitmap pixels() const { return screen_.pixels(); }
  void tap(const std::string& key) { desktop_.tap(key); }

  kavo::test::TemporaryFolder folder;

private:
  std::string socket_ = "wayland-test";
  desktop::Desktop desktop_{2 * width, 2 * height};
  std::unique_ptr<desktop::Process> compositor_;
  desktop::DesktopWindow screen_;
};

bool shows_title(const Bitmap& screen, int scale) {
  // Left of the texts and below the sky.
  return screen.width == scale * width && screen.at(scale * 20, scale * 780) == playing::night;
}

bool shows_well(const Bitmap& screen, int scale) {
  return screen.at(scale * 146, scale * 300) == playing::well_frame;
}

void play(int scale) {
  WaylandDesktop wayland(scale);
  const auto game = wayland.start_game();
  ASSERT_TRUE(desktop::eventually([&] { return shows_title(wayland.pixels(), scale); }));
  ASSERT_TRUE(desktop::eventually([&] {
    wayland.tap("space");
    return shows_well(wayland.pixels(), scale);
  }));
  ASSERT_TRUE(desktop::eventually([&] {
    wayland.tap("Escape");
    return !game->is_running();
  }));
  const desktop::Outcome outcome = game->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_EQ(outcome.output, "done\n");
}

TEST(Wayland, IsPlayedWithoutX) {
  play(1);
}

TEST(Wayland, IsPlayedOnAHighDensityScreen) {
  play(2);
}

TEST(Wayland, AHighDensityScreenShowsEveryPixelTwiceEachWay) {
  constexpr int scale = 2;
  WaylandDesktop wayland(scale);
  const auto game = wayland.start_game();
  ASSERT_TRUE(desktop::eventually([&] { return shows_title(wayland.pixels(), scale); }));
  const Bitmap screen = wayland.pixels();
  // The letters of the menu, which the sky leaves alone.
  int letters = 0;
  for (int y = 2 * 110; y < 2 * 530; y += 2)
    for (int x = 2 * 60; x < 2 * 420; x += 2) {
      const uint32_t pixel = screen.at(x, y);
      ASSERT_EQ(screen.at(x + 1, y), pixel) << x << ',' << y;
      ASSERT_EQ(screen.at(x, y + 1), pixel) << x << ',' << y;
      ASSERT_EQ(screen.at(x + 1, y + 1), pixel) << x << ',' << y;
      letters += pixel != playing::night ? 1 : 0;
    }
  EXPECT_GT(letters, 1000);
}

} // namespace
