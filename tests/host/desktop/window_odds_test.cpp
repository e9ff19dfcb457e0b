// What a desktop can do to a window that is no fault of the program's: pixels of any kind, requests
// refused, sizes beyond all displays, a key pressed too often.
#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/host/desktop/window_fixture.h"

namespace {

using kavo::desktop::Bitmap;
using kavo::desktop::DesktopWindow;
using kavo::desktop::DisplaySize;
using kavo::test::colour_at;
using kavo::test::draw_squares;
using kavo::test::height;
using kavo::test::width;
using kavo::test::WindowTest;

// How far a component may be from its eight bits.
struct Depth {
  int bits;
  int tolerance;
};

void PrintTo(const Depth& depth, std::ostream* out) {
  *out << depth.bits;
}

class WindowDepth : public WindowTest, public testing::WithParamInterface<Depth> {
protected:
  WindowDepth() : WindowTest(std::vector<DisplaySize>{{1400, 1700, GetParam().bits}}) {}

  static bool are_near(uint32_t shown, uint32_t drawn) {
    for (const unsigned shift : {0U, 8U, 16U})
      if (std::abs(static_cast<int>(shown >> shift & 0xFFU) -
                   static_cast<int>(drawn >> shift & 0xFFU)) > GetParam().tolerance)
        return false;
    return true;
  }

  bool shows_about_the_squares(const DesktopWindow& window) {
    const std::optional<Bitmap> shown = window.pixels_if_visible();
    if (!shown || shown->width != width || shown->height != height)
      return false;
    for (int y = 5; y < height; y += 10)
      for (int x = 5; x < width; x += 10)
        if (!are_near(shown->at(x, y), colour_at(x, y)))
          return false;
    return true;
  }
};

TEST_P(WindowDepth, ShowsThePicture) {
  const DesktopWindow window = open();
  draw_squares(bridge);
  EXPECT_TRUE(flip_until([&] { return shows_about_the_squares(window); }));
  EXPECT_EQ(bridge.error_of("SCREENFLIP"), "");
}

INSTANTIATE_TEST_SUITE_P(OfTheDisplay, WindowDepth,
                         testing::Values(Depth{8, 43}, Depth{15, 8}, Depth{16, 8}, Depth{24, 0},
                                         Depth{30, 1}),
                         [](const auto& depth) { return std::to_string(depth.param.bits); });

TEST_F(WindowTest, ARequestThatTheServerRefusesIsNotedOnceAndPlayGoesOn) {
  const DesktopWindow window = open();
  testing::internal::CaptureStderr();
  window.destroy();
  for (int picture = 0; picture < 20; ++picture)
    EXPECT_EQ(bridge.error_of("SCREENFLIP"), "");
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(told.starts_with("the X server refused a request (error ")) << told;
  EXPECT_EQ(told.find('\n'), told.size() - 1) << told;
}

TEST_F(WindowTest, LargerThanAnyDisplayItIsStillAWindow) {
  const DesktopWindow window = open();
  draw_squares(bridge);
  window.resize(32767, 32767);
  EXPECT_TRUE(flip_until([&] { return window.size().width == 32767; }));
  for (int picture = 0; picture < 5; ++picture)
    EXPECT_EQ(bridge.error_of("SCREENFLIP"), "");
  window.resize(width, height);
  EXPECT_TRUE(comes_to_show_squares(window));
}

int count_size_changes(void* count, SDL_Event* event) {
  *static_cast<int*>(count) +=
      event->type == SDL_WINDOWEVENT && event->window.event == SDL_WINDOWEVENT_SIZE_CHANGED;
  return 0;
}

bool is_full_screen() {
  SDL_Window* window = SDL_GetKeyboardFocus();
  return window != nullptr && (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
}

TEST_F(WindowTest, SwitchesToFullScreenThatTheNextPressUndoesAreNotMade) {
  desktop.start_window_manager();
  const DesktopWindow window = open();
  draw_squares(bridge);
  ASSERT_TRUE(comes_to_show_squares(window));
  int changes = 0;
  SDL_AddEventWatch(count_size_changes, &changes);
  for (int press = 0; press < 300; ++press)
    desktop.tap("F11");
  desktop.tap("A");
  EXPECT_TRUE(flip_until([&] { return is_held("A"); })) << "all presses have been delivered";
  // They may come in two parts, each of an odd number, for presses that follow each other faster
  // than a millisecond are one press that repeats.
  EXPECT_LE(changes, 4);
  EXPECT_TRUE(flip_until([&] { return is_full_screen() == (window.size().width == 1400); }));
  const bool was_full_screen = is_full_screen();
  desktop.tap("F11");
  EXPECT_TRUE(flip_until([&] { return (window.size().width == 1400) != was_full_screen; }));
  EXPECT_GT(changes, 0);
  SDL_DelEventWatch(count_size_changes, &changes);
}

} // namespace
