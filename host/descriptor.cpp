#include "host/descriptor.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace kavo::host {

bool make_usable_for_owner(const Descriptor& file) {
  constexpr mode_t usable = S_IRUSR | S_IWUSR;
  struct stat status = {};
  if (::fstat(file.value(), &status) != 0)
    return false;
  return (status.st_mode & usable) == usable ||
         ::fchmod(file.value(), (status.st_mode & 07777) | usable) == 0;
}

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
