#include "host/bounded_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "host/descriptor.h"

namespace kavo::host {

BoundedFile read_bounded(const std::string& path, size_t most_bytes) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat status = {};
  if (!file.is_open() || ::fstat(file.value(), &status) != 0)
    return {.error = errno};
  if (!S_ISREG(status.st_mode))
    return {.is_file = false};
  std::string content(most_bytes + 1, '\0');
  size_t size = 0;
  while (size < content.size()) {
    const ssize_t count = ::read(file.value(), content.data() + size, content.size() - size);
    if (count < 0 && errno == EINTR)
      continue;
    if (count < 0)
      return {.error = errno};
    if (count == 0) {
      content.resize(size);
      return {.content = std::move(content)};
    }
    size += static_cast<size_t>(count);
  }
  return {.is_too_large = true};
}

} // namespace kavo::host
