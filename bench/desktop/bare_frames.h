// Frames that cost next to nothing: a client of the X server that draws one pixel, waits until the
// server has drawn it and sleeps as long as the game does, again and again. How late its frames
// are seen is how late the machine wakes those who sleep.
#pragma once

#include <memory>
#include <string>
#include <thread>

namespace kavo::bench {

class BareFrames {
public:
  // Throws std::runtime_error when the X server cannot be reached.
  explicit BareFrames(const std::string& display_name);
  ~BareFrames();
  BareFrames(const BareFrames&) = delete;
  BareFrames& operator=(const BareFrames&) = delete;

  // What the pixel is drawn into, out of everybody's sight.
  unsigned long picture() const;

private:
  struct Server;

  void draw(const std::stop_token& stop) const;

  std::unique_ptr<Server> server_;
  std::jthread drawing_;
};

} // namespace kavo::bench
