#include "recording/fingerprint.h"

#include <string_view>

namespace kavo::recording {

namespace {

// FNV-1a of 64 bits, by Fowler, Noll and Vo.
uint64_t hash_of_text(std::string_view text) {
  uint64_t hash = 0xCBF29CE484222325U;
  for (const char character : text)
    hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3U;
  return hash;
}

} // namespace

// Arrays are the program's own sums of answers that count already: their length will do.
uint64_t Fingerprint::hash_of(const qor_slot& slot, uint32_t tag) {
  const void* reference = qor_reference_in(slot);
  if (reference == nullptr)
    return 0;
  if (tag == QOR_TAG_STRING)
    return hash_of_text(static_cast<const char*>(reference));
  return tag == QOR_TAG_ARRAY
             ? static_cast<uint64_t>(static_cast<const QorArray*>(reference)->length)
             : 0;
}

void Fingerprint::meet(const char* name, Name& known) {
  const std::string_view text = name;
  known = {.text = name,
           .hash = hash_of_text(text),
           .asks = text == "GFX.KEYSTATE" ? Asks::key
                   : text == "RND"        ? Asks::chance
                   : text == "DIR$"       ? Asks::folder
                                          : Asks::nothing};
}

} // namespace kavo::recording
