#include "runtime/internal/strings.h"

namespace qor {

std::string_view bytes_of(const char* s) {
  if (s == nullptr)
    return {};
  const auto length = qorrt_strlen(s);
  return length < 0 ? std::string_view(s) : std::string_view(s, static_cast<size_t>(length));
}

char* new_byte_string(std::string_view bytes) {
  auto* s = new_string(bytes);
  qorrt_register_binary(s, static_cast<int64_t>(bytes.size()));
  return s;
}

char* new_whole_string(std::string_view bytes) {
  return bytes.find('\0') == std::string_view::npos ? new_string(bytes) : new_byte_string(bytes);
}

} // namespace qor
