#include "runtime/internal/search.h"

#include <bit>
#include <cstddef>
#include <cstring>

namespace qor {
namespace {

constexpr ptrdiff_t word_size = sizeof(uint64_t);

// Words are looked at one by one as long as the needle may be close, as between the words of a
// sentence; past that the C library's search is faster.
constexpr ptrdiff_t close = 8 * word_size;

constexpr uint64_t eight_times(char byte) {
  return 0x0101010101010101U * static_cast<unsigned char>(byte);
}

// The eight bytes from `bytes` on, the first one lowest.
uint64_t word_at(const char* bytes) {
  uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return std::endian::native == std::endian::little ? word : __builtin_bswap64(word);
}

// The top bit of each byte that is zero, exactly: nothing carries from one byte into the next.
constexpr uint64_t zero_bytes(uint64_t word) {
  constexpr uint64_t low_bits = 0x7F7F7F7F7F7F7F7FU;
  return ~(((word & low_bits) + low_bits) | word | low_bits);
}

} // namespace

Search::Search(std::string_view needle)
    : needle_(needle), first_bytes_(eight_times(needle.front())),
      last_bytes_(eight_times(needle.back())) {}

// A success pays for a mislead, so that a text full of needles keeps to the fast ways.
bool Search::is_at(const char* candidate) {
  const bool is_needle = std::memcmp(candidate, needle_.data(), needle_.size()) == 0;
  misleads_left_ += is_needle ? 1 : -1;
  return is_needle;
}

// The needle when it begins within the next few words; otherwise null, with `at` behind them.
const char* Search::close_by(const char*& at, const char* end) {
  const auto to_last = std::ssize(needle_) - 1;
  const char* far = end - at > close ? at + close : end;
  for (; far - at >= word_size && end - at >= word_size + to_last; at += word_size) {
    auto candidates =
        zero_bytes((word_at(at) ^ first_bytes_) | (word_at(at + to_last) ^ last_bytes_));
    for (; candidates != 0; candidates &= candidates - 1) {
      const char* candidate = at + std::countr_zero(candidates) / 8;
      if (to_last < 2 || is_at(candidate))
        return candidate;
    }
  }
  return nullptr;
}

const char* Search::by_whole_needle(const char* at, const char* end) const {
  const auto* found = memmem(at, static_cast<size_t>(end - at), needle_.data(), needle_.size());
  return found == nullptr ? end : static_cast<const char*>(found);
}

const char* Search::by_first_byte(const char* at, const char* end) {
  for (; end - at >= std::ssize(needle_); ++at) {
    const auto room = static_cast<size_t>(end - at) - needle_.size() + 1;
    at = static_cast<const char*>(std::memchr(at, needle_.front(), room));
    if (at == nullptr)
      return end;
    if (is_at(at))
      return at;
    if (misleads_left_ < 0)
      return by_whole_needle(at, end);
  }
  return end;
}

const char* Search::next(std::string_view text) {
  const auto* at = text.data();
  const auto* end = at + text.size();
  if (misleads_left_ < 0)
    return by_whole_needle(at, end);
  const auto* found = close_by(at, end);
  return found != nullptr ? found : by_first_byte(at, end);
}

} // namespace qor
