// Base64 (RFC 4648).
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace qor {

// How many digits `bytes` bytes take, padding included.
constexpr size_t base64_length(size_t bytes) {
  return (bytes + 2) / 3 * 4;
}

// Writes base64_length(bytes.size()) digits.
void encode_base64(std::string_view bytes, char* out);

// The most bytes that `digits` digits and white space may stand for.
constexpr size_t base64_bytes(size_t digits) {
  return digits / 4 * 3 + 3;
}

// Writes at most base64_bytes(text.size()) bytes and returns how many; none when `text` is not
// Base64. White space and missing padding are fine.
std::optional<size_t> decode_base64(std::string_view text, char* out);

} // namespace qor
