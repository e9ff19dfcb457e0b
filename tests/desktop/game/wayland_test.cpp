// The game on a Wayland desktop, at one and at two pixels for each of its picture's, and from the
// one display to the other.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "tests/desktop/game/playing.h"
#include "tests/desktop/game/wayland_desktop.h"

namespace {

using kavo::desktop::Bitmap;
using kavo::playing::WaylandDesktop;

constexpr int width = 660;
constexpr int height = 800;

// A screen as large as the game's picture, of so many pixels for each of the picture's.
class WaylandScreen : public WaylandDesktop {
public:
  explicit WaylandScreen(int scale) : WaylandDesktop("kiosk", {{width, height, scale}}) {}
};

bool shows_title(const Bitmap& screen, int scale) {
  // Left of the texts and below the sky.
  return screen.width == scale * width &&
         screen.at(scale * 20, scale * 780) == kavo::playing::night;
}

bool shows_well(const Bitmap& screen, int scale) {
  return screen.at(scale * 146, scale * 300) == kavo::playing::well_frame;
}

void play(int scale) {
  WaylandScreen wayland(scale);
  const auto game = wayland.start_game();
  ASSERT_TRUE(kavo::desktop::eventually([&] { return shows_title(wayland.pixels(), scale); }));
  ASSERT_TRUE(kavo::desktop::eventually([&] {
    wayland.tap("space");
    return shows_well(wayland.pixels(), scale);
  }));
  ASSERT_TRUE(kavo::desktop::eventually([&] {
    wayland.tap("Escape");
    return !game->is_running();
  }));
  const kavo::desktop::Outcome outcome = game->wait();
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

TEST(Wayland, ACompositorThatGoesAwayEndsTheGameWithWhatHappened) {
  WaylandScreen wayland(1);
  const auto game = wayland.start_game();
  ASSERT_TRUE(kavo::desktop::eventually([&] { return shows_title(wayland.pixels(), 1); }));
  wayland.end();
  const kavo::desktop::Outcome outcome = game->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.errors.find("no display: it went away while the game ran"), std::string::npos)
      << outcome.errors;
}

// Of the menu, which the sky leaves alone.
int letter_pixels(const Bitmap& screen, int scale) {
  int count = 0;
  for (int y = scale * 110; y < scale * 530; ++y)
    for (int x = scale * 60; x < scale * 420; ++x)
      count += screen.at(x, y) != kavo::playing::night ? 1 : 0;
  return count;
}

// Whether each pixel of the menu is four on the screen.
bool is_crisp(const Bitmap& screen) {
  for (int y = 2 * 110; y < 2 * 530; y += 2)
    for (int x = 2 * 60; x < 2 * 420; x += 2)
      for (const auto& [right, down] : {std::pair(1, 0), {0, 1}, {1, 1}})
        if (screen.at(x + right, y + down) != screen.at(x, y))
          return false;
  return letter_pixels(screen, 2) > 4000;
}

TEST(Wayland, AHighDensityScreenShowsEveryPixelTwiceEachWay) {
  constexpr int scale = 2;
  WaylandScreen wayland(scale);
  const auto game = wayland.start_game();
  ASSERT_TRUE(kavo::desktop::eventually([&] { return shows_title(wayland.pixels(), scale); }));
  EXPECT_TRUE(kavo::desktop::eventually([&] { return is_crisp(wayland.pixels()); }));
}

// A laptop's display, a little larger than the picture, and one of high density at its right that
// is as large as the picture.
class WaylandDisplays : public testing::Test {
protected:
  static constexpr int margin = 100;
  static constexpr int below_the_menu = 700; // wherever the window is at the start
  static constexpr int laptop_width = width + 2 * margin;

  WaylandDisplays()
      : wayland("desktop", {{laptop_width, height + margin, 1}, {width, height, 2}}),
        game(wayland.start_game()) {}

  int pixels_of(uint32_t colour, size_t display) const {
    const Bitmap shown = wayland.pixels(display);
    return static_cast<int>(std::count(shown.pixels.begin(), shown.pixels.end(), colour));
  }
  // How many of a display's pixels have the colour behind the menu.
  int night_pixels(size_t display) const { return pixels_of(kavo::playing::night, display); }
  bool comes_to_be_on_the_laptop_only() const {
    return kavo::desktop::eventually(
        [&] { return night_pixels(0) > width * height / 2 && night_pixels(1) == 0; });
  }
  // The pointer of a drag stops at the edge of the display that it began on.
  bool goes_to_the_other() {
    wayland.drag_window(0, laptop_width / 2, below_the_menu, laptop_width / 2 - 1);
    if (!kavo::desktop::eventually([&] { return night_pixels(0) > 0 && night_pixels(1) > 0; }))
      return false;
    wayland.drag_window(1, margin, 2 * below_the_menu, 2 * width - 2 * margin);
    return kavo::desktop::eventually([&] { return night_pixels(0) == 0; });
  }

  WaylandDesktop wayland;
  std::unique_ptr<kavo::desktop::Process> game;
};

TEST_F(WaylandDisplays, TheOneThatItWasTakenToIsFilledInItsOwnDensity) {
  ASSERT_TRUE(comes_to_be_on_the_laptop_only());
  ASSERT_TRUE(goes_to_the_other());
  wayland.tap("F11");
  EXPECT_TRUE(kavo::desktop::eventually(
      [&] { return shows_title(wayland.pixels(1), 2) && is_crisp(wayland.pixels(1)); }));
  EXPECT_TRUE(kavo::desktop::eventually([&] { return night_pixels(0) == 0; }));
}

TEST_F(WaylandDisplays, ItIsPlayedOnTheOneThatItWasTakenTo) {
  ASSERT_TRUE(comes_to_be_on_the_laptop_only());
  ASSERT_TRUE(goes_to_the_other());
  wayland.tap("F11");
  ASSERT_TRUE(kavo::desktop::eventually([&] { return shows_title(wayland.pixels(1), 2); }));
  wayland.tap("space");
  EXPECT_TRUE(kavo::desktop::eventually([&] { return shows_well(wayland.pixels(1), 2); }));
}

TEST_F(WaylandDisplays, ItIsPlayedOnTheOtherWhenItsOwnIsUnplugged) {
  ASSERT_TRUE(comes_to_be_on_the_laptop_only());
  ASSERT_TRUE(goes_to_the_other());
  wayland.unplug(1);
  ASSERT_TRUE(kavo::desktop::eventually([&] { return night_pixels(0) > 0; }));
  wayland.tap("F11");
  // More than the window had in all.
  EXPECT_TRUE(kavo::desktop::eventually([&] { return night_pixels(0) > width * height; }));
  wayland.tap("space");
  EXPECT_TRUE(
      kavo::desktop::eventually([&] { return pixels_of(kavo::playing::well_frame, 0) > 10'000; }));
}

TEST_F(WaylandDisplays, FullScreenItGoesOnOnTheOtherWhenItsOwnIsUnplugged) {
  ASSERT_TRUE(comes_to_be_on_the_laptop_only());
  ASSERT_TRUE(goes_to_the_other());
  wayland.tap("F11");
  ASSERT_TRUE(kavo::desktop::eventually([&] { return shows_title(wayland.pixels(1), 2); }));
  wayland.unplug(1);
  EXPECT_TRUE(kavo::desktop::eventually([&] { return night_pixels(0) > width * height / 2; }));
  wayland.tap("space");
  EXPECT_TRUE(
      kavo::desktop::eventually([&] { return pixels_of(kavo::playing::well_frame, 0) > 10'000; }));
}

} // namespace
