#include "runtime/internal/numbers_to_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace qor {
namespace {

constexpr size_t longest_fixed = 320; // "%.6f" of the largest double: sign, 309 digits, 7 more
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

// The integer next to a scaled number, which scaling has made wrong by less than `error`. None when
// that leaves open which one is next.
std::optional<int64_t> nearest(double scaled, double error) {
  const auto whole = static_cast<int64_t>(scaled);
  const double rest = scaled - static_cast<double>(whole);
  if (rest > 0.5 - error && rest < 0.5 + error)
    return {};
  return rest > 0.5 ? whole + 1 : whole;
}

// Leading zeros included.
char* write_six_digits(char* out, int64_t digits) {
  for (int place = 5; place >= 0; --place, digits /= 10)
    out[place] = static_cast<char>('0' + digits % 10);
  return out + 6;
}

// Six significant digits: 100000 to 999999 times a power of ten.
struct SixDigits {
  int64_t digits;
  int exponent; // of the first digit
};

constexpr int smallest_plain_exponent = -4; // "%g" writes 1e-05 below and 1e+06 above
constexpr int largest_plain_exponent = 5;

// Rounds a number of plain size.
std::optional<SixDigits> round_to_six_digits(double magnitude) {
  constexpr std::array powers{1e-4, 1e-3, 1e-2, 1e-1, 1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
  constexpr std::array scales{1e9, 1e8, 1e7, 1e6, 1e5, 1e4, 1e3, 1e2, 1e1, 1e0};
  if (!(magnitude >= powers.front() && magnitude < powers.back()))
    return {};
  size_t place = 0;
  while (magnitude >= powers[place + 1])
    ++place;
  const auto digits = nearest(magnitude * scales[place], 1e-9);
  if (!digits)
    return {};
  SixDigits result{.digits = *digits,
                   .exponent = static_cast<int>(place) + smallest_plain_exponent};
  if (result.digits == 1'000'000)
    result = {.digits = 100'000, .exponent = result.exponent + 1};
  return result.exponent <= largest_plain_exponent ? std::optional(result) : std::nullopt;
}

std::string_view write_plain(NumberBuffer& buffer, bool is_negative, SixDigits number) {
  char* out = buffer.data();
  if (is_negative)
    *out++ = '-';
  if (number.exponent < 0) {
    *out++ = '0';
    *out++ = '.';
    out = std::fill_n(out, -number.exponent - 1, '0');
  }
  char* first = out;
  out = write_six_digits(out, number.digits);
  if (number.exponent >= 0) {
    char* point = first + number.exponent + 1;
    std::copy_backward(point, out, out + 1);
    *point = '.';
    ++out;
  }
  const std::string_view text(buffer.data(), static_cast<size_t>(out - buffer.data()));
  return without_trailing_zeros(text);
}

// In millionths; none for a number that is too large for that, or for NaN.
std::optional<int64_t> round_to_six_decimals(double magnitude) {
  if (!(magnitude < 1e6))
    return {};
  return nearest(magnitude * 1e6, 1e-4);
}

std::string_view write_millionths(NumberBuffer& buffer, bool is_negative, int64_t number) {
  char* out = buffer.data();
  if (is_negative)
    *out++ = '-';
  out = std::to_chars(out, buffer.end(), number / 1'000'000).ptr;
  *out++ = '.';
  out = write_six_digits(out, number % 1'000'000);
  const std::string_view text(buffer.data(), static_cast<size_t>(out - buffer.data()));
  return without_trailing_zeros(text);
}

} // namespace

std::string_view write_integer(NumberBuffer& buffer, int64_t value) {
  const auto* end = std::to_chars(buffer.begin(), buffer.end(), value).ptr;
  return {buffer.data(), static_cast<size_t>(end - buffer.begin())};
}

std::string_view write_general(NumberBuffer& buffer, double value) {
  if (const auto digits = round_to_six_digits(std::fabs(value)))
    return write_plain(buffer, value < 0, *digits);
  const auto* end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::general,
                                  significant_digits)
                        .ptr;
  return {buffer.data(), static_cast<size_t>(end - buffer.begin())};
}

std::string_view write_trimmed(NumberBuffer& buffer, double value) {
  if (const auto number = round_to_six_decimals(std::fabs(value)))
    return write_millionths(buffer, std::signbit(value), *number);
  std::array<char, longest_fixed> fixed; // to_chars fills what is read
  const auto* end =
      std::to_chars(fixed.begin(), fixed.end(), value, std::chars_format::fixed, decimals).ptr;
  const std::string_view text(fixed.data(), static_cast<size_t>(end - fixed.begin()));
  return cut(buffer, text.size() < buffer.size() ? without_trailing_zeros(text) : text);
}

} // namespace qor
