// 64 bits that tell one drawing from another.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kavo::host {

// The finalizer of MurmurHash3 (Appleby): one to one, and each bit depends on all.
inline uint64_t mixed(uint64_t value) {
  value = (value ^ value >> 33U) * 0xFF51AFD7ED558CCD;
  value = (value ^ value >> 33U) * 0xC4CEB9FE1A85EC53;
  return value ^ value >> 33U;
}

// One to one in either argument.
inline uint64_t followed_by(uint64_t print, uint64_t next) {
  return std::rotl((print ^ next) * 0x9E3779B97F4A7C15, 29);
}

inline uint64_t print_of_colour(uint32_t colour) {
  return mixed(uint64_t{colour} + 1);
}

inline uint64_t print_of_shape(uint64_t one, uint64_t other, uint64_t third) {
  return mixed(followed_by(followed_by(mixed(one), other), third));
}

inline uint64_t print_of_text(std::string_view text) {
  uint64_t print = text.size();
  for (; text.size() >= sizeof(uint64_t); text.remove_prefix(sizeof(uint64_t))) {
    uint64_t word = 0;
    std::memcpy(&word, text.data(), sizeof word);
    print = followed_by(print, mixed(word));
  }
  uint64_t rest = 0;
  std::memcpy(&rest, text.data(), text.size());
  return mixed(followed_by(print, rest));
}

} // namespace kavo::host
