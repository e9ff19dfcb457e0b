#include "bench/desktop/frame_watch.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xdamage.h>
#include <poll.h>

#include <stdexcept>

namespace kavo::bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto patience = std::chrono::seconds(10);

int ignore_error(Display*, XErrorEvent*) {
  return 0;
}

} // namespace

struct FrameWatch::Server {
  Display* display = nullptr;
  int damage_event = 0; // the number that this server gives the report
  int width = 0;        // of the window to watch
  int height = 0;
  Window window = 0;
  Damage damage = 0;

  XEvent next_event() const {
    const Instant deadline = Clock::now() + patience;
    while (XPending(display) == 0) {
      pollfd connection = {ConnectionNumber(display), POLLIN, 0};
      poll(&connection, 1, 1000);
      if (Clock::now() > deadline)
        throw std::runtime_error("no frame for ten seconds");
    }
    XEvent event = {};
    XNextEvent(display, &event);
    return event;
  }

  void watch(Drawable drawable) {
    window = drawable;
    damage = XDamageCreate(display, drawable, XDamageReportNonEmpty);
    XFlush(display);
  }
};

FrameWatch::FrameWatch(const std::string& display_name) : server_(std::make_unique<Server>()) {
  server_->display = XOpenDisplay(display_name.c_str());
  int first_error = 0, first_event = 0;
  if (server_->display == nullptr ||
      XDamageQueryExtension(server_->display, &first_event, &first_error) == 0)
    throw std::runtime_error("no X server with damage reports at " + display_name);
  server_->damage_event = first_event + XDamageNotify;
  // A pixel may be asked for before its window is shown.
  XSetErrorHandler(ignore_error);
}

FrameWatch::~FrameWatch() {
  XCloseDisplay(server_->display);
}

void FrameWatch::expect_window(int width, int height) {
  server_->width = width;
  server_->height = height;
  server_->window = 0;
  XSelectInput(server_->display, DefaultRootWindow(server_->display), SubstructureNotifyMask);
  XSync(server_->display, False);
}

void FrameWatch::watch(unsigned long drawable) {
  server_->watch(drawable);
}

Instant FrameWatch::next_frame() {
  while (true) {
    const XEvent event = server_->next_event();
    const XCreateWindowEvent& created = event.xcreatewindow;
    if (event.type == CreateNotify && server_->window == 0 && created.width == server_->width &&
        created.height == server_->height)
      server_->watch(created.window);
    if (event.type != server_->damage_event)
      continue;
    const Instant now = Clock::now();
    XDamageSubtract(server_->display, server_->damage, None, None);
    XFlush(server_->display);
    return now;
  }
}

Instant FrameWatch::frame_with(int x, int y, uint32_t colour) {
  do
    next_frame();
  while (pixel(x, y) != colour);
  return Clock::now();
}

Instant FrameWatch::frame_without(int x, int y, uint32_t colour) {
  do
    next_frame();
  while (pixel(x, y) == colour);
  return Clock::now();
}

std::optional<uint32_t> FrameWatch::pixel(int x, int y) const {
  XImage* image = XGetImage(server_->display, server_->window, x, y, 1, 1, AllPlanes, ZPixmap);
  if (image == nullptr)
    return std::nullopt;
  const auto value = static_cast<uint32_t>(XGetPixel(image, 0, 0)) & 0x00FFFFFFU;
  XDestroyImage(image);
  return value;
}

} // namespace kavo::bench
