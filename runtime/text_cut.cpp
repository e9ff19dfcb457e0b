// Strings by length and position: the functions that see a byte string whole.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "runtime/error.h"
#include "runtime/internal/strings.h"
#include "runtime/qorrt.h"
#include "runtime/text.h"

namespace {

int64_t length_of(std::string_view bytes) {
  return static_cast<int64_t>(bytes.size());
}

char* new_cut(std::string_view bytes, int64_t start, int64_t count) {
  const auto length = count < 0 ? std::string_view::npos : static_cast<size_t>(count);
  return qor::new_byte_string(bytes.substr(static_cast<size_t>(start), length));
}

} // namespace

char* qor_str_str(const char* s) {
  return qor::new_whole_string(qor::bytes_of(s));
}

char* qor_str_concat(const char* a, const char* b) {
  const auto first = qor::bytes_of(a);
  const auto second = qor::bytes_of(b);
  auto* result = qor::new_uninitialised_string(first.size() + second.size());
  std::ranges::copy(second, std::ranges::copy(first, result).out);
  if (first.size() + second.size() != std::strlen(result))
    qorrt_register_binary(result, length_of(first) + length_of(second));
  return result;
}

int64_t qor_len_str(const char* s) {
  return length_of(qor::bytes_of(s));
}

char* qor_mid(const char* s, int64_t start, int64_t count) {
  const auto bytes = qor::bytes_of(s);
  if (start < 0 || start > length_of(bytes)) {
    qor_err_set("MID: index out of range", 1);
    return qor::new_string("");
  }
  return new_cut(bytes, start, count);
}

char* qor_mid_lax(const char* s, int64_t start, int64_t count) {
  const auto bytes = qor::bytes_of(s);
  return new_cut(bytes, std::clamp<int64_t>(start, 0, length_of(bytes)), count);
}

char* qor_left(const char* s, int64_t n) {
  return qor_mid(s, 0, n);
}

char* qor_right(const char* s, int64_t n) {
  const auto length = qor_len_str(s);
  if (n >= length)
    return qor_str_str(s);
  const auto start = n < 0 ? length + 1 : length - n;
  return qor_mid(s, start, n);
}

char* qor_str_slice(const char* s, int64_t n, int64_t from_left) {
  const auto bytes = qor::bytes_of(s);
  const auto count = std::clamp<int64_t>(n, 0, length_of(bytes));
  return new_cut(bytes, from_left != 0 ? 0 : length_of(bytes) - count, count);
}

int64_t qor_instr(const char* s, const char* needle) {
  if (s == nullptr || needle == nullptr)
    return -1;
  const auto bytes = qor::bytes_of(s);
  const auto wanted = qor::bytes_of(needle);
  const auto* found =
      static_cast<const char*>(memmem(bytes.data(), bytes.size(), wanted.data(), wanted.size()));
  return found == nullptr ? -1 : found - bytes.data();
}

int qor_str_eq(const char* a, const char* b) {
  if (a == b)
    return 1;
  if (a == nullptr || b == nullptr)
    return 0;
  return qor::bytes_of(a) == qor::bytes_of(b) ? 1 : 0;
}

int qor_str_ne(const char* a, const char* b) {
  return 1 - qor_str_eq(a, b);
}

int qor_str_cmp(const char* a, const char* b) {
  if (a == b)
    return 0;
  if (a == nullptr)
    return -1;
  if (b == nullptr)
    return 1;
  const int order = qor::bytes_of(a).compare(qor::bytes_of(b));
  return (order > 0 ? 1 : 0) - (order < 0 ? 1 : 0);
}

char* qor_chr(int64_t code) {
  const char byte = static_cast<char>(code & 0xFF);
  return qor::new_whole_string({&byte, 1});
}
