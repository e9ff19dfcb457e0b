// The window on a desktop of two displays, a laptop's and a larger one beside it: moved between
// them, full screen on either, and there when its display is unplugged.
#include "tests/host/desktop/window_fixture.h"

namespace {

using kavo::desktop::Place;
using kavo::test::DesktopWindow;
using kavo::test::DisplaySize;
using kavo::test::draw_squares;
using kavo::test::height;
using kavo::test::width;
using kavo::test::WindowTest;

constexpr DisplaySize laptop = {1400, 900};
constexpr DisplaySize large = {2 * width, 2 * height}; // on which the full picture is crisp
constexpr Place all_of_the_laptop = {0, 0, laptop.width, laptop.height};
constexpr Place all_of_the_large_one = {laptop.width, 0, large.width, large.height};
constexpr int room = 32; // for the window's borders

bool lies_within(const Place& inner, const Place& outer) {
  return inner.x >= outer.x && inner.y >= outer.y &&
         inner.x + inner.width <= outer.x + outer.width &&
         inner.y + inner.height <= outer.y + outer.height;
}

class TwoDisplays : public WindowTest {
protected:
  TwoDisplays() : WindowTest(std::vector<DisplaySize>{laptop, large}) {
    desktop.start_window_manager();
    window.emplace(open());
    draw_squares(bridge);
  }

  bool comes_to_cover(const Place& display) {
    return flip_until([&] { return window->place() == display; }) &&
           comes_to_show_squares(*window, {display.width, display.height});
  }
  bool comes_to_lie_within(const Place& display) {
    return flip_until([&] { return lies_within(window->place(), display); }) &&
           comes_to_show_squares(*window);
  }
  bool moves_to_the_large_one() {
    window->move(laptop.width + room, room);
    return comes_to_lie_within(all_of_the_large_one);
  }
  bool fills_the_large_one() {
    const bool has_moved = moves_to_the_large_one();
    desktop.tap("F11");
    return has_moved && comes_to_cover(all_of_the_large_one);
  }

  std::optional<DesktopWindow> window;
};

TEST_F(TwoDisplays, ShowItWholeOnEitherAndAcrossTheirEdge) {
  for (const int left : {laptop.width + room, laptop.width - width / 2, room, laptop.width - 1}) {
    window->move(left, room);
    EXPECT_TRUE(flip_until([&] { return window->place().x >= left; }));
    EXPECT_TRUE(comes_to_show_squares(*window)) << left;
  }
}

TEST_F(TwoDisplays, TheOneThatItIsOnIsFilledAtFullScreen) {
  ASSERT_TRUE(moves_to_the_large_one());
  const Place before = window->place();
  desktop.tap("F11");
  EXPECT_TRUE(comes_to_cover(all_of_the_large_one));
  desktop.tap("F11");
  EXPECT_TRUE(flip_until([&] { return window->place() == before; }));
  EXPECT_TRUE(comes_to_show_squares(*window));
  window->move(room, room);
  ASSERT_TRUE(comes_to_lie_within(all_of_the_laptop));
  desktop.tap("F11");
  EXPECT_TRUE(comes_to_cover(all_of_the_laptop));
}

TEST_F(TwoDisplays, EveryPixelIsFourOnTheOneThatIsTwiceAsLarge) {
  ASSERT_TRUE(fills_the_large_one());
  const kavo::test::Bitmap shown = window->pixels();
  for (int y = 0; y < large.height; ++y)
    for (int x = 0; x < large.width; ++x)
      ASSERT_EQ(shown.at(x, y), kavo::test::colour_at(x / 2, y / 2)) << x << ',' << y;
}

TEST_F(TwoDisplays, ItComesBackFromMinimisedToTheOneItWasOn) {
  const auto minimise_and_restore = [&] {
    window->minimise();
    ASSERT_TRUE(flip_until([&] { return window->is_minimised() && !window->is_shown(); }));
    window->restore();
    ASSERT_TRUE(flip_until([&] { return window->is_shown(); }));
  };
  ASSERT_TRUE(moves_to_the_large_one());
  minimise_and_restore();
  EXPECT_TRUE(comes_to_lie_within(all_of_the_large_one));
  desktop.tap("F11");
  ASSERT_TRUE(comes_to_cover(all_of_the_large_one));
  minimise_and_restore();
  EXPECT_TRUE(comes_to_cover(all_of_the_large_one)) << "full screen";
}

// How far the window manager pulls it in is its own affair: far enough to be taken hold of.
TEST_F(TwoDisplays, ItCanBeFetchedOverWhenItsOwnIsUnplugged) {
  ASSERT_TRUE(moves_to_the_large_one());
  desktop.unplug(1);
  EXPECT_TRUE(flip_until([&] { return window->place().x < laptop.width; }));
  window->move(room, room);
  EXPECT_TRUE(comes_to_lie_within(all_of_the_laptop));
  desktop.plug_in(1);
  EXPECT_TRUE(comes_to_lie_within(all_of_the_laptop));
  EXPECT_TRUE(fills_the_large_one()) << "plugged in again";
}

TEST_F(TwoDisplays, FullScreenItFillsTheOtherWhenItsOwnIsUnplugged) {
  ASSERT_TRUE(fills_the_large_one());
  desktop.unplug(1);
  EXPECT_TRUE(comes_to_cover(all_of_the_laptop));
  desktop.tap("F11");
  EXPECT_TRUE(flip_until([&] { return window->size().width == width; }));
  desktop.plug_in(1);
  EXPECT_TRUE(fills_the_large_one()) << "plugged in again";
}

} // namespace
