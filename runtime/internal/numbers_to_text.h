// Numbers as text, without allocation: each writer fills a buffer and returns the part it wrote.
// std::to_chars yields the same bytes as the printf conversion named beside it in the C locale,
// several times as fast, and never a decimal comma.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace qor {

// Room for every "%lld", every "%g" and the 63 bytes that a trimmed fixed number may have.
using NumberBuffer = std::array<char, 64>;

// "%lld"
std::string_view write_integer(NumberBuffer& buffer, int64_t value);

// "%g": six significant digits
std::string_view write_general(NumberBuffer& buffer, double value);

// "%.6f" without trailing zeros and bare point; untrimmed and cut at 63 bytes when longer.
std::string_view write_trimmed(NumberBuffer& buffer, double value);

} // namespace qor
