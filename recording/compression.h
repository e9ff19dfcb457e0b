// What the blocks of a recording's file need of a library: zlib, or where there is none only as
// much as reads files that were not compressed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kavo::recording {

// CRC-32 as zlib, PNG and gzip have it.
uint32_t checksum(std::string_view bytes);

// Empty where nothing can be compressed.
std::string compressed(std::string_view bytes);

// Throws Damaged when that is not what the bytes are, exactly.
std::string decompressed(std::string_view bytes, size_t size);

} // namespace kavo::recording
