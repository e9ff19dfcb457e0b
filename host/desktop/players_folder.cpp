#include "host/desktop/players_folder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace kavo::host {

namespace {

namespace fs = std::filesystem;

fs::path absolute_path_in(const char* variable) {
  const char* value = std::getenv(variable);
  const fs::path path = value == nullptr ? "" : value;
  return path.is_absolute() ? path : fs::path();
}

// The system's user table knows it where the environment does not.
fs::path home() {
  if (fs::path home = absolute_path_in("HOME"); !home.empty())
    return home;
  const passwd* user = getpwuid(getuid());
  const fs::path path = user == nullptr || user->pw_dir == nullptr ? "" : user->pw_dir;
  return path.is_absolute() ? path : fs::path();
}

} // namespace

fs::path players_folder(const char* variable, const char* usual) {
  if (const fs::path folder = absolute_path_in(variable); !folder.empty())
    return folder / "kavo";
  const fs::path players_home = home();
  return players_home.empty() ? fs::path() : players_home / usual / "kavo";
}

} // namespace kavo::host
