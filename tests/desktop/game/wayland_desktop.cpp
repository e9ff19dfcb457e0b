#include "tests/desktop/game/wayland_desktop.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/desktop/game/playing.h"

namespace kavo::playing {

namespace {

constexpr const char* socket_name = "wayland-test";

// The compositor's own names for its displays, from the left: X1, X2, …
std::string output_name(size_t display) {
  return "X" + std::to_string(display + 1);
}

kavo::desktop::DisplaySize room_for(const std::vector<WaylandDisplay>& displays) {
  kavo::desktop::DisplaySize room = {0, 0};
  for (const WaylandDisplay& display : displays) {
    room.width += display.scale * display.width;
    room.height = std::max(room.height, display.scale * display.height);
  }
  return room;
}

// On a plain ground.
bool shows_pointer(const kavo::desktop::Bitmap& screen, int x, int y) {
  constexpr int size = 8; // at the least
  const uint32_t ground = screen.at(x - size, y);
  for (int row = y; row < y + size; ++row)
    for (int column = x; column < x + size; ++column)
      if (screen.at(column, row) != ground)
        return true;
  return false;
}

} // namespace

WaylandDesktop::WaylandDesktop(const char* shell, const std::vector<WaylandDisplay>& displays)
    : displays_(displays), desktop_({room_for(displays)}) {
  write_settings(shell);
  compositor_ =
      desktop_.start({{"weston", "--config=" + folder_ / "weston.ini", "--backend=x11-backend.so",
                       "--use-pixman", "--output-count=" + std::to_string(displays.size()),
                       std::string("--socket=") + socket_name},
                      {{"XDG_RUNTIME_DIR", folder_.path()}},
                      folder_.path()});
  lay_out_screens();
  // Weston gives its keyboard to what is below its pointer.
  point_at(0, 100, 100);
  screens_[0].focus();
  if (!kavo::desktop::eventually([&] { return std::filesystem::exists(folder_ / socket_name); }))
    throw std::runtime_error("weston did not start: " + compositor_->wait().errors);
}

void WaylandDesktop::write_settings(const char* shell) const {
  std::ofstream file(folder_ / "weston.ini");
  file << "[core]\nidle-time=0\nshell=" << shell << "-shell.so\n"
       << "[shell]\npanel-position=none\nlocking=false\nanimation=none\nstartup-animation=none\n"
       << "background-color=0xff000000\n";
  for (size_t i = 0; i < displays_.size(); ++i)
    file << "[output]\nname=" << output_name(i) << "\nmode=" << displays_[i].width << 'x'
         << displays_[i].height << "\nscale=" << displays_[i].scale << '\n';
}

// Without a window manager they all lie in the same corner.
void WaylandDesktop::lay_out_screens() {
  int left = 0;
  for (size_t i = 0; i < displays_.size(); ++i) {
    screens_.push_back(desktop_.wait_for_window("Weston Compositor - " + output_name(i)));
    screens_.back().move(left, 0);
    left_edges_.push_back(left);
    left += displays_[i].scale * displays_[i].width;
  }
}

std::unique_ptr<kavo::desktop::Process> WaylandDesktop::start_game() const {
  kavo::desktop::Launch game = launch(folder_.path(), "1", {});
  game.environment["DISPLAY"] = std::nullopt;
  game.environment["WAYLAND_DISPLAY"] = socket_name;
  game.environment["XDG_RUNTIME_DIR"] = folder_.path();
  // Its window has a border on machines that have a library for that, and weston takes the border's
  // shadow for a part of the window while it fills a display.
  game.environment["SDL_VIDEO_WAYLAND_ALLOW_LIBDECOR"] = "0";
  // Wayland's libraries leave memory behind that is theirs; what the game leaves behind is seen
  // under X.
  game.environment["ASAN_OPTIONS"] = "detect_leaks=0";
  return desktop_.start(game);
}

void WaylandDesktop::point_at(size_t display, int x, int y) {
  desktop_.move_pointer(left_edges_[display] + x, y);
}

// The compositor adds motions up from where the pointer came in, and may have begun with a wrong
// place: the pointer comes in anew, from another display.
void WaylandDesktop::point_until_seen(size_t display, int x, int y) {
  const size_t another = (display + 1) % screens_.size();
  const bool is_seen = kavo::desktop::eventually([&] {
    point_at(another, 1, 1);
    point_at(display, x, y);
    return shows_pointer(pixels(display), x, y);
  });
  if (!is_seen)
    throw std::runtime_error("weston does not show its pointer");
}

void WaylandDesktop::drag_window(size_t display, int x, int y, int distance) {
  point_until_seen(display, x, y);
  desktop_.press("Super_L");
  desktop_.press_pointer();
  point_at(display, x + distance, y);
  desktop_.release_pointer();
  desktop_.release("Super_L");
}

} // namespace kavo::playing
