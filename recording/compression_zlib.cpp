#include <zlib.h>

#include <new>

#include "recording/bytes.h"
#include "recording/compression.h"

namespace kavo::recording {

namespace {

const Bytef* start_of(std::string_view bytes) {
  return reinterpret_cast<const Bytef*>(bytes.data());
}

} // namespace

uint32_t checksum(std::string_view bytes) {
  return static_cast<uint32_t>(::crc32_z(0, start_of(bytes), bytes.size()));
}

std::string compressed(std::string_view bytes) {
  constexpr int level = 9;
  uLongf size = ::compressBound(static_cast<uLong>(bytes.size()));
  std::string result(size, '\0');
  auto* const start = reinterpret_cast<Bytef*>(result.data());
  if (::compress2(start, &size, start_of(bytes), static_cast<uLong>(bytes.size()), level) != Z_OK)
    throw std::bad_alloc();
  result.resize(size);
  return result;
}

std::string decompressed(std::string_view bytes, size_t size) {
  std::string result(size, '\0');
  auto found = static_cast<uLongf>(size);
  auto* const start = reinterpret_cast<Bytef*>(result.data());
  const int status = ::uncompress(start, &found, start_of(bytes), static_cast<uLong>(bytes.size()));
  if (status == Z_MEM_ERROR)
    throw std::bad_alloc();
  if (status != Z_OK || found != size)
    throw Damaged("a block cannot be decompressed");
  return result;
}

} // namespace kavo::recording
