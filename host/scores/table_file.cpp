#include "host/scores/table_file.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>

#include "host/bounded_file.h"

namespace kavo::host {

namespace {

// A thousand times what the game writes: five names of three letters.
constexpr int64_t largest_table = 65'536; // bytes
constexpr const char* too_large = "a file larger than any table";

using Kind = TableFile::Kind;

TableFile no_table(const char* what) {
  return {.kind = Kind::no_table, .what = what};
}

TableFile out_of_reach(int error) {
  return {.kind = Kind::out_of_reach, .error = error};
}

const char* name_of_kind(mode_t mode) {
  switch (mode & S_IFMT) {
  case S_IFDIR:
    return "a folder";
  case S_IFIFO:
    return "a pipe";
  case S_IFSOCK:
    return "a socket";
  default:
    return "a device";
  }
}

bool is_there(const std::string& path) {
  struct stat status = {};
  return ::lstat(path.c_str(), &status) == 0;
}

TableFile read_through(const std::string& path) {
  const BoundedFile file = read_bounded(path, static_cast<size_t>(largest_table));
  if (file.error != 0)
    return out_of_reach(file.error);
  return file.is_whole() ? TableFile{.kind = Kind::table} : no_table(too_large);
}

TableFile look_where_stat_failed(const std::string& path, int error) {
  if (error == ENOENT)
    return {};
  return error == ELOOP && is_there(path) ? no_table("a link that leads nowhere")
                                          : out_of_reach(error);
}

} // namespace

TableFile look_at_table(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0)
    return look_where_stat_failed(path, errno);
  if (!S_ISREG(status.st_mode))
    return no_table(name_of_kind(status.st_mode));
  return status.st_size > largest_table ? no_table(too_large) : read_through(path);
}

std::string put_aside(const std::string& path) {
  constexpr int attempts = 1000;
  for (int i = 1; i <= attempts; ++i) {
    const std::string aside = path + ".not-a-table" + (i == 1 ? "" : "-" + std::to_string(i));
    if (!is_there(aside))
      return std::rename(path.c_str(), aside.c_str()) == 0 ? aside : "";
  }
  errno = EEXIST;
  return "";
}

} // namespace kavo::host
