// What a window sends to the X server: where the picture has changed, and little else. Another
// program paints the window over; what stays of that paint has not been sent.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/host/desktop/window_fixture.h"

namespace {

using kavo::desktop::Bitmap;
using kavo::desktop::DesktopWindow;
using kavo::desktop::WindowSize;
using kavo::test::colour_at;
using kavo::test::draw_squares;
using kavo::test::height;
using kavo::test::shows_squares;
using kavo::test::width;
using kavo::test::WindowTest;

constexpr uint32_t paint = 0x00FF00FF;

int pixels_sent(const Bitmap& shown) {
  return static_cast<int>(
      std::ranges::count_if(shown.pixels, [](uint32_t pixel) { return pixel != paint; }));
}

// Windows of so many percent of the picture's size.
class WindowOfScale : public WindowTest, public testing::WithParamInterface<int> {
protected:
  static double scale() { return GetParam() / 100.0; }
  static WindowSize size() {
    return {static_cast<int>(std::lround(width * scale())),
            static_cast<int>(std::lround(height * scale()))};
  }
  DesktopWindow open_with_squares() {
    const DesktopWindow window = open();
    window.move(0, 0);
    window.resize(size().width, size().height);
    draw_squares(bridge);
    EXPECT_TRUE(comes_to_show_squares(window, size()));
    return window;
  }
  // All of the frame is drawn anew, as the game does.
  void draw_frame_with_spot(int x, int y) {
    bridge.send("CLS");
    bridge.send("DRAWCOLOR", 1, 2, 3);
    bridge.send("RECT", 0, 0, width, height, 1);
    draw_squares(bridge);
    bridge.send("DRAWCOLOR", 255, 255, 255);
    bridge.send("RECT", x, y, 4, 4, 1);
    bridge.send("SCREENFLIP");
  }
};

INSTANTIATE_TEST_SUITE_P(InPercent, WindowOfScale, testing::Values(100, 150, 200));

TEST_P(WindowOfScale, SendsWhatHasChangedAndLittleElse) {
  const DesktopWindow window = open_with_squares();
  draw_frame_with_spot(100, 200);
  window.deface(paint);
  draw_frame_with_spot(400, 500);
  const Bitmap shown = window.pixels();
  const auto at = [&](double x, double y) {
    return shown.at(static_cast<int>(x * scale()), static_cast<int>(y * scale()));
  };
  EXPECT_EQ(at(402, 502), 0x00FFFFFFU);
  EXPECT_EQ(at(105, 205), colour_at(105, 205));
  EXPECT_LT(pixels_sent(shown), size().width * size().height / 50);
}

TEST_P(WindowOfScale, SendsOneRowOfAnEqualPictureNowAndThen) {
  const DesktopWindow window = open_with_squares();
  draw_frame_with_spot(100, 200);
  window.deface(paint);
  ASSERT_TRUE(kavo::desktop::eventually([&] {
    draw_frame_with_spot(100, 200);
    return pixels_sent(window.pixels()) > 0;
  }));
  EXPECT_EQ(pixels_sent(window.pixels()), size().width);
}

// No window manager, no event but that the desktop has lost a part of the picture.
TEST_P(WindowOfScale, ShowsAPictureAgainThatAnotherWindowCovered) {
  const DesktopWindow window = open_with_squares();
  {
    const auto other = desktop.start({{"xev", "-geometry", "200x200+100+100"}, {}, "."});
    ASSERT_TRUE(flip_until([&] { return !shows_squares(window.pixels()); }));
  }
  EXPECT_TRUE(comes_to_show_squares(window, size()));
}

class CalmWindowAtRest : public WindowTest {
private:
  kavo::test::Environment calm_{"QORRT_CALM", "1"};
};

TEST_F(CalmWindowAtRest, SendsNothingWhenItHasArrived) {
  const DesktopWindow window = open();
  draw_squares(bridge);
  ASSERT_TRUE(comes_to_show_squares(window));
  window.deface(paint);
  ASSERT_TRUE(flip_until([&] { return pixels_sent(window.pixels()) > 0; }));
  EXPECT_EQ(pixels_sent(window.pixels()), width);
}

} // namespace
