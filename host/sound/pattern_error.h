// What is wrong with a pattern or a note name, and where.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kavo::sound {

class PatternError : public std::runtime_error {
public:
  PatternError(size_t column, const std::string& what)
      : std::runtime_error(what), column_(column) {}

  // Counted in bytes from 1.
  size_t column() const { return column_; }

private:
  size_t column_;
};

// "expected <what>, got <whatever stands at text[position]>".
PatternError unexpected(std::string_view text, size_t position, std::string_view what);

} // namespace kavo::sound
