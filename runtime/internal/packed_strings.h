// Many short strings in few blocks of memory. With a malloc for each, splitting a text into words
// takes more than twice as long, and longer than the plain loop over std::string, which keeps
// short strings inside itself (scripts/bench runtime_text).
//
// Invariants: a block begins with the number of its strings that live, and goes with the last of
// them. A packed string stands four bytes behind a multiple of eight, where no malloc block
// begins, so that its address tells it from other strings; the four bytes before it are its
// distance from the block's beginning.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "runtime/internal/memory.h"

namespace qor {

class StringPacker {
public:
  // Longer strings are worth a block of their own.
  static constexpr size_t longest = 200;

  // A new string of at most `longest` bytes, which ends with qor_str_free as others do.
  char* add(std::string_view text) {
    if (living_ == nullptr || end_of(text.size()) > block_size)
      begin_block();
    *living_ += 1;
    auto* s = reinterpret_cast<char*>(living_) + used_ + sizeof(uint32_t);
    const auto distance = static_cast<uint32_t>(used_ + sizeof(uint32_t));
    std::memcpy(s - sizeof distance, &distance, sizeof distance);
    std::memcpy(s, text.data(), text.size());
    s[text.size()] = '\0';
    used_ = end_of(text.size());
    return s;
  }

private:
  // Small enough that a string that outlives its siblings keeps little.
  static constexpr size_t block_size = 1024;
  static constexpr size_t alignment = 8;

  // Where the next string may begin when one of `length` bytes is put behind the used ones.
  size_t end_of(size_t length) const {
    const auto size = sizeof(uint32_t) + length + 1;
    return used_ + (size + alignment - 1) / alignment * alignment;
  }

  void begin_block() {
    living_ = static_cast<uint32_t*>(allocate(block_size));
    *living_ = 0;
    used_ = alignment;
  }

  uint32_t* living_ = nullptr; // the block
  size_t used_ = 0;
};

inline bool is_packed(const char* s) {
  return reinterpret_cast<uintptr_t>(s) % 8 != 0;
}

inline void free_packed(char* s) {
  uint32_t distance = 0;
  std::memcpy(&distance, s - sizeof distance, sizeof distance);
  auto* living = reinterpret_cast<uint32_t*>(s - distance);
  *living -= 1;
  if (*living == 0)
    std::free(living);
}

} // namespace qor
