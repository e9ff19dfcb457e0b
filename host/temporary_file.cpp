#include "host/temporary_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>

namespace kavo::host {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view prefix = ".qorrt-";
constexpr std::string_view suffix = ".tmp";

fs::path numbered(const fs::path& folder, int number) {
  std::string name(prefix);
  name += std::to_string(::getpid()) + "-" + std::to_string(number);
  return folder / name.append(suffix);
}

bool is_temporary_name(const std::string& name) {
  return name.starts_with(prefix) && name.ends_with(suffix);
}

bool lock(const Descriptor& file) {
  return ::flock(file.value(), LOCK_EX | LOCK_NB) == 0;
}

bool is_named(const Descriptor& file, const fs::path& path) {
  struct stat open = {};
  struct stat named = {};
  return ::fstat(file.value(), &open) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// Between its making and its locking a file looks like a leftover, and another program may be
// about to remove it or have done so. Where there are no locks nobody removes anything.
bool claim(const Descriptor& file, const fs::path& path) {
  return lock(file) ? is_named(file, path) : errno != EWOULDBLOCK;
}

// Once the lock is ours nobody else can be writing to the file, and its name is still its own.
void remove_if_left(const fs::path& path) {
  const Descriptor file(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status = {};
  if (file.is_open() && ::fstat(file.value(), &status) == 0 && S_ISREG(status.st_mode) &&
      lock(file) && is_named(file, path))
    ::unlink(path.c_str());
}

} // namespace

TemporaryFile::TemporaryFile(const fs::path& folder) : file_(create(folder)) {}

TemporaryFile::~TemporaryFile() {
  if (file_.is_open() && !is_renamed_)
    ::unlink(path_.c_str());
}

// Opened by hand instead of with mkstemp, so that a new file gets the permissions that the
// user's mask gives it.
Descriptor TemporaryFile::create(const fs::path& folder) {
  constexpr int attempts = 100;
  for (int i = 0; i < attempts; ++i) {
    path_ = numbered(folder, i);
    Descriptor file(
        ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
    if (file.is_open() ? claim(file, path_) : errno != EEXIST)
      return file;
  }
  errno = EEXIST;
  return Descriptor(-1);
}

bool TemporaryFile::fill(std::string_view content, std::optional<mode_t> mode) {
  return write_all(file_, content) &&
         (mode ? ::fchmod(file_.value(), *mode) == 0 : make_usable_for_owner(file_));
}

bool TemporaryFile::flush() {
  return ::fsync(file_.value()) == 0;
}

bool TemporaryFile::rename_to(const fs::path& destination) {
  is_renamed_ = ::rename(path_.c_str(), destination.c_str()) == 0;
  return is_renamed_;
}

void remove_leftovers(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error))
    if (is_temporary_name(entry->path().filename().string()))
      remove_if_left(entry->path());
}

} // namespace kavo::host
