// Base64 in vectors of 32 digits, after W. Muła and D. Lemire, "Faster Base64 Encoding and Decoding
// Using AVX2 Instructions", 2018.
#include "runtime/internal/base64.h"
#include "runtime/internal/cpu.h"

#if defined(__x86_64__)

#include <immintrin.h>

namespace {

#define QOR_TARGET __attribute__((target("avx2")))

// Each 12 bytes of a lane become sixteen 6-bit indexes, one to a byte.
QOR_TARGET inline __m256i to_indexes(__m256i bytes) {
  const __m256i spread =
      _mm256_broadcastsi128_si256(_mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
  const __m256i pairs = _mm256_shuffle_epi8(bytes, spread);
  const __m256i high = _mm256_mulhi_epu16(_mm256_and_si256(pairs, _mm256_set1_epi32(0x0fc0fc00)),
                                          _mm256_set1_epi32(0x04000040));
  const __m256i low = _mm256_mullo_epi16(_mm256_and_si256(pairs, _mm256_set1_epi32(0x003f03f0)),
                                         _mm256_set1_epi32(0x01000010));
  return _mm256_or_si256(high, low);
}

// The alphabet has five runs; the distance from index to digit is looked up by run: 0 for a-z, 1
// to 10 for 0-9, 11 for +, 12 for /, 13 for A-Z.
QOR_TARGET inline __m256i to_digits(__m256i indexes) {
  const __m256i distances = _mm256_broadcastsi128_si256(
      _mm_setr_epi8('a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
                    '0' - 52, '0' - 52, '0' - 52, '+' - 62, '/' - 63, 'A', 0, 0));
  const __m256i is_upper = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), indexes);
  const __m256i run = _mm256_or_si256(_mm256_subs_epu8(indexes, _mm256_set1_epi8(51)),
                                      _mm256_and_si256(is_upper, _mm256_set1_epi8(13)));
  return _mm256_add_epi8(_mm256_shuffle_epi8(distances, run), indexes);
}

QOR_TARGET void encode(std::string_view& in, char*& out) {
  constexpr size_t lane_bytes = 12;
  constexpr size_t read = lane_bytes + sizeof(__m128i); // the second load reads four too many
  while (in.size() >= read) {
    const auto* first = reinterpret_cast<const __m128i*>(in.data());
    const auto* second = reinterpret_cast<const __m128i*>(in.data() + lane_bytes);
    const __m256i bytes = _mm256_set_m128i(_mm_loadu_si128(second), _mm_loadu_si128(first));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), to_digits(to_indexes(bytes)));
    in.remove_prefix(2 * lane_bytes);
    out += sizeof(__m256i);
  }
}

struct Values {
  __m256i values;
  bool are_digits;
};

// A byte is a digit when the sets of its two nibbles do not meet; the distance back to its value
// follows from the high nibble, but for '/', which shares one with '+'.
QOR_TARGET inline Values to_values(__m256i digits) {
  const __m256i low_sets =
      _mm256_broadcastsi128_si256(_mm_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                                0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A));
  const __m256i high_sets =
      _mm256_broadcastsi128_si256(_mm_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08,
                                                0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10));
  const __m256i distances = _mm256_broadcastsi128_si256(
      _mm_setr_epi8(0, 16, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0));
  const __m256i slash = _mm256_set1_epi8(0x2F); // as a mask it also keeps the bits a lookup reads
  const __m256i high = _mm256_and_si256(_mm256_srli_epi32(digits, 4), slash);
  const __m256i low = _mm256_and_si256(digits, slash);
  const bool are_digits = _mm256_testz_si256(_mm256_shuffle_epi8(low_sets, low),
                                             _mm256_shuffle_epi8(high_sets, high)) != 0;
  const __m256i is_slash = _mm256_cmpeq_epi8(digits, slash);
  const __m256i distance = _mm256_shuffle_epi8(distances, _mm256_add_epi8(is_slash, high));
  return {_mm256_add_epi8(digits, distance), are_digits};
}

// 32 values of 6 bits become 24 bytes at the low end.
QOR_TARGET inline __m256i to_bytes(__m256i values) {
  const __m256i gather = _mm256_broadcastsi128_si256(
      _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
  const __m256i twelve_bits = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
  const __m256i three_bytes = _mm256_madd_epi16(twelve_bits, _mm256_set1_epi32(0x00011000));
  return _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(three_bytes, gather),
                                     _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
}

QOR_TARGET void decode(std::string_view& in, char*& out) {
  constexpr size_t needed = 44; // a store writes 32 bytes, which 44 digits have room for
  while (in.size() >= needed) {
    const auto [values, are_digits] =
        to_values(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(in.data())));
    if (!are_digits)
      return;
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), to_bytes(values));
    in.remove_prefix(sizeof(__m256i));
    out += 24;
  }
}

#undef QOR_TARGET

} // namespace

void qor::encode_base64_blocks(std::string_view& in, char*& out) {
  if (has_avx2())
    encode(in, out);
}

void qor::decode_base64_blocks(std::string_view& in, char*& out) {
  if (has_avx2())
    decode(in, out);
}

#else

void qor::encode_base64_blocks(std::string_view&, char*&) {}
void qor::decode_base64_blocks(std::string_view&, char*&) {}

#endif
