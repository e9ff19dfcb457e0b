// Finding one text in another, again and again.
#pragma once

#include <cstdint>
#include <string_view>

namespace qor {

// Finds a needle that is not empty. Linear: looking for the needle's ends is given up once these
// have misled too often.
class Search {
public:
  explicit Search(std::string_view needle);

  // Where the needle next occurs in `text`, or its end.
  const char* next(std::string_view text);

private:
  bool is_at(const char* candidate);
  const char* close_by(const char*& at, const char* end);
  const char* by_first_byte(const char* at, const char* end);
  const char* by_whole_needle(const char* at, const char* end) const;

  std::string_view needle_;
  uint64_t first_bytes_; // the needle's first byte, eight times
  uint64_t last_bytes_;
  int misleads_left_ = 64;
};

} // namespace qor
