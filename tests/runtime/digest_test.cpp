// SHA-256 and Base64 by their published vectors; SHA-256 on both its paths.
#include <gtest/gtest.h>

#include <array>
#include <bitset>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include "runtime/digest.h"
#include "runtime/internal/base64.h"
#include "runtime/internal/cpu.h"
#include "runtime/internal/sha256.h"
#include "runtime/qorrt.h"
#include "tests/fakes/binary_strings.h"
#include "tests/runtime/values.h"
#include "tests/support/rounds.h"

namespace {

using namespace std::string_literals;
using kavo::test::take;

struct Vector {
  std::string message;
  const char* digest;
};

// FIPS 180-4's examples as published by NIST, and messages around the length of a block.
const std::array<Vector, 9> vectors{{
    {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
    {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
    {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
     "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
    {"abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmnoijklmnopjklmnopqklmnopqrlm"
     "nopqrsmnopqrstnopqrstu",
     "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1"},
    {std::string(1000000, 'a'), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    {std::string(55, 'a'), "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318"},
    {std::string(56, 'a'), "b35439a4ac6f0948b6d6f9e3c6af0f5f590ce20f1bde7090ef7970686ec6738a"},
    {std::string(63, 'a'), "7d3e74a05d7db15bce4ad9ec0658ea98e3f06eeecf16b4c6fff2da457ddc2f34"},
    {std::string(64, 'a'), "ffe054fe7ae0cb6dc65c3af9b61d5209f439851db43d0ba5997337df154668eb"},
}};

TEST(Sha256, OfTheEmptyStringIsThePublishedDigest) {
  EXPECT_EQ(take(qor_sha256("")), vectors[0].digest);
  EXPECT_EQ(take(qor_sha256(nullptr)), vectors[0].digest);
}

TEST(Sha256, GivesThePublishedDigests) {
  for (const auto& vector : vectors)
    EXPECT_EQ(take(qor_sha256(vector.message.c_str())), vector.digest);
}

TEST(Sha256, EndsAtTheFirstNul) {
  EXPECT_EQ(take(qor_sha256("abc\0def")), vectors[1].digest);
}

std::string hexadecimal(const qor::Sha256State& state) {
  std::string text;
  for (const auto word : state) {
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x", word);
    text += digits.data();
  }
  return text;
}

TEST(Sha256, PortableCodeGivesThePublishedDigests) {
  for (const auto& vector : vectors)
    EXPECT_EQ(hexadecimal(qor::sha256(vector.message, qor::sha256_blocks_portable)), vector.digest);
}

TEST(Sha256, ProcessorInstructionsGiveThePublishedDigests) {
  if (!qor::has_sha_instructions())
    GTEST_SKIP() << "this processor has none";
  for (const auto& vector : vectors)
    EXPECT_EQ(hexadecimal(qor::sha256(vector.message, qor::sha256_blocks_instructions)),
              vector.digest);
}

std::string random_bytes(std::mt19937& random, size_t length) {
  std::string bytes(length, '\0');
  for (char& byte : bytes)
    byte = static_cast<char>(random());
  return bytes;
}

TEST(Sha256Property, BothPathsAgreeForEveryLength) {
  std::mt19937 random(1); // the same bytes every time
  for (size_t length = 0; length < 300; ++length) {
    const auto message = random_bytes(random, length);
    ASSERT_EQ(qor::sha256(message, qor::best_sha256_blocks()),
              qor::sha256(message, qor::sha256_blocks_portable));
  }
}

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// RFC 4648, section 10.
constexpr std::array<std::pair<const char*, const char*>, 7> rfc_vectors{{{"", ""},
                                                                          {"f", "Zg=="},
                                                                          {"fo", "Zm8="},
                                                                          {"foo", "Zm9v"},
                                                                          {"foob", "Zm9vYg=="},
                                                                          {"fooba", "Zm9vYmE="},
                                                                          {"foobar", "Zm9vYmFy"}}};

TEST(Base64, EncodesThePublishedVectors) {
  for (const auto& [text, base64] : rfc_vectors)
    EXPECT_EQ(take(qor_base64_encode(text)), base64);
}

TEST(Base64, DecodesThePublishedVectors) {
  for (const auto& [text, base64] : rfc_vectors)
    EXPECT_EQ(take(qor_base64_decode(base64)), text);
}

TEST(Base64, OfNullIsEmpty) {
  EXPECT_EQ(take(qor_base64_encode(nullptr)), "");
  EXPECT_EQ(take(qor_base64_decode(nullptr)), "");
}

TEST(Base64, UsesTheWholeAlphabet) {
  auto* bytes = qor_base64_decode(alphabet.data());
  EXPECT_EQ(qor_len_str(bytes), 48);
  EXPECT_EQ(take(qor_base64_encode(bytes)), alphabet);
  qor_str_free(bytes);
}

TEST(Base64, KeepsByteStringsWhole) {
  auto* zero = qor_base64_decode("AAECAA==");
  EXPECT_EQ(qorrt_strlen(zero), 4);
  EXPECT_EQ(take(qor_base64_encode(zero)), "AAECAA==");
  EXPECT_EQ(take(zero), "\0\1\2\0"s);
  EXPECT_EQ(kavo::fakes::registered_strings(), 0U);
}

TEST(Base64, SkipsWhiteSpace) {
  EXPECT_EQ(take(qor_base64_decode(" Zm9v\r\n\tYm Fy\n")), "foobar");
}

TEST(Base64, DoesWithoutPadding) {
  EXPECT_EQ(take(qor_base64_decode("Zg")), "f");
  EXPECT_EQ(take(qor_base64_decode("Zm8")), "fo");
}

TEST(Base64, GivesNothingForWhatItIsNot) {
  for (const char* text : {"Zm9v!", "Z", "Zm9vY", "Zg=", "Zg===", "Zm8==", "Zm9v=", "=",
                           "Zg==Zg==", "Z=g=", "Zm9v\x80", "Zm_v", "Zm-v"})
    EXPECT_EQ(take(qor_base64_decode(text)), "") << text;
}

std::string bits_of(std::string_view bytes) {
  std::string bits;
  for (const char byte : bytes)
    bits += std::bitset<8>(static_cast<unsigned char>(byte)).to_string();
  return bits;
}

// Straight from the standard: six bits a digit, the last ones filled up with zeros.
std::string encoded_bit_by_bit(std::string_view bytes) {
  std::string text;
  auto bits = bits_of(bytes);
  bits.append((6 - bits.size() % 6) % 6, '0');
  for (size_t at = 0; at < bits.size(); at += 6)
    text += alphabet[std::bitset<6>(bits, at, 6).to_ulong()];
  return text.append((4 - text.size() % 4) % 4, '=');
}

std::string encoded(std::string_view bytes) {
  std::string text(qor::base64_length(bytes.size()), '\0');
  qor::encode_base64(bytes, text.data());
  return text;
}

// The bytes as a string; none when `text` is not Base64.
std::optional<std::string> decoded(std::string_view text) {
  std::string bytes(qor::base64_bytes(text.size()), '\0');
  const auto length = qor::decode_base64(text, bytes.data());
  if (!length)
    return {};
  bytes.resize(*length);
  return bytes;
}

TEST(Base64Property, EncodesBitByBitAndGivesTheBytesBack) {
  std::mt19937 random(2); // the same bytes every time
  for (int length = 0; length < 400; length += 400 / kavo::test::rounds(400)) {
    const auto bytes = random_bytes(random, length);
    const auto text = encoded(bytes);
    ASSERT_EQ(text, encoded_bit_by_bit(bytes));
    ASSERT_EQ(decoded(text), bytes);
  }
}

TEST(Base64Property, OneOtherByteAnywhereIsADigitOrWhiteSpaceOrRefused) {
  const std::string bytes(96, 'x');
  const auto text = encoded(bytes);
  for (size_t place = 0; place < text.size(); place += 5)
    for (int byte = 0; byte < 256; ++byte) {
      const char c = static_cast<char>(byte);
      auto damaged = text;
      damaged[place] = c;
      const auto result = decoded(damaged);
      const bool is_digit = alphabet.find(c) != std::string_view::npos;
      const bool is_space = std::string_view(" \t\n\v\f\r").find(c) != std::string_view::npos;
      const bool is_last_padding = c == '=' && place + 1 == text.size();
      ASSERT_EQ(result.has_value(), is_digit || is_space || is_last_padding)
          << "byte " << byte << " at " << place;
      if (is_digit) {
        ASSERT_EQ(encoded(*result), damaged);
      }
    }
}

TEST(Base64Property, LinesOfAnyLengthDecodeAlike) {
  std::mt19937 random(3); // the same bytes every time
  const auto bytes = random_bytes(random, 700);
  for (size_t width = 1; width < 120; ++width) {
    auto lines = encoded(bytes);
    for (auto at = width; at < lines.size(); at += width + 1)
      lines.insert(at, "\n");
    ASSERT_EQ(decoded(lines), bytes) << width;
  }
}

} // namespace
