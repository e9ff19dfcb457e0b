#include "runtime/internal/numbers_to_text.h"

#include <algorithm>
#include <charconv>

namespace qor {
namespace {

constexpr std::size_t longest_fixed = 320; // "%.6f" of the largest double: sign, 309 digits, 7 more
constexpr int decimals = 6;
constexpr int significant_digits = 6;

std::string_view cut(NumberBuffer& buffer, std::string_view text) {
  const auto length = std::min(text.size(), buffer.size() - 1);
  std::copy_n(text.data(), length, buffer.data());
  return {buffer.data(), length};
}

std::string_view without_trailing_zeros(std::string_view text) {
  if (text.find('.') == std::string_view::npos)
    return text;
  text = text.substr(0, text.find_last_not_of('0') + 1);
  if (text.ends_with('.'))
    text.remove_suffix(1);
  return text;
}

} // namespace

std::string_view write_integer(NumberBuffer& buffer, int64_t value) {
  const auto* end = std::to_chars(buffer.begin(), buffer.end(), value).ptr;
  return {buffer.data(), static_cast<std::size_t>(end - buffer.begin())};
}

std::string_view write_general(NumberBuffer& buffer, double value) {
  const auto* end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::general,
                                  significant_digits)
                        .ptr;
  return {buffer.data(), static_cast<std::size_t>(end - buffer.begin())};
}

std::string_view write_trimmed(NumberBuffer& buffer, double value) {
  std::array<char, longest_fixed> fixed{};
  const auto* end =
      std::to_chars(fixed.begin(), fixed.end(), value, std::chars_format::fixed, decimals).ptr;
  const std::string_view text(fixed.data(), static_cast<std::size_t>(end - fixed.begin()));
  return cut(buffer, text.size() < buffer.size() ? without_trailing_zeros(text) : text);
}

} // namespace qor
