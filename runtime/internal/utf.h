// UTF-8 read strictly, and the forms that need no table.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qor {

using Converted = std::optional<std::string>; // none: the conversion failed

// The code point at the front of `text`, which is not empty, and how many bytes it takes; none
// when they are not UTF-8.
struct CodePoint {
  uint32_t value;
  size_t length;
};
std::optional<CodePoint> read_utf8(std::string_view text);

bool is_utf8(std::string_view text);

// ASCII and Latin-1: code points below `limit` are bytes.
Converted decode_bytes(std::string_view bytes, uint32_t limit);
Converted encode_bytes(std::string_view text, uint32_t limit);

Converted decode_utf16(std::string_view bytes, bool is_big_endian);
Converted encode_utf16(std::string_view text, bool is_big_endian);

} // namespace qor
