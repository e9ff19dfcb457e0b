// Finding one text in another, again and again.
#pragma once

#include <string_view>

namespace qor {

// Finds a needle that is not empty. Linear: the fast way, which looks for its first byte, is given
// up once that byte has misled too often.
class Search {
public:
  explicit Search(std::string_view needle) : needle_(needle) {}

  // Where the needle next occurs in `text`, or its end.
  const char* next(std::string_view text);

private:
  const char* by_first_byte(std::string_view text);
  const char* by_whole_needle(std::string_view text) const;

  std::string_view needle_;
  int misleads_left_ = 64;
};

} // namespace qor
