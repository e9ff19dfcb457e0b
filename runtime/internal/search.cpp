#include "runtime/internal/search.h"

#include <cstring>

namespace qor {

const char* Search::by_whole_needle(std::string_view text) const {
  const auto* found = memmem(text.data(), text.size(), needle_.data(), needle_.size());
  return found == nullptr ? text.data() + text.size() : static_cast<const char*>(found);
}

// A success pays for a mislead, so that a text full of needles keeps to the fast way.
const char* Search::by_first_byte(std::string_view text) {
  const auto* end = text.data() + text.size();
  for (const auto* at = text.data(); end - at >= std::ssize(needle_); ++at) {
    const auto room = static_cast<std::size_t>(end - at) - needle_.size() + 1;
    at = static_cast<const char*>(std::memchr(at, needle_.front(), room));
    if (at == nullptr)
      return end;
    if (std::memcmp(at, needle_.data(), needle_.size()) == 0) {
      misleads_left_ += 1;
      return at;
    }
    if (--misleads_left_ < 0)
      return by_whole_needle({at, static_cast<std::size_t>(end - at)});
  }
  return end;
}

const char* Search::next(std::string_view text) {
  return misleads_left_ < 0 ? by_whole_needle(text) : by_first_byte(text);
}

} // namespace qor
