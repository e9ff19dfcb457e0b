// A desktop of a test's own: an X server without a screen, a keyboard to press, windows to find and
// their pixels to read.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/process.h"
#include "tests/desktop/x_server.h"

namespace kavo::desktop {

struct Bitmap {
  int width;
  int height;
  std::vector<uint32_t> pixels; // 0x00RRGGBB, row after row

  uint32_t at(int x, int y) const {
    return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
  }
};

struct WindowSize {
  int width;
  int height;
};

// Pixels, from the left and the top of the first display.
struct Place {
  int x;
  int y;
  int width;
  int height;

  bool operator==(const Place&) const = default;
};

class Connection; // to the X server

// A program's window. It stays valid as a name after the window is gone.
class DesktopWindow {
public:
  DesktopWindow(Connection& connection, unsigned long id) : connection_(&connection), id_(id) {}

  std::string title() const;
  // The two names by which desktops tie a window to its program.
  std::vector<std::string> class_names() const;
  WindowSize size() const;
  // Where it lies on the desktop, without its borders.
  Place place() const;
  // How far its title bar reaches up from there; 0 without a window manager.
  int title_bar_height() const;
  // Returns when the server has done it.
  void resize(int width, int height) const;
  void move(int x, int y) const;
  // Asks the window manager, as a taskbar does; it is done when is_minimised() says so.
  void minimise() const;
  void restore() const;
  // Takes it off the screen and puts it back there without asking anybody.
  void unmap() const;
  void map() const;
  bool is_minimised() const;
  bool is_shown() const;
  // Its first icon; 0 x 0 when it has none. Pixels are 0xAARRGGBB.
  Bitmap icon() const;
  // What it shows now, without borders. Throws std::runtime_error when it is not on the screen
  // with all of itself; the other gives nothing then.
  Bitmap pixels() const;
  std::optional<Bitmap> pixels_if_visible() const;
  // Paints it all over without a word to its program: what has the colour afterwards is what the
  // program has not sent since.
  void deface(uint32_t colour) const;
  // Gives it the keyboard.
  void focus() const;
  void take_focus_away() const;
  // Presses its close button.
  void ask_to_close() const;
  // Whether it has the keyboard.
  bool is_focused() const;
  // Takes it away from its program, which does not know.
  void destroy() const;

private:
  Connection* connection_;
  unsigned long id_;
};

class Desktop {
public:
  explicit Desktop(int width = 1280, int height = 1024);
  // Several displays side by side, the first one at the left.
  explicit Desktop(const std::vector<DisplaySize>& displays);
  ~Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  // For DISPLAY.
  const std::string& display_name() const { return server_.display_name(); }

  // The X server's process.
  pid_t server() const { return server_.process().id(); }

  // Starts a program on this desktop, on nothing but this one.
  std::unique_ptr<Process> start(Launch launch) const;

  // Ends the X server under the programs that use it. The desktop can be used no more.
  void end();
  // Stops it in its tracks: it answers nobody any more.
  void freeze();

  // Starts a window manager (openbox) and waits until it manages.
  void start_window_manager();
  // Waits until it has done all that it was given to do before.
  void wait_for_window_manager();

  // Takes one of several displays away, counted from 0, and brings it back to its place.
  void unplug(size_t display) const;
  void plug_in(size_t display) const;

  // Nothing when there is no such window.
  std::optional<DesktopWindow> find_window(const std::string& title);
  // Throws std::runtime_error when it does not appear.
  DesktopWindow wait_for_window(const std::string& title);

  // Opens a window of somebody else's, which the window manager gives the keyboard. Returns when it
  // has it.
  DesktopWindow open_other_window();

  // The keys by the names of X ("Left", "a", "space", "Return", "Escape", "KP_Enter"). Each
  // returns when the server has passed it on.
  void press(const std::string& key);
  void release(const std::string& key);
  void tap(const std::string& key);
  // All of them together.
  void tap(const std::vector<std::string>& keys);
  // The keyboard's layout by its name, such as "de".
  void set_layout(const std::string& name);
  void move_pointer(int x, int y);
  // With its left button.
  void press_pointer();
  void release_pointer();
  // Whether the pointer has a shape where it is now.
  bool is_pointer_visible() const;

private:
  void send_key(const std::string& key, bool is_down);
  void send_button(bool is_down);
  void run(const std::vector<std::string>& arguments) const;

  std::vector<DisplaySize> displays_;
  XServer server_;
  std::unique_ptr<Connection> connection_;
  std::unique_ptr<Process> window_manager_;
  long desktops_asked_for_ = 4; // another number than it begins with
};

// Asks again and again until the answer is yes; false when it stays no for half a minute.
bool eventually(const std::function<bool()>& condition);

} // namespace kavo::desktop
