// Base64: what any text stands for is read again, and any bytes come back.
#include <optional>

#include "runtime/internal/base64.h"
#include "tests/fuzz/input.h"

namespace {

// The bytes as a string; none when `text` is not Base64.
std::optional<std::string> decoded(std::string_view text) {
  std::string bytes(qor::base64_bytes(text.size()), '\0');
  const auto length = qor::decode_base64(text, bytes.data());
  if (!length)
    return {};
  bytes.resize(*length);
  return bytes;
}

std::string encoded(std::string_view bytes) {
  std::string text(qor::base64_length(bytes.size()), '\0');
  qor::encode_base64(bytes, text.data());
  return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  if (const auto bytes = decoded(input))
    kavo::fuzz::require(decoded(encoded(*bytes)) == bytes, "what was read is read again");
  kavo::fuzz::require(decoded(encoded(input)) == input, "the bytes come back");
  return 0;
}
