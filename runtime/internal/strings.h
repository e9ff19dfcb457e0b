// Making the strings that callers own, and reading the ones they pass.
#pragma once

#include <cstddef>
#include <string_view>

namespace qor {

// The bytes up to the first NUL; none for null.
inline std::string_view text_of(const char* s) {
  return s == nullptr ? "" : s;
}

// All bytes of a string, NUL bytes included when the host knows its length.
std::string_view bytes_of(const char* s);

// A string of `length` uninitialised bytes and its NUL.
char* new_uninitialised_string(size_t length);

char* new_string(std::string_view text);

// A new string that the host is told the length of, so that it may hold NUL bytes.
char* new_byte_string(std::string_view bytes);

// A new string that stays whole: registered with the host only if it holds a NUL byte.
char* new_whole_string(std::string_view bytes);

} // namespace qor
