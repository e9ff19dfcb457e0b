// SHA-256 (FIPS 180-4), portable and with the processor's instructions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qor {

using Sha256State = std::array<uint32_t, 8>;

// Works `count` blocks of 64 bytes into the state.
using Sha256Blocks = void (*)(Sha256State& state, const unsigned char* blocks, size_t count);

void sha256_blocks_portable(Sha256State& state, const unsigned char* blocks, size_t count);

// Only where has_sha_instructions(); elsewhere it falls back to the portable one.
void sha256_blocks_instructions(Sha256State& state, const unsigned char* blocks, size_t count);

// The fastest that this processor has.
Sha256Blocks best_sha256_blocks();

// The digest of a message.
Sha256State sha256(std::string_view message, Sha256Blocks blocks);

// Its round constants, FIPS 180-4, 4.2.2.
extern const std::array<uint32_t, 64> sha256_constants;

} // namespace qor
