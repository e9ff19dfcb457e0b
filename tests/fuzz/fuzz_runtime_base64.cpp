// Base64: both paths agree on any text, and any bytes come back.
#include <optional>

#include "runtime/internal/base64.h"
#include "tests/fuzz/input.h"

namespace {

// The bytes as a string; none when `text` is not Base64.
std::optional<std::string> decoded(std::string_view text, bool is_portable) {
  std::string bytes(qor::base64_bytes(text.size()), '\0');
  const auto length = qor::decode_base64(text, bytes.data(), is_portable);
  if (!length)
    return {};
  bytes.resize(*length);
  return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto bytes = decoded(input, false);
  kavo::fuzz::require(bytes == decoded(input, true), "both decoders agree");
  std::string encoded(qor::base64_length(size), '\0');
  qor::encode_base64(input, encoded.data(), false);
  std::string portable(encoded.size(), '\0');
  qor::encode_base64(input, portable.data(), true);
  kavo::fuzz::require(encoded == portable, "both encoders agree");
  kavo::fuzz::require(decoded(encoded, false) == input, "the bytes come back");
  return 0;
}
