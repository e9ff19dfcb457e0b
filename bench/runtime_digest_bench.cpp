// SHA-256 and Base64 beside OpenSSL's.
#include <openssl/evp.h>
#include <openssl/sha.h>

#include <array>
#include <random>
#include <string>
#include <vector>

#include "bench/ratios.h"
#include "runtime/qor.h"

namespace {

std::string printable(size_t length) {
  std::mt19937 random(1);
  std::string text(length, ' ');
  for (char& c : text)
    c = static_cast<char>('!' + random() % 90);
  return text;
}

// The digest in hexadecimal digits, as ours is.
std::string peer_sha256(const std::string& text) {
  std::array<unsigned char, SHA256_DIGEST_LENGTH> digest;
  SHA256(reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest.data());
  std::string digits;
  for (const auto byte : digest) {
    digits += "0123456789abcdef"[byte >> 4];
    digits += "0123456789abcdef"[byte & 15];
  }
  return digits;
}

std::vector<unsigned char> peer_encoded(const std::string& text) {
  std::vector<unsigned char> out(text.size() / 3 * 4 + 5);
  EVP_EncodeBlock(out.data(), reinterpret_cast<const unsigned char*>(text.data()),
                  static_cast<int>(text.size()));
  return out;
}

std::vector<unsigned char> peer_decoded(const std::string& base64) {
  std::vector<unsigned char> out(base64.size() / 4 * 3 + 3);
  EVP_DecodeBlock(out.data(), reinterpret_cast<const unsigned char*>(base64.data()),
                  static_cast<int>(base64.size()));
  return out;
}

void add_size(const std::string& size_name, size_t size) {
  for (const std::string name : {"sha256 ", "base64 encode ", "base64 decode "})
    kavo::bench::expect(name + size_name + "/openssl", kavo::bench::at_least(0.9));
  const auto text = printable(size);
  auto* encoded = qor_base64_encode(text.c_str());
  const std::string base64(encoded);
  qor_str_free(encoded);
  const auto bytes = static_cast<int64_t>(size);
  kavo::bench::add(
      "sha256 " + size_name + "/ours", [text] { qor_str_free(qor_sha256(text.c_str())); }, bytes);
  kavo::bench::add(
      "sha256 " + size_name + "/openssl", [text] { benchmark::DoNotOptimize(peer_sha256(text)); },
      bytes);
  kavo::bench::add(
      "base64 encode " + size_name + "/ours",
      [text] { qor_str_free(qor_base64_encode(text.c_str())); }, bytes);
  kavo::bench::add(
      "base64 encode " + size_name + "/openssl",
      [text] { benchmark::DoNotOptimize(peer_encoded(text)); }, bytes);
  kavo::bench::add(
      "base64 decode " + size_name + "/ours",
      [base64] { qor_str_free(qor_base64_decode(base64.c_str())); }, bytes);
  kavo::bench::add(
      "base64 decode " + size_name + "/openssl",
      [base64] { benchmark::DoNotOptimize(peer_decoded(base64)); }, bytes);
}

} // namespace

int main(int argc, char** argv) {
  add_size("60 B", 60);
  add_size("3 KB", 3000);
  add_size("1 MB", 1 << 20);
  return kavo::bench::run(argc, argv);
}
