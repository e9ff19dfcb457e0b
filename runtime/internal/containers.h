// The standard library's containers on this library's memory: running out of it ends the process
// with a message, and no exception reaches a caller in C.
#pragma once

#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "runtime/internal/memory.h"

namespace qor {

template<typename T>
struct Allocator {
  using value_type = T;

  Allocator() = default;
  template<typename Other>
  Allocator(const Allocator<Other>& /*other*/) {}

  T* allocate(size_t count) {
    constexpr size_t size = sizeof(T); // NOLINT(bugprone-sizeof-expression): T may be a pointer
    return static_cast<T*>(allocate_many(count, size));
  }
  void deallocate(T* block, size_t /*count*/) { std::free(block); }

  bool operator==(const Allocator& /*other*/) const { return true; }
};

using String = std::basic_string<char, std::char_traits<char>, Allocator<char>>;

template<typename T>
using Vector = std::vector<T, Allocator<T>>;

struct HashText {
  using is_transparent = void;
  size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

template<typename T>
using Dictionary =
    std::unordered_map<String, T, HashText, std::equal_to<>, Allocator<std::pair<const String, T>>>;

// What `work` returns, for work on containers of others: the process ends when it throws
// std::bad_alloc.
template<typename Work>
auto with_enough_memory(Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    end_for_want_of_memory();
  }
}

} // namespace qor
