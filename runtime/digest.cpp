#include "runtime/digest.h"

#include <cstring>

#include "runtime/internal/base64.h"
#include "runtime/internal/sha256.h"
#include "runtime/internal/strings.h"
#include "runtime/qorrt.h"

char* qor_sha256(const char* s) {
  constexpr std::string_view digits = "0123456789abcdef";
  const auto state = qor::sha256(qor::text_of(s), qor::best_sha256_blocks());
  auto* result = qor::new_uninitialised_string(64);
  auto* out = result;
  for (const uint32_t word : state)
    for (int shift = 28; shift >= 0; shift -= 4)
      *out++ = digits[word >> shift & 15];
  return result;
}

char* qor_base64_encode(const char* s) {
  const auto bytes = qor::bytes_of(s);
  auto* result = qor::new_uninitialised_string(qor::base64_length(bytes.size()));
  qor::encode_base64(bytes, result);
  return result;
}

char* qor_base64_decode(const char* s) {
  const auto text = qor::text_of(s);
  auto* result = qor::new_uninitialised_string(qor::base64_bytes(text.size()));
  const auto length = qor::decode_base64(text, result).value_or(0);
  result[length] = '\0';
  if (std::strlen(result) != length)
    qorrt_register_binary(result, static_cast<int64_t>(length));
  return result;
}
