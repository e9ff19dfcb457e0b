#include "host/screen/font.h"

#include <algorithm>

#include "host/screen/font_data.h"
#include "runtime/internal/utf.h"

namespace kavo::host {

namespace {

constexpr uint8_t box[16] = {0x00, 0x00, 0x7E, 0x42, 0x42, 0x42, 0x42, 0x42,
                             0x42, 0x42, 0x42, 0x42, 0x7E, 0x00, 0x00, 0x00};

} // namespace

const uint8_t* glyph_rows(char32_t code_point) {
  const auto* found = std::lower_bound(
      std::begin(font_glyphs), std::end(font_glyphs), code_point,
      [](const Glyph& glyph, char32_t wanted) { return glyph.code_point < wanted; });
  const bool is_there = found != std::end(font_glyphs) && found->code_point == code_point;
  return is_there ? found->rows : box;
}

char32_t next_code_point(std::string_view& utf8) {
  const auto read = qor::read_utf8(utf8);
  utf8.remove_prefix(read ? read->length : 1);
  return read ? read->value : replacement_character;
}

} // namespace kavo::host
