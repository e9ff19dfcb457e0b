#include "runtime/internal/base64.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace qor {
namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

enum : uint8_t { white_space = 64, padding = 65, foreign = 66 };

constexpr std::array<uint8_t, 256> make_digit_values() {
  std::array<uint8_t, 256> values{};
  values.fill(foreign);
  for (size_t i = 0; i < alphabet.size(); ++i)
    values[static_cast<unsigned char>(alphabet[i])] = static_cast<uint8_t>(i);
  for (const char c : {' ', '\t', '\n', '\v', '\f', '\r'})
    values[static_cast<unsigned char>(c)] = white_space;
  values['='] = padding;
  return values;
}

constexpr auto digit_values = make_digit_values();

using DigitPair = std::array<char, 2>;

// The two digits of every twelve bits.
constexpr std::array<DigitPair, 4096> make_digit_pairs() {
  std::array<DigitPair, 4096> pairs{};
  for (size_t bits = 0; bits < pairs.size(); ++bits)
    pairs[bits] = {alphabet[bits >> 6], alphabet[bits & 63]};
  return pairs;
}

constexpr auto digit_pairs = make_digit_pairs();

uint32_t byte_at(std::string_view bytes, size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

// Four digits of the first three bytes.
void encode_group(std::string_view bytes, char* out) {
  const uint32_t bits = byte_at(bytes, 0) << 16 | byte_at(bytes, 1) << 8 | byte_at(bytes, 2);
  std::memcpy(out, &digit_pairs[bits >> 12], sizeof(DigitPair));
  std::memcpy(out + 2, &digit_pairs[bits & 4095], sizeof(DigitPair));
}

// Takes digits one by one and writes a byte whenever eight bits have come together.
class Decoder {
public:
  explicit Decoder(char* out) : out_(out) {}

  bool takes(char c) {
    const auto value = digit_values[static_cast<unsigned char>(c)];
    if (value == white_space)
      return true;
    if (value == padding)
      paddings_ += 1;
    else if (value == foreign || paddings_ > 0)
      return false;
    else
      add(value);
    return true;
  }

  // The fast way for as many groups of four digits as stand at the front of `text`.
  void take_groups(std::string_view& text) {
    while (text.size() >= 4) {
      const auto value = [text](size_t at) {
        return uint32_t{digit_values[static_cast<unsigned char>(text[at])]};
      };
      const uint32_t a = value(0);
      const uint32_t b = value(1);
      const uint32_t c = value(2);
      const uint32_t d = value(3);
      if ((a | b | c | d) >= white_space)
        return;
      const uint32_t bits = a << 18 | b << 12 | c << 6 | d;
      *out_++ = static_cast<char>(bits >> 16);
      *out_++ = static_cast<char>(bits >> 8);
      *out_++ = static_cast<char>(bits);
      text.remove_prefix(4);
    }
  }

  bool is_between_groups() const { return digits_ % 4 == 0 && paddings_ == 0; }

  // Whether the digits and the padding, if there is any, make up whole groups.
  bool is_complete() const {
    const auto rest = digits_ % 4;
    return rest != 1 && (paddings_ == 0 || (rest != 0 && rest + paddings_ == 4));
  }

  const char* out() const { return out_; }

private:
  void add(uint8_t value) {
    bits_ = bits_ << 6 | value;
    const auto place = digits_++ % 4;
    if (place > 0)
      *out_++ = static_cast<char>(bits_ >> (6 - 2 * place));
  }

  char* out_;
  uint32_t bits_ = 0;
  size_t digits_ = 0;
  size_t paddings_ = 0;
};

} // namespace

void encode_base64(std::string_view bytes, char* out) {
  for (; bytes.size() >= 3; bytes.remove_prefix(3), out += 4)
    encode_group(bytes.substr(0, 3), out);
  if (bytes.empty())
    return;
  encode_group(bytes, out);
  std::fill(out + bytes.size() + 1, out + 4, '=');
}

std::optional<size_t> decode_base64(std::string_view text, char* out) {
  Decoder decoder(out);
  while (!text.empty()) {
    if (decoder.is_between_groups())
      decoder.take_groups(text);
    if (text.empty())
      break;
    if (!decoder.takes(text.front()))
      return {};
    text.remove_prefix(1);
  }
  if (!decoder.is_complete())
    return {};
  return static_cast<size_t>(decoder.out() - out);
}

} // namespace qor
