#include "recording/bytes.h"
#include "recording/compression.h"

namespace kavo::recording {

uint32_t checksum(std::string_view bytes) {
  uint32_t sum = ~uint32_t{0};
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit)
      sum = sum >> 1U ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
  }
  return ~sum;
}

std::string compressed(std::string_view) {
  return {};
}

std::string decompressed(std::string_view, size_t) {
  throw Damaged("it is compressed, and this program was built without zlib");
}

} // namespace kavo::recording
