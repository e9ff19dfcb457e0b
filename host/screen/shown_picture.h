// What a display shows of which picture, so that it need only show what has changed since.
#pragma once

#include <cstdint>
#include <vector>

#include "host/screen/canvas.h"

namespace kavo::host {

class ShownPicture {
public:
  // Where the picture differs from the one of the last call; all of it when that was another, or
  // none. It counts as shown from now on.
  std::vector<Area> take_changes(const Canvas& canvas) {
    std::vector<Area> changed = {{0, 0, canvas.width(), canvas.height()}};
    if (canvas_ == &canvas)
      changed = canvas.changed_since(version_);
    canvas_ = &canvas;
    version_ = canvas.version();
    return changed;
  }

  // Whether there is a picture to compare with.
  bool is_known() const { return canvas_ != nullptr; }

  // What was shown is shown no more.
  void forget() { canvas_ = nullptr; }

private:
  const Canvas* canvas_ = nullptr;
  uint64_t version_ = 0;
};

} // namespace kavo::host
