#include "runtime/internal/sha256.h"

#if defined(__x86_64__)

#include <immintrin.h>

namespace qor {
namespace {

#define QOR_TARGET __attribute__((target("sha,sse4.1,ssse3")))

// The instructions keep the eight words as (a b e f) and (c d g h), first word highest.
struct Halves {
  __m128i abef;
  __m128i cdgh;
};

QOR_TARGET Halves to_halves(const Sha256State& state) {
  const auto* words = reinterpret_cast<const __m128i*>(state.data());
  const __m128i cdab = _mm_shuffle_epi32(_mm_loadu_si128(words), 0xB1);
  const __m128i efgh = _mm_shuffle_epi32(_mm_loadu_si128(words + 1), 0x1B);
  return {_mm_alignr_epi8(cdab, efgh, 8), _mm_blend_epi16(efgh, cdab, 0xF0)};
}

QOR_TARGET void from_halves(Sha256State& state, Halves halves) {
  auto* words = reinterpret_cast<__m128i*>(state.data());
  const __m128i feba = _mm_shuffle_epi32(halves.abef, 0x1B);
  const __m128i dchg = _mm_shuffle_epi32(halves.cdgh, 0xB1);
  _mm_storeu_si128(words, _mm_blend_epi16(feba, dchg, 0xF0));
  _mm_storeu_si128(words + 1, _mm_alignr_epi8(dchg, feba, 8));
}

QOR_TARGET inline __m128i four_constants(int step) {
  return _mm_load_si128(reinterpret_cast<const __m128i*>(sha256_constants.data()) + step);
}

// Sixteen steps of four rounds; w holds the next sixteen words of the schedule, four by four.
QOR_TARGET inline Halves work_in_block(Halves halves, const unsigned char* block) {
  const __m128i to_big_endian = _mm_set_epi64x(0x0c0d0e0f08090a0bLL, 0x0405060700010203LL);
  __m128i w[4];
  for (int i = 0; i < 4; ++i)
    w[i] = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(block) + i),
                            to_big_endian);
  auto [abef, cdgh] = halves;
#pragma GCC unroll 16
  for (int step = 0; step < 16; ++step) {
    __m128i& oldest = w[step & 3];
    const __m128i& newest = w[(step + 3) & 3];
    const __m128i words = _mm_add_epi32(oldest, four_constants(step));
    cdgh = _mm_sha256rnds2_epu32(cdgh, abef, words);
    abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(words, 0x0E));
    if (step < 12) {
      const __m128i seven_back = _mm_alignr_epi8(newest, w[(step + 2) & 3], 4);
      const __m128i sum =
          _mm_add_epi32(_mm_sha256msg1_epu32(oldest, w[(step + 1) & 3]), seven_back);
      oldest = _mm_sha256msg2_epu32(sum, newest);
    }
  }
  return {_mm_add_epi32(abef, halves.abef), _mm_add_epi32(cdgh, halves.cdgh)};
}

QOR_TARGET void work_in_blocks(Sha256State& state, const unsigned char* blocks, size_t count) {
  auto halves = to_halves(state);
  for (size_t i = 0; i < count; ++i)
    halves = work_in_block(halves, blocks + i * 64);
  from_halves(state, halves);
}

#undef QOR_TARGET

} // namespace

void sha256_blocks_instructions(Sha256State& state, const unsigned char* blocks, size_t count) {
  work_in_blocks(state, blocks, count);
}

} // namespace qor

#else

void qor::sha256_blocks_instructions(Sha256State& state, const unsigned char* blocks,
                                     size_t count) {
  sha256_blocks_portable(state, blocks, count);
}

#endif
