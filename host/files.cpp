#include "host/files.h"

#include <fcntl.h>
#include <glob.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>

#include "host/command.h"
#include "host/temporary_file.h"

namespace kavo::host {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(std::string_view action, std::string_view path, int error) {
  std::string message = "cannot ";
  message.append(action).append(" ").append(shown(path)).append(": ").append(std::strerror(error));
  throw CommandError(message);
}

std::string usable_path(std::string_view path) {
  if (path.empty())
    reject_argument(0, "path", "the name of a file", "\"\"");
  if (path.find('\0') != std::string_view::npos)
    reject_argument(0, "path", "without NUL bytes", shown(path));
  return std::string(path);
}

// Where a symbolic link leads in the end, whether or not anything is there yet.
fs::path followed(const std::string& path, std::error_code& error) {
  constexpr int most_links = 40; // as the kernel allows
  fs::path current = path;
  std::error_code missing;
  for (int i = 0; i < most_links && fs::is_symlink(fs::symlink_status(current, missing)); ++i) {
    const fs::path target = fs::read_symlink(current, error);
    if (error)
      return current;
    current = target.is_absolute() ? target : current.parent_path() / target;
  }
  if (fs::is_symlink(fs::symlink_status(current, missing)))
    error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
  return current;
}

fs::path folder_of(const fs::path& path) {
  return path.has_parent_path() ? path.parent_path() : ".";
}

// The folder's own record of the new name; some file systems cannot flush it, and by now the
// file is whole.
void flush_folder(const fs::path& folder) {
  const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.is_open())
    ::fsync(descriptor.value());
}

// Where new content is to go, and what is there now.
struct Destination {
  fs::path path = {};         // at the end of all links
  std::optional<mode_t> mode; // of the regular file that is there
  bool is_special = false;    // a pipe, a device, …
  int64_t size = 0;
};

Destination destination_of(const std::string& path) {
  std::error_code error;
  Destination destination;
  destination.path = followed(path, error);
  if (error)
    fail("write", path, error.value());
  struct stat status = {};
  if (::stat(destination.path.c_str(), &status) != 0) {
    if (errno != ENOENT)
      fail("write", path, errno);
    return destination;
  }
  if (S_ISDIR(status.st_mode))
    fail("write", path, EISDIR);
  destination.is_special = !S_ISREG(status.st_mode);
  if (destination.is_special)
    return destination;
  // A file that may not be written must not be replaced either, though its folder would allow it.
  if (::faccessat(AT_FDCWD, destination.path.c_str(), W_OK, AT_EACCESS) != 0)
    fail("write", path, errno);
  destination.mode = status.st_mode & 07777;
  destination.size = status.st_size;
  return destination;
}

// Whether another user's file lies in a folder where everybody keeps to their own, such as /tmp.
bool is_kept_from_us(const fs::path& file) {
  struct stat status = {};
  struct stat folder = {};
  const uid_t user = ::geteuid();
  return ::lstat(file.c_str(), &status) == 0 && ::stat(folder_of(file).c_str(), &folder) == 0 &&
         (folder.st_mode & S_ISVTX) != 0 && folder.st_uid != user && status.st_uid != user &&
         user != 0;
}

void replace(const std::string& path, const Destination& destination, std::string_view content) {
  const fs::path folder = folder_of(destination.path);
  TemporaryFile temporary(folder);
  if (!temporary.is_open() || !temporary.fill(content, destination.mode) || !temporary.flush() ||
      !temporary.rename_to(destination.path))
    fail("write", path, errno);
  flush_folder(folder);
}

// A pipe that nobody reads and a device that takes nothing are errors: nobody waits for them.
void write_in_place(const std::string& path, std::string_view content) {
  Descriptor file(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  if (!file.is_open() || !write_all(file, content) || !file.close())
    fail("write", path, errno);
}

std::string last_part(std::string_view path) {
  while (path.size() > 1 && path.ends_with('/'))
    path.remove_suffix(1);
  const size_t slash = path.rfind('/');
  return std::string(slash == std::string_view::npos || path == "/" ? path
                                                                    : path.substr(slash + 1));
}

std::vector<std::string> names_in_folder(const std::string& path) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(path, error); !error && entry != fs::directory_iterator();
       entry.increment(error))
    names.push_back(entry->path().filename().string());
  if (error)
    fail("list", path, error.value());
  return names;
}

std::vector<std::string> names_that_match(const std::string& pattern) {
  struct Matches {
    glob_t list = {};
    ~Matches() { globfree(&list); }
  } matches;
  const int outcome = ::glob(pattern.c_str(), GLOB_NOSORT, nullptr, &matches.list);
  if (outcome != 0 && outcome != GLOB_NOMATCH)
    fail("list", pattern, outcome == GLOB_NOSPACE ? ENOMEM : EIO);
  std::vector<std::string> names;
  for (size_t i = 0; i < matches.list.gl_pathc; ++i)
    names.push_back(last_part(matches.list.gl_pathv[i]));
  return names;
}

bool is_missing(int error) {
  return error == ENOENT || error == ENOTDIR;
}

std::vector<std::string> unsorted_names_at(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) == 0)
    return S_ISDIR(status.st_mode) ? names_in_folder(path) : std::vector{last_part(path)};
  if (!is_missing(errno))
    fail("list", path, errno);
  return path.find_first_of("*?[") == std::string::npos ? std::vector<std::string>{}
                                                        : names_that_match(path);
}

} // namespace

void write_whole_file(std::string_view path_text, std::string_view content) {
  const std::string path = usable_path(path_text);
  const Destination destination = destination_of(path);
  if (destination.is_special)
    return write_in_place(path, content);
  replace(path, destination, content);
}

void try_writing(std::string_view path_text, int64_t growth) {
  const std::string path = usable_path(path_text);
  const Destination destination = destination_of(path);
  if (destination.is_special)
    return;
  if (is_kept_from_us(destination.path))
    fail("write", path, EPERM);
  TemporaryFile temporary(folder_of(destination.path));
  const std::string content(static_cast<size_t>(destination.size + growth), ' ');
  if (!temporary.is_open() || !temporary.fill(content, destination.mode))
    fail("write", path, errno);
}

fs::path link_end(const fs::path& path) {
  std::error_code error;
  const fs::path end = followed(path.string(), error);
  return error ? path : end;
}

std::vector<std::string> names_at(std::string_view path_text) {
  const std::string path = usable_path(path_text);
  std::vector<std::string> names = unsorted_names_at(path);
  std::sort(names.begin(), names.end());
  return names;
}

} // namespace kavo::host
