// What stands between the braces of a placeholder, and numbers written by it.
#pragma once

#include <cstddef>
#include <string_view>

#include "runtime/internal/containers.h"

namespace qor {

inline constexpr size_t longest_placeholder = 255;

struct Placeholder {
  char fill = ' ';
  char align = '>';
  size_t width = 0;
  int precision = -1; // none given
  bool has_prefix = false;
  char type = '\0';
};

Placeholder read_placeholder(std::string_view options);

// Both results are at most `longest_placeholder` bytes.
String number_text(const Placeholder& placeholder, double value);
String padded(const Placeholder& placeholder, std::string_view text);

} // namespace qor
