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

// A file descriptor that closes itself.
class Descriptor {
public:
  explicit Descriptor(int value) : value_(value) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int value() const { return value_; }
  bool is_open() const { return value_ >= 0; }
  bool close() {
    const int closing = value_;
    value_ = -1;
    return closing < 0 || ::close(closing) == 0;
  }

private:
  int value_;
};

bool write_all(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    if (written < 0 && errno != EINTR)
      return false;
    content.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
  }
  return true;
}

// Beside the file that it will replace; gone again unless it was renamed.
class TemporaryFile {
public:
  explicit TemporaryFile(const fs::path& folder) : descriptor_(create(folder)) {}
  ~TemporaryFile() {
    if (!is_renamed_ && descriptor_was_opened_)
      ::unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // Each step leaves errno and returns false when it fails.
  bool is_open() const { return descriptor_.is_open(); }
  bool fill(std::string_view content, std::optional<mode_t> mode) {
    return write_all(descriptor_.value(), content) &&
           (!mode || ::fchmod(descriptor_.value(), *mode) == 0) &&
           ::fsync(descriptor_.value()) == 0 && descriptor_.close();
  }
  bool rename_to(const fs::path& destination) {
    is_renamed_ = ::rename(path_.c_str(), destination.c_str()) == 0;
    return is_renamed_;
  }

private:
  // Opened by hand instead of with mkstemp, so that a new file gets the permissions that the
  // user's mask gives it.
  int create(const fs::path& folder) {
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
      path_ = folder / (".qorrt-" + std::to_string(::getpid()) + "-" + std::to_string(i) + ".tmp");
      const int descriptor =
          ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
      descriptor_was_opened_ = descriptor >= 0;
      if (descriptor_was_opened_ || errno != EEXIST)
        return descriptor;
    }
    return -1;
  }

  fs::path path_;
  bool descriptor_was_opened_ = false;
  bool is_renamed_ = false;
  Descriptor descriptor_;
};

// Where a symbolic link leads in the end, whether or not anything is there yet.
fs::path followed(const std::string& path) {
  constexpr int most_links = 40; // as the kernel allows
  fs::path current = path;
  std::error_code error;
  for (int i = 0; i < most_links && fs::is_symlink(fs::symlink_status(current, error)); ++i) {
    const fs::path target = fs::read_symlink(current, error);
    if (error)
      fail("write", path, error.value());
    current = target.is_absolute() ? target : current.parent_path() / target;
  }
  if (fs::is_symlink(fs::symlink_status(current, error)))
    fail("write", path, ELOOP);
  return current;
}

// The folder's own record of the new name; some file systems cannot flush it, and by now the
// file is whole.
void flush_folder(const fs::path& folder) {
  const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.is_open())
    ::fsync(descriptor.value());
}

void replace(const std::string& path, const fs::path& destination, std::string_view content,
             std::optional<mode_t> mode) {
  const fs::path folder = destination.has_parent_path() ? destination.parent_path() : ".";
  TemporaryFile temporary(folder);
  if (!temporary.is_open() || !temporary.fill(content, mode) || !temporary.rename_to(destination))
    fail("write", path, errno);
  flush_folder(folder);
}

void write_in_place(const std::string& path, std::string_view content) {
  Descriptor descriptor(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
  if (!descriptor.is_open() || !write_all(descriptor.value(), content) || !descriptor.close())
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
  const fs::path destination = followed(path);
  struct stat status = {};
  if (::stat(destination.c_str(), &status) != 0) {
    if (errno != ENOENT)
      fail("write", path, errno);
    return replace(path, destination, content, std::nullopt);
  }
  if (S_ISDIR(status.st_mode))
    fail("write", path, EISDIR);
  if (!S_ISREG(status.st_mode))
    return write_in_place(path, content);
  // A file that may not be written must not be replaced either, though its folder would allow it.
  if (::faccessat(AT_FDCWD, destination.c_str(), W_OK, AT_EACCESS) != 0)
    fail("write", path, errno);
  replace(path, destination, content, status.st_mode & 07777);
}

std::vector<std::string> names_at(std::string_view path) {
  std::vector<std::string> names = unsorted_names_at(usable_path(path));
  std::sort(names.begin(), names.end());
  return names;
}

} // namespace kavo::host
