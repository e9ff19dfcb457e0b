// Strings by content: case, white space, padding, prefixes.
#include "runtime/text.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string_view>

#include "runtime/internal/memory.h"
#include "runtime/internal/strings.h"

namespace {

bool is_space(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

template<typename Map>
char* new_mapped(const char* s, Map map) {
  const auto text = qor::text_of(s);
  auto* result = qor::new_uninitialised_string(text.size());
  std::ranges::transform(text, result, map);
  return result;
}

std::string_view without_leading_space(std::string_view text) {
  const auto* first = std::ranges::find_if_not(text, is_space);
  return {first, static_cast<size_t>(text.end() - first)};
}

std::string_view without_trailing_space(std::string_view text) {
  while (!text.empty() && is_space(text.back()))
    text.remove_suffix(1);
  return text;
}

// Writes `length` bytes of `pattern` over and over.
char* write_repeated(char* out, std::string_view pattern, size_t length) {
  for (; length > pattern.size(); length -= pattern.size())
    out = std::ranges::copy(pattern, out).out;
  return std::copy_n(pattern.data(), length, out);
}

enum class Side { left, right };

char* new_padded(const char* s, int64_t width, const char* pad, Side side) {
  const auto text = qor::text_of(s);
  const auto pattern = qor::text_of(pad).empty() ? std::string_view(" ") : qor::text_of(pad);
  if (width <= static_cast<int64_t>(text.size()))
    return qor::new_string(text);
  auto* result = qor::new_uninitialised_string(qor::size_for(width));
  const auto missing = qor::size_for(width) - text.size();
  if (side == Side::left)
    std::ranges::copy(text, write_repeated(result, pattern, missing));
  else
    write_repeated(std::ranges::copy(text, result).out, pattern, missing);
  return result;
}

} // namespace

char* qor_upper(const char* s) {
  return new_mapped(s, [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
}

char* qor_lower(const char* s) {
  return new_mapped(s, [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
}

char* qor_trim(const char* s) {
  return qor::new_string(without_trailing_space(without_leading_space(qor::text_of(s))));
}

char* qor_ltrim(const char* s) {
  return qor::new_string(without_leading_space(qor::text_of(s)));
}

char* qor_rtrim(const char* s) {
  return qor::new_string(without_trailing_space(qor::text_of(s)));
}

char* qor_space(int64_t n) {
  return qor_str_repeat(" ", n);
}

char* qor_str_repeat(const char* s, int64_t n) {
  const auto text = qor::text_of(s);
  if (n < 1 || text.empty())
    return qor::new_string("");
  size_t length = 0;
  if (__builtin_mul_overflow(text.size(), qor::size_for(n), &length))
    length = SIZE_MAX - 1; // more than any memory holds: allocating it ends the process
  auto* result = qor::new_uninitialised_string(length);
  write_repeated(result, text, length);
  return result;
}

char* qor_lpad(const char* s, int64_t width, const char* pad) {
  return new_padded(s, width, pad, Side::left);
}

char* qor_rpad(const char* s, int64_t width, const char* pad) {
  return new_padded(s, width, pad, Side::right);
}

char* qor_lpad2(const char* s, int64_t width) {
  return qor_lpad(s, width, nullptr);
}

char* qor_rpad2(const char* s, int64_t width) {
  return qor_rpad(s, width, nullptr);
}

char* qor_insert_str(const char* s, const char* t, int64_t position) {
  const auto text = qor::text_of(s);
  const auto inserted = qor::text_of(t);
  const auto at =
      static_cast<size_t>(std::clamp<int64_t>(position, 0, static_cast<int64_t>(text.size())));
  auto* result = qor::new_uninitialised_string(text.size() + inserted.size());
  auto* out = std::ranges::copy(text.substr(0, at), result).out;
  out = std::ranges::copy(inserted, out).out;
  std::ranges::copy(text.substr(at), out);
  return result;
}

int qor_startswith(const char* s, const char* t) {
  return qor::text_of(s).starts_with(qor::text_of(t)) ? 1 : 0;
}

int qor_endswith(const char* s, const char* t) {
  return qor::text_of(s).ends_with(qor::text_of(t)) ? 1 : 0;
}

int qor_asc(const char* s) {
  return s == nullptr ? 0 : static_cast<unsigned char>(*s);
}
