// Base64 (RFC 4648), portable and with AVX2.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace qor {

// How many digits `bytes` bytes take, padding included.
constexpr size_t base64_length(size_t bytes) {
  return (bytes + 2) / 3 * 4;
}

// Writes base64_length(bytes.size()) digits. `is_portable` keeps to portable code.
void encode_base64(std::string_view bytes, char* out, bool is_portable);

// The most bytes that `digits` digits and white space may stand for.
constexpr size_t base64_bytes(size_t digits) {
  return digits / 4 * 3 + 3;
}

// Writes at most base64_bytes(text.size()) bytes and returns how many; none when `text` is not
// Base64. White space and missing padding are fine.
std::optional<size_t> decode_base64(std::string_view text, char* out, bool is_portable);

// Encode or decode as many whole blocks as the vectors take from the front of `in`, write behind
// `out` and move both on; nothing without AVX2. Decoding stops in front of any foreign byte; `out`
// has room for 3 bytes per 4 digits.
void encode_base64_blocks(std::string_view& in, char*& out);
void decode_base64_blocks(std::string_view& in, char*& out);

} // namespace qor
