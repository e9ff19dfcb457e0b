#include "tests/desktop/desktop.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xfixes.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <csignal>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace kavo::desktop {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 30s;

struct FreeX {
  void operator()(void* memory) const { XFree(memory); }
};
template<typename T>
using Owned = std::unique_ptr<T, FreeX>;

// A window may vanish between two requests; then the second one fails, which is no fault here.
int ignore_error(Display*, XErrorEvent*) {
  return 0;
}

} // namespace

class Connection {
public:
  explicit Connection(const std::string& name) : display_(XOpenDisplay(name.c_str())) {
    if (display_ == nullptr)
      throw std::runtime_error("cannot reach the X server " + name);
    XSetErrorHandler(ignore_error);
  }
  ~Connection() { XCloseDisplay(display_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  Display* display() const { return display_; }
  Window root() const { return DefaultRootWindow(display_); }
  Atom atom(const char* name) const { return XInternAtom(display_, name, False); }
  // Xlib keeps a copy of the layout until it reads the message that says it has changed.
  void reload_keyboard() const {
    XEvent event = {};
    finish();
    while (XPending(display_) > 0) {
      XNextEvent(display_, &event);
      if (event.type == MappingNotify)
        XRefreshKeyboardMapping(&event.xmapping);
    }
  }
  void finish() const { XSync(display_, False); }

  std::string text_property(Window window, Atom property) const {
    Atom type = 0;
    int format = 0;
    unsigned long length = 0, rest = 0;
    unsigned char* data = nullptr;
    if (XGetWindowProperty(display_, window, property, 0, 1024, False, AnyPropertyType, &type,
                           &format, &length, &rest, &data) != Success)
      return {};
    const Owned<unsigned char> owned(data);
    return data == nullptr || format != 8
               ? std::string()
               : std::string(reinterpret_cast<const char*>(data), length);
  }

  // A property that is a list of 32-bit numbers, empty when it is not there.
  std::vector<long> numbers(Window window, const char* property) const {
    constexpr long most = 1L << 20;
    Atom type = 0;
    int format = 0;
    unsigned long length = 0, rest = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(display_, window, atom(property), 0, most, False, AnyPropertyType, &type,
                       &format, &length, &rest, &data);
    const Owned<unsigned char> owned(data);
    if (format != 32)
      return {};
    const auto* first = reinterpret_cast<const long*>(data); // Xlib's way to hold 32 bits
    return {first, first + length};
  }

  // Asks the window manager to change one of its properties of the root window.
  void ask_root(const char* message, long value) const {
    XEvent event = message_to(root(), message);
    event.xclient.data.l[0] = value;
    ask_manager(event);
  }

  void ask_manager(XEvent& event) const {
    XSendEvent(display_, root(), False, SubstructureRedirectMask | SubstructureNotifyMask, &event);
    finish();
  }

  XEvent message_to(Window window, const char* message) const {
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = atom(message);
    event.xclient.format = 32;
    return event;
  }

  // The first mapped window below `window` with the title, 0 when there is none.
  Window find(Window window, const std::string& title) const {
    XWindowAttributes attributes = {};
    if (XGetWindowAttributes(display_, window, &attributes) == 0)
      return 0;
    if (attributes.map_state == IsViewable && text_property(window, atom("_NET_WM_NAME")) == title)
      return window;
    return find_below(window, title);
  }

private:
  Window find_below(Window window, const std::string& title) const {
    Window root = 0, parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display_, window, &root, &parent, &children, &count) == 0)
      return 0;
    const Owned<Window> owned(children);
    for (unsigned i = 0; i < count; ++i)
      if (const Window found = find(children[i], title))
        return found;
    return 0;
  }

  Display* display_;
};

std::string DesktopWindow::title() const {
  return connection_->text_property(id_, connection_->atom("_NET_WM_NAME"));
}

std::vector<std::string> DesktopWindow::class_names() const {
  const std::string both = connection_->text_property(id_, XA_WM_CLASS);
  const size_t end = both.find('\0');
  return {both.substr(0, end), both.c_str() + std::min(both.size(), end + 1)};
}

WindowSize DesktopWindow::size() const {
  XWindowAttributes attributes = {};
  XGetWindowAttributes(connection_->display(), id_, &attributes);
  return {attributes.width, attributes.height};
}

Place DesktopWindow::place() const {
  const auto [width, height] = size();
  Place place = {0, 0, width, height};
  Window child = 0;
  XTranslateCoordinates(connection_->display(), id_, connection_->root(), 0, 0, &place.x, &place.y,
                        &child);
  return place;
}

int DesktopWindow::title_bar_height() const {
  constexpr size_t left_right_top_bottom = 4;
  const std::vector<long> borders = connection_->numbers(id_, "_NET_FRAME_EXTENTS");
  return borders.size() == left_right_top_bottom ? static_cast<int>(borders[2]) : 0;
}

void DesktopWindow::resize(int width, int height) const {
  XResizeWindow(connection_->display(), id_, static_cast<unsigned>(width),
                static_cast<unsigned>(height));
  connection_->finish();
}

void DesktopWindow::move(int x, int y) const {
  XMoveWindow(connection_->display(), id_, x, y);
  connection_->finish();
}

void DesktopWindow::deface(uint32_t colour) const {
  Display* display = connection_->display();
  const WindowSize all = size();
  XGCValues values = {};
  values.foreground = colour;
  const GC context = XCreateGC(display, id_, GCForeground, &values);
  XFillRectangle(display, id_, context, 0, 0, static_cast<unsigned>(all.width),
                 static_cast<unsigned>(all.height));
  XFreeGC(display, context);
  connection_->finish();
}

void DesktopWindow::minimise() const {
  XIconifyWindow(connection_->display(), id_, DefaultScreen(connection_->display()));
  connection_->finish();
}

void DesktopWindow::restore() const {
  XEvent event = connection_->message_to(id_, "_NET_ACTIVE_WINDOW");
  constexpr long from_a_taskbar = 2;
  event.xclient.data.l[0] = from_a_taskbar;
  connection_->ask_manager(event);
}

void DesktopWindow::unmap() const {
  XUnmapWindow(connection_->display(), id_);
  connection_->finish();
}

void DesktopWindow::map() const {
  XMapWindow(connection_->display(), id_);
  connection_->finish();
}

bool DesktopWindow::is_minimised() const {
  const std::vector<long> state = connection_->numbers(id_, "WM_STATE");
  return !state.empty() && state[0] == IconicState;
}

bool DesktopWindow::is_shown() const {
  XWindowAttributes attributes = {};
  return XGetWindowAttributes(connection_->display(), id_, &attributes) != 0 &&
         attributes.map_state == IsViewable;
}

Bitmap DesktopWindow::icon() const {
  const std::vector<long> numbers = connection_->numbers(id_, "_NET_WM_ICON");
  if (numbers.size() < 2)
    return {0, 0, {}};
  Bitmap bitmap = {static_cast<int>(numbers[0]), static_cast<int>(numbers[1]), {}};
  std::transform(numbers.begin() + 2, numbers.end(), std::back_inserter(bitmap.pixels),
                 [](long pixel) { return static_cast<uint32_t>(pixel); });
  return bitmap;
}

Bitmap DesktopWindow::pixels() const {
  const std::optional<Bitmap> bitmap = pixels_if_visible();
  if (!bitmap)
    throw std::runtime_error("the window's pixels cannot be read");
  return *bitmap;
}

namespace {

uint32_t eight_bits_of(unsigned long pixel, unsigned long mask) {
  const auto shift = static_cast<unsigned>(std::countr_zero(mask));
  const unsigned long most = mask >> shift;
  return static_cast<uint32_t>((((pixel & mask) >> shift) * 255 + most / 2) / most);
}

// Pixels of a palette are taken for three bits of red and green and two of blue.
uint32_t colour_of(unsigned long pixel, const XImage& image) {
  const bool has_palette = image.red_mask == 0;
  return eight_bits_of(pixel, has_palette ? 0xE0 : image.red_mask) << 16U |
         eight_bits_of(pixel, has_palette ? 0x1C : image.green_mask) << 8U |
         eight_bits_of(pixel, has_palette ? 0x03 : image.blue_mask);
}

} // namespace

std::optional<Bitmap> DesktopWindow::pixels_if_visible() const {
  const auto [width, height] = size();
  XImage* image = XGetImage(connection_->display(), id_, 0, 0, static_cast<unsigned>(width),
                            static_cast<unsigned>(height), AllPlanes, ZPixmap);
  if (image == nullptr)
    return std::nullopt;
  Bitmap bitmap = {width, height, {}};
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      bitmap.pixels.push_back(colour_of(XGetPixel(image, x, y), *image));
  XDestroyImage(image);
  return bitmap;
}

void DesktopWindow::focus() const {
  XSetInputFocus(connection_->display(), id_, RevertToPointerRoot, CurrentTime);
  connection_->finish();
}

void DesktopWindow::take_focus_away() const {
  XSetInputFocus(connection_->display(), None, RevertToNone, CurrentTime);
  connection_->finish();
}

bool DesktopWindow::is_focused() const {
  Window focused = None;
  int reverts_to = 0;
  XGetInputFocus(connection_->display(), &focused, &reverts_to);
  return focused == id_;
}

void DesktopWindow::ask_to_close() const {
  XEvent event = connection_->message_to(id_, "WM_PROTOCOLS");
  event.xclient.data.l[0] = static_cast<long>(connection_->atom("WM_DELETE_WINDOW"));
  event.xclient.data.l[1] = CurrentTime;
  XSendEvent(connection_->display(), id_, False, NoEventMask, &event);
  connection_->finish();
}

void DesktopWindow::destroy() const {
  XDestroyWindow(connection_->display(), id_);
  connection_->finish();
}

Desktop::Desktop(int width, int height) : Desktop(std::vector<DisplaySize>{{width, height}}) {}

Desktop::Desktop(const std::vector<DisplaySize>& displays)
    : displays_(displays), server_(displays),
      connection_(std::make_unique<Connection>(display_name())) {}

// A frozen server could not be parted from.
Desktop::~Desktop() {
  server_.process().send_signal(SIGCONT);
}

std::unique_ptr<Process> Desktop::start(Launch launch) const {
  launch.environment.insert({{"DISPLAY", display_name()},
                             {"WAYLAND_DISPLAY", std::nullopt},
                             {"SDL_VIDEODRIVER", std::nullopt}});
  return std::make_unique<Process>(launch);
}

void Desktop::end() {
  connection_.reset(); // or Xlib would end the test
  server_.process().send_signal(SIGTERM);
  server_.process().wait();
}

void Desktop::freeze() {
  server_.process().send_signal(SIGSTOP);
}

// It announces itself before it is ready, and loses what comes in between, windows too. Once it
// has done what it was asked it is past that.
void Desktop::start_window_manager() {
  window_manager_ = start({{"openbox"}, {}, "."});
  wait_for_window_manager();
}

void Desktop::wait_for_window_manager() {
  const long desktops = ++desktops_asked_for_;
  const bool manages = eventually([&] {
    connection_->ask_root("_NET_NUMBER_OF_DESKTOPS", desktops);
    return connection_->numbers(connection_->root(), "_NET_NUMBER_OF_DESKTOPS") ==
           std::vector<long>{desktops};
  });
  if (!manages)
    throw std::runtime_error("openbox does not manage the desktop");
}

std::optional<DesktopWindow> Desktop::find_window(const std::string& title) {
  const Window found = connection_->find(connection_->root(), title);
  if (found == 0)
    return std::nullopt;
  return DesktopWindow(*connection_, found);
}

DesktopWindow Desktop::wait_for_window(const std::string& title) {
  std::optional<DesktopWindow> found;
  if (!eventually([&] { return (found = find_window(title)).has_value(); }))
    throw std::runtime_error("no window is called " + title);
  return *found;
}

DesktopWindow Desktop::open_other_window() {
  Display* display = connection_->display();
  const Window id = XCreateSimpleWindow(display, connection_->root(), 700, 50, 300, 200, 0, 0, 0);
  XStoreName(display, id, "another");
  XMapRaised(display, id);
  connection_->finish();
  const DesktopWindow window(*connection_, id);
  if (!eventually([&] { return window.is_focused(); }))
    throw std::runtime_error("the other window does not get the keyboard");
  return window;
}

void Desktop::press(const std::string& key) {
  send_key(key, true);
}

void Desktop::release(const std::string& key) {
  send_key(key, false);
}

void Desktop::tap(const std::string& key) {
  press(key);
  release(key);
}

void Desktop::tap(const std::vector<std::string>& keys) {
  for (const std::string& key : keys)
    press(key);
  std::for_each(keys.rbegin(), keys.rend(), [this](const std::string& key) { release(key); });
}

void Desktop::run(const std::vector<std::string>& arguments) const {
  const Outcome outcome = start({arguments, {}, "."})->wait();
  if (outcome.code != 0)
    throw std::runtime_error(arguments[0] + ": " + outcome.errors);
}

void Desktop::set_layout(const std::string& name) {
  run({"setxkbmap", name});
  connection_->reload_keyboard();
}

void Desktop::unplug(size_t display) const {
  run({"xrandr", "--output", output_name(display), "--off"});
}

void Desktop::plug_in(size_t display) const {
  run({"xrandr", "--output", output_name(display), "--mode", mode_name(displays_[display]),
       "--right-of", output_name(display - 1)});
}

void Desktop::move_pointer(int x, int y) {
  XTestFakeMotionEvent(connection_->display(), -1, x, y, CurrentTime);
  connection_->finish();
}

void Desktop::press_pointer() {
  send_button(true);
}

void Desktop::release_pointer() {
  send_button(false);
}

bool Desktop::is_pointer_visible() const {
  const Owned<XFixesCursorImage> image(XFixesGetCursorImage(connection_->display()));
  const unsigned long* first = image->pixels;
  return std::any_of(first, first + size_t{image->width} * image->height,
                     [](unsigned long pixel) { return pixel != 0; });
}

void Desktop::send_key(const std::string& key, bool is_down) {
  const KeySym symbol = XStringToKeysym(key.c_str());
  const KeyCode code = XKeysymToKeycode(connection_->display(), symbol);
  if (code == 0)
    throw std::runtime_error("no key is called " + key);
  XTestFakeKeyEvent(connection_->display(), code, is_down ? True : False, CurrentTime);
  connection_->finish();
}

void Desktop::send_button(bool is_down) {
  XTestFakeButtonEvent(connection_->display(), Button1, is_down ? True : False, CurrentTime);
  connection_->finish();
}

bool eventually(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline)
      return false;
    std::this_thread::sleep_for(5ms);
  }
  return true;
}

} // namespace kavo::desktop
