#include "host/descriptor.h"

#include <algorithm>
#include <cerrno>

namespace kavo::host {

bool write_all(const Descriptor& file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(file.value(), content.data(), content.size());
    if (written < 0 && errno != EINTR)
      return false;
    content.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
  }
  return true;
}

} // namespace kavo::host
