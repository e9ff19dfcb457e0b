#include "runtime/internal/placeholder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "runtime/internal/containers.h"
#include "runtime/internal/numbers.h"
#include "runtime/internal/numbers_to_text.h"

namespace qor {
namespace {

constexpr size_t longest_options = 62;
// No double has more decimals than this; the rest of a longer precision would be zeros.
constexpr int most_decimals = 1100;

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool is_alignment(char c) {
  return c == '<' || c == '>' || c == '^';
}

// Consumes what it reads from the front of the options.
class Reader {
public:
  explicit Reader(std::string_view text) : rest_(text) {}

  char peek(size_t ahead = 0) const { return ahead < rest_.size() ? rest_[ahead] : '\0'; }

  char next() {
    const char c = peek();
    rest_.remove_prefix(rest_.empty() ? 0 : 1);
    return c;
  }

  bool skip(char wanted) {
    const bool is_there = peek() == wanted && !rest_.empty();
    if (is_there)
      next();
    return is_there;
  }

  // 0 without digits; no more than `limit`.
  int number(int limit) {
    int value = 0;
    while (is_digit(peek()))
      value = std::min(limit, value * 10 + (next() - '0'));
    return value;
  }

private:
  std::string_view rest_;
};

void read_alignment(Reader& reader, Placeholder& placeholder) {
  if (reader.peek() != '\0' && is_alignment(reader.peek(1)))
    placeholder.fill = reader.next();
  if (is_alignment(reader.peek()))
    placeholder.align = reader.next();
}

String fixed_text(double value, int precision) {
  std::array<char, 310 + 2 + most_decimals> buffer; // to_chars fills it
  const auto* end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed,
                                  std::min(precision, most_decimals))
                        .ptr;
  return {buffer.data(), static_cast<size_t>(end - buffer.data())};
}

String hexadecimal_text(const Placeholder& placeholder, double value) {
  std::array<char, 16> buffer; // to_chars fills it
  const auto bits = static_cast<uint64_t>(truncate_to_int64(value));
  auto* end = std::to_chars(buffer.begin(), buffer.end(), bits, 16).ptr;
  if (placeholder.type == 'X')
    std::transform(buffer.begin(), end, buffer.begin(),
                   [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
  return String(placeholder.has_prefix ? "0x" : "").append(buffer.begin(), end);
}

String whole_number_text(const Placeholder& placeholder, double value) {
  constexpr int usual_decimals = 6;
  NumberBuffer buffer;
  switch (placeholder.type) {
  case 'd':
    return String(write_integer(buffer, truncate_to_int64(value)));
  case 'x':
  case 'X':
    return hexadecimal_text(placeholder, value);
  case 'f':
    return fixed_text(value, placeholder.precision < 0 ? usual_decimals : placeholder.precision);
  default:
    return placeholder.precision < 0 ? String(write_general(buffer, value))
                                     : fixed_text(value, placeholder.precision);
  }
}

} // namespace

Placeholder read_placeholder(std::string_view options) {
  constexpr int widest = static_cast<int>(longest_placeholder);
  Placeholder placeholder;
  Reader reader(options.substr(0, longest_options));
  reader.skip(':');
  read_alignment(reader, placeholder);
  placeholder.width = static_cast<size_t>(reader.number(widest));
  if (reader.skip('.'))
    placeholder.precision = reader.number(most_decimals);
  placeholder.has_prefix = reader.skip('#');
  placeholder.type = reader.next();
  return placeholder;
}

String number_text(const Placeholder& placeholder, double value) {
  auto text = whole_number_text(placeholder, value);
  text.resize(std::min(text.size(), longest_placeholder));
  return text;
}

String padded(const Placeholder& placeholder, std::string_view text) {
  text = text.substr(0, longest_placeholder);
  const auto missing = std::max(placeholder.width, text.size()) - text.size();
  auto left = missing;
  if (placeholder.align == '<')
    left = 0;
  else if (placeholder.align == '^')
    left = missing / 2;
  String result(left, placeholder.fill);
  result += text;
  result.append(missing - left, placeholder.fill);
  return result;
}

} // namespace qor
