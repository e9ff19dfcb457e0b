#include "host/scores/only_copy.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace kavo::host {

namespace {

namespace fs = std::filesystem;

constexpr int common_flags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

// For writing where that is allowed: network file systems lock nothing else.
Descriptor open_existing(const fs::path& path) {
  Descriptor file(::open(path.c_str(), O_RDWR | common_flags));
  if (file.is_open() || errno != EACCES)
    return file;
  return Descriptor(::open(path.c_str(), O_RDONLY | common_flags));
}

Descriptor create(const fs::path& path) {
  Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | common_flags, 0666));
  if (file.is_open())
    make_usable_for_owner(file);
  return file;
}

// Its holder may have taken it along between our opening and locking it.
bool is_still_named(const Descriptor& file, const fs::path& path) {
  struct stat open = {};
  struct stat named = {};
  return ::fstat(file.value(), &open) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

} // namespace

bool OnlyCopy::enter(const fs::path& file) {
  leave();
  path_ = file.parent_path() / ("." + file.filename().string() + ".lock");
  constexpr int attempts = 100;
  for (int i = 0; i < attempts; ++i) {
    Descriptor lock = open_existing(path_);
    if (!lock.is_open() && errno == ENOENT)
      lock = create(path_);
    if (!lock.is_open() && errno == EEXIST)
      continue;
    if (!lock.is_open())
      return true;
    if (::flock(lock.value(), LOCK_EX | LOCK_NB) != 0)
      return errno != EWOULDBLOCK;
    if (!is_still_named(lock, path_))
      continue;
    lock_ = std::move(lock);
    owner_ = ::getpid();
    return true;
  }
  return true;
}

// Removed while it is still locked: whoever opened it meanwhile finds that its name is gone.
void OnlyCopy::leave() {
  if (!lock_.is_open() || owner_ != ::getpid())
    return;
  ::unlink(path_.c_str());
  ::flock(lock_.value(), LOCK_UN); // processes forked off share the lock
  lock_.close();
}

} // namespace kavo::host
