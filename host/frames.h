// The passes of the program's loops, which nest.
#pragma once

#include <cstdint>

namespace kavo::host {

class Frames {
public:
  // The token is the scope's depth, 1 for the outermost.
  int64_t begin() { return ++depth_; }

  // Ends the scope and those within it that were left open. A token of no open scope does
  // nothing.
  void end(int64_t token) {
    if (token >= 1 && token <= depth_)
      depth_ = token - 1;
  }

  bool is_inside() const { return depth_ > 0; }

private:
  int64_t depth_ = 0;
};

} // namespace kavo::host
