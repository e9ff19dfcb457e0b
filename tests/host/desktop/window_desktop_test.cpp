// The window among others: its icon, the pointer over it, moved, minimised and brought back.
#include "host/desktop/icon_data.h"
#include "tests/host/desktop/window_fixture.h"

namespace {

using kavo::test::Bitmap;
using kavo::test::DesktopWindow;
using kavo::test::draw_squares;
using kavo::test::height;
using kavo::test::width;
using kavo::test::WindowSize;
using kavo::test::WindowTest;

TEST_F(WindowTest, CarriesItsIcon) {
  const Bitmap icon = open().icon();
  ASSERT_EQ(icon.width, kavo::host::icon_width);
  ASSERT_EQ(icon.height, kavo::host::icon_height);
  ASSERT_EQ(icon.pixels.size() * 4, std::size(kavo::host::icon_rgba));
  for (size_t i = 0; i < icon.pixels.size(); ++i) {
    const uint8_t* rgba = kavo::host::icon_rgba + 4 * i;
    ASSERT_EQ(icon.pixels[i], uint32_t{rgba[3]} << 24U | uint32_t{rgba[0]} << 16U |
                                  uint32_t{rgba[1]} << 8U | uint32_t{rgba[2]});
  }
}

TEST_F(WindowTest, ThePointerHidesOverItUntilItIsMoved) {
  const DesktopWindow window = open();
  window.move(0, 0);
  desktop.move_pointer(300, 300);
  EXPECT_TRUE(flip_until([&] { return desktop.is_pointer_visible(); }));
  EXPECT_TRUE(flip_until([&] { return !desktop.is_pointer_visible(); }));
  desktop.move_pointer(310, 300);
  EXPECT_TRUE(flip_until([&] { return desktop.is_pointer_visible(); }));
  EXPECT_TRUE(flip_until([&] { return !desktop.is_pointer_visible(); }));
  desktop.move_pointer(1300, 1600);
  EXPECT_TRUE(flip_until([&] { return desktop.is_pointer_visible(); })) << "beside the window";
}

class ManagedWindow : public WindowTest {
protected:
  ManagedWindow() { desktop.start_window_manager(); }
};

TEST_F(ManagedWindow, ShowsItsPictureAfterItWasMoved) {
  const DesktopWindow window = open();
  draw_squares(bridge);
  for (const int place : {500, -200, 90}) { // in between it is partly beside the screen
    window.move(place, place);
    bridge.send("SCREENFLIP");
  }
  EXPECT_TRUE(comes_to_show_squares(window));
}

TEST_F(ManagedWindow, ShowsItsPictureAfterItWasMinimised) {
  const DesktopWindow window = open();
  draw_squares(bridge);
  for (int round = 0; round < 3; ++round) {
    window.minimise();
    ASSERT_TRUE(flip_until([&] { return window.is_minimised() && !window.is_shown(); }));
    window.restore();
    ASSERT_TRUE(flip_until([&] { return window.is_shown(); }));
  }
  EXPECT_TRUE(comes_to_show_squares(window));
}

TEST_F(ManagedWindow, ShowsAScaledPictureThatIsAsItWasAfterItWasMovedAndMinimised) {
  const DesktopWindow window = open();
  const WindowSize size = {width + 200, height + 300};
  window.resize(size.width, size.height);
  draw_squares(bridge);
  ASSERT_TRUE(comes_to_show_squares(window, size));
  for (const int place : {900, -200, 90}) {
    window.move(place, place);
    bridge.send("SCREENFLIP");
  }
  EXPECT_TRUE(comes_to_show_squares(window, size));
  window.minimise();
  ASSERT_TRUE(flip_until([&] { return window.is_minimised() && !window.is_shown(); }));
  window.restore();
  ASSERT_TRUE(flip_until([&] { return window.is_shown(); }));
  EXPECT_TRUE(comes_to_show_squares(window, size));
}

TEST_F(ManagedWindow, DrawsOnWhileItIsMinimised) {
  const DesktopWindow window = open();
  window.minimise();
  ASSERT_TRUE(flip_until([&] { return window.is_minimised() && !window.is_shown(); }));
  draw_squares(bridge);
  bridge.send("SCREENFLIP");
  window.restore();
  ASSERT_TRUE(flip_until([&] { return !window.is_minimised(); }));
  EXPECT_TRUE(comes_to_show_squares(window));
}

TEST_F(ManagedWindow, ShowsItsPictureAfterManySizes) {
  const DesktopWindow window = open();
  draw_squares(bridge);
  for (const int size : {200, 1201, 333, 1, 900}) {
    window.resize(size, size);
    flip_until([&] { return true; });
  }
  window.resize(width, height);
  EXPECT_TRUE(comes_to_show_squares(window));
}

} // namespace
