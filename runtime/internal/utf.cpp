#include "runtime/internal/utf.h"

#include "runtime/encoding.h"

namespace qor {
namespace {

constexpr uint32_t first_surrogate = 0xD800;
constexpr uint32_t first_low_surrogate = 0xDC00;
constexpr uint32_t end_of_surrogates = 0xE000;
constexpr uint32_t first_supplementary = 0x10000;
constexpr uint32_t end_of_code_points = 0x110000;

bool is_surrogate(uint32_t value) {
  return value >= first_surrogate && value < end_of_surrogates;
}

bool is_code_point(uint32_t value) {
  return value < end_of_code_points && !is_surrogate(value);
}

struct Lead {
  size_t length; // 0: no lead byte
  uint32_t bits;
  uint32_t smallest; // anything below is overlong
};

Lead read_lead(unsigned char byte) {
  if (byte < 0x80)
    return {1, byte, 0};
  if (byte < 0xC0)
    return {0, 0, 0};
  if (byte < 0xE0)
    return {2, byte & 0x1FU, 0x80};
  if (byte < 0xF0)
    return {3, byte & 0x0FU, 0x800};
  return byte < 0xF8 ? Lead{4, byte & 0x07U, first_supplementary} : Lead{0, 0, 0};
}

// Calls `take` with each code point; false when the text is not UTF-8 or `take` refuses.
template<typename Take>
bool each_code_point(std::string_view text, Take take) {
  while (!text.empty()) {
    const auto read = read_utf8(text);
    if (!read || !take(read->value))
      return false;
    text.remove_prefix(read->length);
  }
  return true;
}

Converted converted_if(bool is_sound, std::string& result) {
  return is_sound ? Converted(std::move(result)) : std::nullopt;
}

void append_unit(std::string& out, uint32_t unit, bool is_big_endian) {
  const auto high = static_cast<char>(unit >> 8);
  const auto low = static_cast<char>(unit & 0xFF);
  out += is_big_endian ? high : low;
  out += is_big_endian ? low : high;
}

uint32_t unit_at(std::string_view bytes, size_t at, bool is_big_endian) {
  const uint32_t first = static_cast<unsigned char>(bytes[at]);
  const uint32_t second = static_cast<unsigned char>(bytes[at + 1]);
  return is_big_endian ? first << 8 | second : second << 8 | first;
}

} // namespace

std::optional<CodePoint> read_utf8(std::string_view text) {
  const auto lead = read_lead(static_cast<unsigned char>(text.front()));
  if (lead.length == 0 || lead.length > text.size())
    return {};
  uint32_t value = lead.bits;
  for (size_t i = 1; i < lead.length; ++i) {
    const uint32_t byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80)
      return {};
    value = value << 6 | (byte & 0x3F);
  }
  if (value < lead.smallest || !is_code_point(value))
    return {};
  return CodePoint{value, lead.length};
}

bool is_utf8(std::string_view text) {
  return each_code_point(text, [](uint32_t) { return true; });
}

Converted decode_bytes(std::string_view bytes, uint32_t limit) {
  std::string text;
  for (const char byte : bytes) {
    const uint32_t value = static_cast<unsigned char>(byte);
    if (value >= limit)
      return {};
    qor_enc::utf8_append_cp(text, value);
  }
  return text;
}

Converted encode_bytes(std::string_view text, uint32_t limit) {
  std::string bytes;
  const bool is_sound = each_code_point(text, [&bytes, limit](uint32_t value) {
    bytes += static_cast<char>(value);
    return value < limit;
  });
  return converted_if(is_sound, bytes);
}

Converted decode_utf16(std::string_view bytes, bool is_big_endian) {
  if (bytes.size() % 2 != 0)
    return {};
  std::string text;
  for (size_t at = 0; at < bytes.size(); at += 2) {
    auto value = unit_at(bytes, at, is_big_endian);
    if (is_surrogate(value)) {
      const bool has_pair = value < first_low_surrogate && at + 4 <= bytes.size();
      const auto low = has_pair ? unit_at(bytes, at + 2, is_big_endian) : 0;
      if (low < first_low_surrogate || low >= end_of_surrogates)
        return {};
      value = first_supplementary + ((value - first_surrogate) << 10) + (low - first_low_surrogate);
      at += 2;
    }
    qor_enc::utf8_append_cp(text, value);
  }
  return text;
}

Converted encode_utf16(std::string_view text, bool is_big_endian) {
  std::string bytes;
  const bool is_sound = each_code_point(text, [&bytes, is_big_endian](uint32_t value) {
    if (value >= first_supplementary) {
      value -= first_supplementary;
      append_unit(bytes, first_surrogate + (value >> 10), is_big_endian);
      append_unit(bytes, first_low_surrogate + (value & 0x3FF), is_big_endian);
    } else {
      append_unit(bytes, value, is_big_endian);
    }
    return true;
  });
  return converted_if(is_sound, bytes);
}

} // namespace qor

void qor_enc::utf8_append_cp(std::string& text, uint32_t code_point) {
  constexpr uint32_t replacement = 0xFFFD;
  const uint32_t value = qor::is_code_point(code_point) ? code_point : replacement;
  const auto continuation = [value](int shift) {
    return static_cast<char>(0x80 | (value >> shift & 0x3F));
  };
  if (value < 0x80)
    text += static_cast<char>(value);
  else if (value < 0x800)
    text += {static_cast<char>(0xC0 | value >> 6), continuation(0)};
  else if (value < qor::first_supplementary)
    text += {static_cast<char>(0xE0 | value >> 12), continuation(6), continuation(0)};
  else
    text +=
        {static_cast<char>(0xF0 | value >> 18), continuation(12), continuation(6), continuation(0)};
}
