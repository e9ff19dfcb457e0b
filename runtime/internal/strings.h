// Making the strings that callers own, and reading the ones they pass.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <string_view>

#include "runtime/internal/memory.h"
#include "runtime/qorrt.h"

namespace qor {

// The bytes up to the first NUL; none for null.
inline std::string_view text_of(const char* s) {
  return s == nullptr ? "" : s;
}

// All bytes of a string, NUL bytes included when the host knows its length.
std::string_view bytes_of(const char* s);

// Has the host forget the length of a byte string at `s`: of one that ends, and of one that ended
// with free() where a new string now stands.
inline void forget_length(const char* s) {
  if (qorrt_strlen(s) >= 0)
    qorrt_register_binary(s, -1);
}

inline void free_string(char* s) {
  if (s == nullptr)
    return;
  forget_length(s);
  std::free(s);
}

// A string of `length` uninitialised bytes and its NUL.
inline char* new_uninitialised_string(size_t length) {
  auto* s = static_cast<char*>(allocate(length + 1));
  s[length] = '\0';
  forget_length(s);
  return s;
}

inline char* new_string(std::string_view text) {
  auto* s = new_uninitialised_string(text.size());
  text.copy(s, text.size());
  return s;
}

// A new string that the host is told the length of, so that it may hold NUL bytes.
char* new_byte_string(std::string_view bytes);

// A new string that stays whole: registered with the host only if it holds a NUL byte.
char* new_whole_string(std::string_view bytes);

} // namespace qor
