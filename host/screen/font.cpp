#include "host/screen/font.h"

#include <algorithm>

#include "host/screen/font_data.h"

namespace kavo::host {

namespace {

constexpr uint8_t box[16] = {0x00, 0x00, 0x7E, 0x42, 0x42, 0x42, 0x42, 0x42,
                             0x42, 0x42, 0x42, 0x42, 0x7E, 0x00, 0x00, 0x00};

// How many bytes follow a lead byte, and the smallest code point that may be written that long.
struct Sequence {
  size_t continuation_bytes;
  char32_t smallest;
  char32_t lead_bits;
};

Sequence sequence_of(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF)
    return {1, 0x80, lead & 0x1FU};
  if (lead >= 0xE0 && lead <= 0xEF)
    return {2, 0x800, lead & 0x0FU};
  if (lead >= 0xF0 && lead <= 0xF4)
    return {3, 0x10000, lead & 0x07U};
  return {0, 0, replacement_character};
}

bool is_scalar(char32_t code_point) {
  return code_point <= 0x10FFFF && (code_point < 0xD800 || code_point > 0xDFFF);
}

} // namespace

const uint8_t* glyph_rows(char32_t code_point) {
  const auto* found = std::lower_bound(
      std::begin(font_glyphs), std::end(font_glyphs), code_point,
      [](const Glyph& glyph, char32_t wanted) { return glyph.code_point < wanted; });
  const bool is_there = found != std::end(font_glyphs) && found->code_point == code_point;
  return is_there ? found->rows : box;
}

char32_t next_code_point(std::string_view& utf8) {
  const auto lead = static_cast<unsigned char>(utf8.front());
  utf8.remove_prefix(1);
  if (lead < 0x80)
    return lead;
  const Sequence sequence = sequence_of(lead);
  if (sequence.continuation_bytes == 0 || utf8.size() < sequence.continuation_bytes)
    return replacement_character;
  char32_t code_point = sequence.lead_bits;
  for (size_t i = 0; i < sequence.continuation_bytes; ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if ((byte & 0xC0U) != 0x80U)
      return replacement_character;
    code_point = (code_point << 6U) | (byte & 0x3FU);
  }
  if (code_point < sequence.smallest || !is_scalar(code_point))
    return replacement_character;
  utf8.remove_prefix(sequence.continuation_bytes);
  return code_point;
}

} // namespace kavo::host
