#include "runtime/internal/sha256.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>

#include "runtime/internal/cpu.h"

namespace qor {

// The first 32 bits of the fractions of the cube roots of the first 64 primes.
alignas(16) constexpr std::array<uint32_t, 64> sha256_constants{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

namespace {

constexpr size_t block_size = 64;

// The first 32 bits of the fractions of the square roots of the first 8 primes.
constexpr Sha256State initial_state{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                    0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

uint32_t big_endian_word(const unsigned char* bytes) {
  uint32_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  if constexpr (std::endian::native == std::endian::little)
    word = __builtin_bswap32(word);
  return word;
}

// The names of the standard, 6.2.2.
void work_in_block(Sha256State& state, const unsigned char* block) {
  std::array<uint32_t, 64> w; // filled before it is read
  for (size_t t = 0; t < 16; ++t)
    w[t] = big_endian_word(block + t * 4);
  for (size_t t = 16; t < 64; ++t) {
    const uint32_t s0 = std::rotr(w[t - 15], 7) ^ std::rotr(w[t - 15], 18) ^ w[t - 15] >> 3;
    const uint32_t s1 = std::rotr(w[t - 2], 17) ^ std::rotr(w[t - 2], 19) ^ w[t - 2] >> 10;
    w[t] = w[t - 16] + s0 + w[t - 7] + s1;
  }
  auto [a, b, c, d, e, f, g, h] = state;
  for (size_t t = 0; t < 64; ++t) {
    const uint32_t sum1 = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
    const uint32_t choice = (e & f) ^ (~e & g);
    const uint32_t t1 = h + sum1 + choice + sha256_constants[t] + w[t];
    const uint32_t sum0 = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
    const uint32_t majority = (a & b) ^ (a & c) ^ (b & c);
    h = g;
    g = f;
    f = e;
    e = d + t1;
    d = c;
    c = b;
    b = a;
    a = t1 + sum0 + majority;
  }
  const Sha256State worked{a, b, c, d, e, f, g, h};
  std::ranges::transform(state, worked, state.begin(), std::plus<>());
}

} // namespace

void sha256_blocks_portable(Sha256State& state, const unsigned char* blocks, size_t count) {
  for (size_t i = 0; i < count; ++i)
    work_in_block(state, blocks + i * block_size);
}

Sha256Blocks best_sha256_blocks() {
  return has_sha_instructions() ? sha256_blocks_instructions : sha256_blocks_portable;
}

Sha256State sha256(std::string_view message, Sha256Blocks blocks) {
  auto state = initial_state;
  const auto* bytes = reinterpret_cast<const unsigned char*>(message.data());
  const auto whole = message.size() / block_size;
  blocks(state, bytes, whole);

  // The rest, a 1 bit, zeros, and the length in bits in the last 8 bytes: one block or two.
  std::array<unsigned char, 2 * block_size> end{};
  const auto rest = message.size() % block_size;
  std::copy_n(bytes + whole * block_size, rest, end.begin());
  end[rest] = 0x80;
  const size_t end_blocks = rest < block_size - 8 ? 1 : 2;
  const uint64_t bits = static_cast<uint64_t>(message.size()) * 8;
  for (size_t i = 0; i < 8; ++i)
    end[end_blocks * block_size - 1 - i] = static_cast<unsigned char>(bits >> (8 * i));
  blocks(state, end.data(), end_blocks);
  return state;
}

} // namespace qor
