// What the tests of the window share: a desktop of their own and a host of this process on it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/desktop.h"
#include "tests/host/bridge.h"

namespace kavo::test {

using kavo::desktop::Bitmap;
using kavo::desktop::Desktop;
using kavo::desktop::DesktopWindow;
using kavo::desktop::DisplaySize;
using kavo::desktop::WindowSize;

constexpr const char* title = "KAVO - Schlagseite";
constexpr int width = 660;
constexpr int height = 800;

// The picture that the tests look for: a colour that depends on the place, in squares of 10.
inline uint32_t colour_at(int x, int y) {
  return static_cast<uint32_t>(x / 10 * 3) << 16U | static_cast<uint32_t>(y / 10 * 2) << 8U | 0x55U;
}

inline void draw_squares(Bridge& bridge) {
  for (int y = 0; y < height; y += 10)
    for (int x = 0; x < width; x += 10) {
      const uint32_t colour = colour_at(x, y);
      bridge.send("DRAWCOLOR", static_cast<int>(colour >> 16U),
                  static_cast<int>(colour >> 8U & 0xFFU), static_cast<int>(colour & 0xFFU));
      bridge.send("RECT", x, y, 10, 10, 1);
    }
}

// Whether the squares fill a window of any size, whole and undistorted: the middle of each of them
// has its colour. Scaling may mix what lies at their edges.
inline bool shows_squares(const Bitmap& shown) {
  const double scale = std::min(static_cast<double>(shown.width) / width,
                                static_cast<double>(shown.height) / height);
  const double left = (shown.width - scale * width) / 2;
  const double top = (shown.height - scale * height) / 2;
  for (int y = 5; y < height; y += 10)
    for (int x = 5; x < width; x += 10)
      if (shown.at(static_cast<int>(left + scale * x), static_cast<int>(top + scale * y)) !=
          colour_at(x, y))
        return false;
  return true;
}

// A desktop and a host of this process on it.
class WindowTest : public testing::Test {
protected:
  explicit WindowTest(int display_width = 1400, int display_height = 1700)
      : desktop(display_width, display_height) {}
  explicit WindowTest(const std::vector<DisplaySize>& displays) : desktop(displays) {}

  DesktopWindow open(double scale = 1) {
    EXPECT_EQ(bridge.error_of("SCREEN", width, height, title, scale), "");
    bridge.send("SCREENFLIP");
    const DesktopWindow window = desktop.wait_for_window(title);
    window.focus();
    flip_until([&] { return true; });
    return window;
  }

  // A program's loop: it goes on presenting while it waits.
  bool flip_until(const std::function<bool()>& condition) {
    return kavo::desktop::eventually([&] {
      bridge.send("SCREENFLIP");
      return condition();
    });
  }

  // The server and the window manager have their say before what is drawn stays.
  bool comes_to_show_squares(const DesktopWindow& window, WindowSize wanted = {width, height}) {
    return flip_until([&] {
      const std::optional<Bitmap> shown = window.pixels_if_visible();
      return shown && shown->width == wanted.width && shown->height == wanted.height &&
             shows_squares(*shown);
    });
  }

  bool is_held(const char* key) { return bridge.send("GFX.KEYSTATE", key) != 0; }

  // Presents until the window has the size, and what it shows then.
  Bitmap pixels_at(const DesktopWindow& window, WindowSize wanted) {
    EXPECT_TRUE(flip_until([&] {
      const WindowSize size = window.size();
      return size.width == wanted.width && size.height == wanted.height;
    }));
    // The program learns of the new size with this flip and draws to it with the next one.
    bridge.send("SCREENFLIP");
    bridge.send("SCREENFLIP");
    return window.pixels();
  }

  Desktop desktop;

private:
  Environment display_{"DISPLAY", desktop.display_name().c_str()};
  Environment wayland_{"WAYLAND_DISPLAY", nullptr};
  Environment driver_{"SDL_VIDEODRIVER", nullptr};

protected:
  Bridge bridge;
};

} // namespace kavo::test
