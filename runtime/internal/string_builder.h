// A string under construction, in the very block that the caller will own.
#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "runtime/internal/memory.h"
#include "runtime/internal/strings.h"

namespace qor {

class StringBuilder {
public:
  explicit StringBuilder(size_t expected) : capacity_(expected + 16) {}

  void append(std::string_view piece) {
    if (piece.size() >= capacity_ - length_)
      grow(piece.size());
    std::memcpy(bytes_ + length_, piece.data(), piece.size());
    length_ += piece.size();
  }

  // Ends it and hands it to the caller.
  char* release() {
    bytes_[length_] = '\0';
    forget_length(bytes_);
    return std::exchange(bytes_, nullptr);
  }

private:
  // One byte more than asked for, which is the NUL's.
  void grow(size_t more) {
    capacity_ = std::max(capacity_ * 2, length_ + more + 1);
    bytes_ = static_cast<char*>(reallocate(bytes_, capacity_));
  }

  size_t length_ = 0;
  size_t capacity_;
  char* bytes_ = static_cast<char*>(allocate(capacity_));
};

} // namespace qor
