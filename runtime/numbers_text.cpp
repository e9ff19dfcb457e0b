#include "runtime/numbers_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "runtime/internal/numbers_to_text.h"
#include "runtime/internal/strings.h"

namespace {

int32_t locale_flag = 0; // 1: German

// "-1234567" becomes "-1.234.567".
char* new_grouped(std::string_view digits) {
  std::array<char, 64> grouped{};
  auto* out = grouped.begin();
  if (digits.starts_with('-')) {
    *out++ = '-';
    digits.remove_prefix(1);
  }
  for (size_t left = digits.size(); left > 0; --left) {
    const bool is_group_start = left != digits.size() && left % 3 == 0;
    if (is_group_start)
      *out++ = '.';
    *out++ = digits[digits.size() - left];
  }
  return qor::new_string({grouped.data(), static_cast<size_t>(out - grouped.begin())});
}

// Written where it stays: malloc has no block shorter than the longest integer.
char* new_integer(int64_t value) {
  constexpr size_t longest = 20; // the sign and 19 digits
  auto* text = qor::new_uninitialised_string(longest);
  *std::to_chars(text, text + longest, value).ptr = '\0';
  return text;
}

char* new_digits(uint64_t value, int base) {
  std::array<char, 64> digits; // to_chars fills what is read
  auto* end = std::to_chars(digits.begin(), digits.end(), value, base).ptr;
  std::transform(digits.begin(), end, digits.begin(),
                 [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
  return qor::new_string({digits.data(), static_cast<size_t>(end - digits.begin())});
}

} // namespace

void qor_setlocale(const char* name) {
  const auto text = qor::text_of(name);
  const bool is_german =
      text.find("de") != std::string_view::npos || text.find("DE") != std::string_view::npos;
  locale_flag = is_german ? 1 : 0;
}

char* qor_int_to_str(int64_t value) {
  if (locale_flag == 0)
    return new_integer(value);
  qor::NumberBuffer buffer;
  return new_grouped(qor::write_integer(buffer, value));
}

char* qor_double_to_str(double value) {
  if (std::fabs(value) < 1e15 && value == std::trunc(value))
    return qor_int_to_str(static_cast<int64_t>(value));
  qor::NumberBuffer buffer;
  auto* text = qor::new_string(qor::write_general(buffer, value));
  if (auto* point = locale_flag != 0 ? std::strchr(text, '.') : nullptr; point != nullptr)
    *point = ',';
  return text;
}

char* qor_str(double value) {
  qor::NumberBuffer buffer;
  return qor::new_string(qor::write_trimmed(buffer, value));
}

char* qor_tostr(double value) {
  return qor_str(value);
}

char* qor_cstr(double value) {
  return qor_str(value);
}

char* qor_str_bool(int value) {
  return qor::new_string(value != 0 ? "TRUE" : "FALSE");
}

char* qor_hex(uint64_t value) {
  return new_digits(value, 16);
}

char* qor_oct(uint64_t value) {
  return new_digits(value, 8);
}

char* qor_bin(uint64_t value) {
  return new_digits(value, 2);
}

double qor_val(const char* s) {
  return s == nullptr ? 0.0 : std::atof(s);
}
