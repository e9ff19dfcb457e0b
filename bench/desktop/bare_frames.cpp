#include "bench/desktop/bare_frames.h"

#include <X11/Xlib.h>

#include <chrono>
#include <stdexcept>

namespace kavo::bench {

namespace {

constexpr auto pause = std::chrono::milliseconds(16); // the game's own

} // namespace

struct BareFrames::Server {
  explicit Server(const std::string& display_name) : display(XOpenDisplay(display_name.c_str())) {
    if (display == nullptr)
      throw std::runtime_error("cannot reach the X server " + display_name);
    const int screen = DefaultScreen(display);
    picture = XCreatePixmap(display, DefaultRootWindow(display), 1, 1,
                            static_cast<unsigned>(DefaultDepth(display, screen)));
    context = XCreateGC(display, picture, 0, nullptr);
    XSync(display, False);
  }
  ~Server() { XCloseDisplay(display); } // frees the rest
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  Display* display;
  Pixmap picture;
  GC context;
};

BareFrames::BareFrames(const std::string& display_name)
    : server_(std::make_unique<Server>(display_name)),
      drawing_([this](const std::stop_token& stop) { draw(stop); }) {}

BareFrames::~BareFrames() {
  drawing_ = {}; // before the connection that it uses
}

unsigned long BareFrames::picture() const {
  return server_->picture;
}

void BareFrames::draw(const std::stop_token& stop) const {
  while (!stop.stop_requested()) {
    XDrawPoint(server_->display, server_->picture, server_->context, 0, 0);
    XSync(server_->display, False);
    std::this_thread::sleep_for(pause);
  }
}

} // namespace kavo::bench
