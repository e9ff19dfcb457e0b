#include "host/settings/own_folder.h"

#include <sys/stat.h>

#include <cerrno>

namespace kavo::host {

bool is_missing(const std::filesystem::path& path) {
  struct stat status = {};
  return ::stat(path.c_str(), &status) != 0 && errno == ENOENT;
}

void make_own_folder(const std::filesystem::path& folder) {
  if (!is_missing(folder))
    return;
  if (folder.parent_path() != folder)
    make_own_folder(folder.parent_path());
  if (::mkdir(folder.c_str(), S_IRWXU) == 0)
    ::chmod(folder.c_str(), S_IRWXU); // whatever the mask takes
}

} // namespace kavo::host
