// A calm window: it follows what is drawn, and only what is shown does.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "host/screen/calm_display.h"
#include "tests/host/desktop/window_fixture.h"
#include "tests/host/read_png.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

using kavo::desktop::DesktopWindow;
using kavo::host::CalmDisplay;
using kavo::test::height;
using kavo::test::width;
using kavo::test::WindowTest;

constexpr uint32_t white = 0x00FFFFFF;

void draw_white(kavo::test::Bridge& bridge) {
  bridge.send("DRAWCOLOR", 255, 255, 255);
  bridge.send("RECT", 0, 0, width, height, 1);
}

// The one grey that the window shows everywhere; 1 when it shows something else.
uint32_t shade(const DesktopWindow& window) {
  const auto pixels = window.pixels().pixels;
  return std::ranges::all_of(pixels, [&](uint32_t pixel) { return pixel == pixels[0]; }) ? pixels[0]
                                                                                         : 1;
}

class CalmWindow : public WindowTest {
protected:
  // After so many pictures of white on black.
  uint32_t shade_after(const DesktopWindow& window, int pictures) {
    for (int picture = 0; picture < pictures; ++picture)
      bridge.send("SCREENFLIP");
    return shade(window);
  }

private:
  kavo::test::Environment calm_{"QORRT_CALM", "1"};
};

// What so many pictures of white make of black.
uint32_t expected_shade(int pictures) {
  const uint32_t drawn[] = {white};
  uint32_t shown[] = {0};
  for (int picture = 0; picture < pictures; ++picture)
    kavo::host::follow(drawn, shown, CalmDisplay::usual_share);
  return shown[0];
}

int pictures_to_white() {
  int pictures = 0;
  while (expected_shade(pictures) != white)
    ++pictures;
  return pictures;
}

TEST_F(CalmWindow, FollowsWhatIsDrawnUntilItShowsThat) {
  const DesktopWindow window = open();
  draw_white(bridge);
  EXPECT_EQ(shade_after(window, 1), expected_shade(1));
  EXPECT_EQ(shade_after(window, 3), expected_shade(4));
  EXPECT_LT(expected_shade(4), white);
  EXPECT_EQ(shade_after(window, pictures_to_white()), white);
}

TEST_F(CalmWindow, FollowsAtTwiceTheSizeToo) {
  const DesktopWindow window = open(2);
  draw_white(bridge);
  EXPECT_EQ(shade_after(window, 2), expected_shade(2));
  EXPECT_EQ(shade_after(window, pictures_to_white()), white);
}

TEST_F(CalmWindow, GoesOnAfterItsSizeHasChanged) {
  const DesktopWindow window = open();
  draw_white(bridge);
  EXPECT_EQ(shade_after(window, 2), expected_shade(2));
  window.resize(width / 2, height / 2);
  pixels_at(window, {width / 2, height / 2});
  EXPECT_EQ(shade_after(window, pictures_to_white()), white);
}

TEST_F(CalmWindow, SavesWhatIsDrawn) {
  const kavo::test::WorkingFolder folder;
  open();
  draw_white(bridge);
  bridge.send("SCREENFLIP");
  EXPECT_EQ(bridge.error_of("GFX.SAVE_SCREENSHOT", "drawn.png"), "");
  const auto saved = kavo::test::read_png(kavo::test::read_file("drawn.png")).pixels;
  EXPECT_TRUE(std::ranges::all_of(saved, [](uint32_t pixel) { return pixel == white; }));
}

TEST_F(WindowTest, ShowsWhatIsDrawnAtOnceUnlessACalmOneIsAskedFor) {
  for (const char* calm : {static_cast<const char*>(nullptr), "", "0"}) {
    const kavo::test::Environment setting("QORRT_CALM", calm);
    const DesktopWindow window = open();
    draw_white(bridge);
    bridge.send("SCREENFLIP");
    EXPECT_EQ(shade(window), white);
  }
}

} // namespace
