#include "host/sound/pattern_error.h"

namespace kavo::sound {

namespace {

std::string described(std::string_view text, size_t position) {
  if (position >= text.size())
    return "the end";
  const auto byte = static_cast<unsigned char>(text[position]);
  if (byte > ' ' && byte < 0x7F)
    return std::string("\"") + text[position] + '"';
  if (byte == ' ')
    return "a blank";
  static constexpr std::string_view digits = "0123456789ABCDEF";
  return std::string("byte 0x") + digits[byte >> 4] + digits[byte & 15];
}

} // namespace

PatternError unexpected(std::string_view text, size_t position, std::string_view what) {
  return {position + 1, "expected " + std::string(what) + ", got " + described(text, position)};
}

} // namespace kavo::sound
