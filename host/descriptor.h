// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <string_view>
#include <utility>

namespace kavo::host {

class Descriptor {
public:
  // Takes what open() gave, an error included.
  explicit Descriptor(int value) : value_(value) {}
  ~Descriptor() { close(); }
  Descriptor(Descriptor&& other) noexcept : value_(other.value_) { other.value_ = -1; }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }

  int value() const { return value_; }
  bool is_open() const { return value_ >= 0; }

  // False, with errno set, when the system reports a failure only now. Twice is harmless.
  bool close() {
    const int closing = value_;
    value_ = -1;
    return closing < 0 || ::close(closing) == 0;
  }

private:
  int value_;
};

// Lets the owner of a new file read and write it, whatever the user's mask says. False, with errno
// set, when that is refused.
bool make_usable_for_owner(const Descriptor& file);

// Writes everything; false, with errno set, when that fails half-way.
bool write_all(const Descriptor& file, std::string_view content);

} // namespace kavo::host
