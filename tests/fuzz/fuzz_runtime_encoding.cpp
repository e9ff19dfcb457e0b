// Encodings: what decodes encodes, and comes back the same.
#include <array>

#include "runtime/encoding.h"
#include "tests/fuzz/input.h"

namespace {

// A text that begins with one of these encodes to what looks like a byte-order mark.
bool starts_like_mark(std::string_view text) {
  return text.starts_with("\uFEFF") || text.starts_with("\uFFFE");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr std::array names{"",    "utf8", "ascii", "latin1", "1252",    "1250",    "1251", "850",
                             "437", "936",  "932",   "utf16",  "utf16le", "utf16be", "none"};
  kavo::fuzz::Input input(data, size);
  const auto* name = names[input.value<uint8_t>() % names.size()];
  bool is_decoded = false;
  const auto text = qor_enc::decode_to_utf8(input.rest(), name, &is_decoded);
  kavo::fuzz::require(is_decoded || text.empty(), "a failure gives nothing");
  bool is_encoded = false;
  const auto bytes = qor_enc::encode_from_utf8(text, name, &is_encoded);
  kavo::fuzz::require(is_encoded || !is_decoded || std::string_view(name) == "none",
                      "a text encodes");
  if (is_decoded && !starts_like_mark(text))
    kavo::fuzz::require(qor_enc::decode_to_utf8(bytes, name) == text, "the text comes back");
  const auto from_utf8 = qor_enc::encode_from_utf8(input.rest(), name, &is_encoded);
  if (is_encoded && !starts_like_mark(input.rest()))
    kavo::fuzz::require(qor_enc::decode_to_utf8(from_utf8, name) == input.rest(),
                        "UTF-8 comes back");
  return 0;
}
