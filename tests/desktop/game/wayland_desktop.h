// A Wayland desktop: a compositor (weston) that shows each of its displays in a window of a test's
// own X server, where the pixels can be read, the keys pressed and the pointer moved.
#pragma once

#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/desktop.h"
#include "tests/support/temporary_folder.h"

namespace kavo::playing {

struct WaylandDisplay {
  int width; // in the desktop's units
  int height;
  int scale; // pixels for each of them, either way
};

class WaylandDesktop {
public:
  // How the compositor treats windows: "kiosk" gives all of a display to its only program,
  // "desktop" lets the player move windows with the Super key held.
  WaylandDesktop(const char* shell, const std::vector<WaylandDisplay>& displays);

  // The real game, which knows of no X server.
  std::unique_ptr<kavo::desktop::Process> start_game() const;

  // What a display shows.
  kavo::desktop::Bitmap pixels(size_t display = 0) const { return screens_[display].pixels(); }
  void tap(const std::string& key) { desktop_.tap(key); }
  // Moves the window at (x, y) on a display, in its pixels, to the side; it has to be plain there.
  void drag_window(size_t display, int x, int y, int distance);
  // Ends the compositor under the programs that use it.
  void end() const { compositor_->send_signal(SIGKILL); }
  // Takes a display away for good.
  void unplug(size_t display) const { screens_[display].ask_to_close(); }

private:
  void point_at(size_t display, int x, int y);
  void write_settings(const char* shell) const;
  void lay_out_screens();
  void point_until_seen(size_t display, int x, int y);

  std::vector<WaylandDisplay> displays_;
  kavo::test::TemporaryFolder folder_;
  kavo::desktop::Desktop desktop_;
  std::unique_ptr<kavo::desktop::Process> compositor_;
  std::vector<kavo::desktop::DesktopWindow> screens_;
  std::vector<int> left_edges_; // of the screens, on the X server
};

} // namespace kavo::playing
