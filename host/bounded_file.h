// The content of a file that the player may have replaced by anything.
#pragma once

#include <cstddef>
#include <string>

namespace kavo::host {

struct BoundedFile {
  std::string content = {};
  bool is_too_large = false; // then there is no content
  int error = 0;             // errno's, when it cannot be read
  bool is_file = true;       // no folder, pipe or device, which have no content here

  bool is_whole() const { return error == 0 && is_file && !is_too_large; }
};

// Never waits for anybody. Sizes that a file system only pretends do not count; what comes out of
// the file does.
BoundedFile read_bounded(const std::string& path, size_t most_bytes);

} // namespace kavo::host
