#include "runtime/internal/base64.h"

#include <algorithm>
#include <array>
#include <cstdint>

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

uint32_t byte_at(std::string_view bytes, size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

// Four digits of up to three bytes; digits without a byte are padding.
void encode_group(std::string_view bytes, char* out) {
  const uint32_t bits = byte_at(bytes, 0) << 16 | byte_at(bytes, 1) << 8 | byte_at(bytes, 2);
  out[0] = alphabet[bits >> 18];
  out[1] = alphabet[bits >> 12 & 63];
  out[2] = bytes.size() > 1 ? alphabet[bits >> 6 & 63] : '=';
  out[3] = bytes.size() > 2 ? alphabet[bits & 63] : '=';
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

  // The fast way for four digits in a row; false, and nothing taken, when they are not.
  bool takes_group(std::string_view text) {
    if (!is_between_groups() || text.size() < 4)
      return false;
    uint32_t bits = 0;
    uint32_t others = 0;
    for (size_t i = 0; i < 4; ++i) {
      const uint32_t value = digit_values[static_cast<unsigned char>(text[i])];
      bits = bits << 6 | value;
      others |= value;
    }
    if (others >= white_space)
      return false;
    for (int shift = 16; shift >= 0; shift -= 8)
      *out_++ = static_cast<char>(bits >> shift);
    return true;
  }

  bool is_between_groups() const { return digits_ % 4 == 0 && paddings_ == 0; }

  // Whether the digits and the padding, if there is any, make up whole groups.
  bool is_complete() const {
    const auto rest = digits_ % 4;
    return rest != 1 && (paddings_ == 0 || (rest != 0 && rest + paddings_ == 4));
  }

  char*& out() { return out_; }

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

// Feeds `at_least` digits, or all, and then as many as complete a group: behind a line break, say,
// whole blocks may go on.
bool take_some(Decoder& decoder, std::string_view& text, size_t at_least) {
  while (!text.empty() && (at_least > 0 || !decoder.is_between_groups())) {
    const auto taken = decoder.takes_group(text) ? size_t{4} : size_t{1};
    if (taken == 1 && !decoder.takes(text.front()))
      return false;
    text.remove_prefix(taken);
    at_least -= std::min(at_least, taken);
  }
  return true;
}

} // namespace

void encode_base64(std::string_view bytes, char* out, bool is_portable) {
  if (!is_portable)
    encode_base64_blocks(bytes, out);
  for (; !bytes.empty(); bytes.remove_prefix(bytes.size() < 3 ? bytes.size() : 3), out += 4)
    encode_group(bytes.substr(0, 3), out);
}

std::optional<size_t> decode_base64(std::string_view text, char* out, bool is_portable) {
  constexpr size_t digits_between_blocks = 16;
  Decoder decoder(out);
  while (!text.empty()) {
    if (!is_portable)
      decode_base64_blocks(text, decoder.out());
    if (!take_some(decoder, text, is_portable ? text.size() : digits_between_blocks))
      return {};
  }
  if (!decoder.is_complete())
    return {};
  return static_cast<size_t>(decoder.out() - out);
}

} // namespace qor
