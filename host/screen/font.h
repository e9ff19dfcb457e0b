// The one font of the screen: 8 × 16 pixels, built in.
#pragma once

#include <cstdint>
#include <string_view>

namespace kavo::host {

inline constexpr int cell_width = 8; // of one character, in pixels
inline constexpr int cell_height = 16;

// One character: 16 rows from the top, the leftmost pixel in the highest bit.
struct Glyph {
  char32_t code_point;
  uint8_t rows[16];
};

// The glyph's 16 rows; the replacement box when the font has no such character.
const uint8_t* glyph_rows(char32_t code_point);

// What next_code_point gives for bytes that are not UTF-8; the font draws it as the box.
inline constexpr char32_t replacement_character = 0xFFFD;

// Takes the first character off `utf8`, which must not be empty. An invalid byte is taken alone.
char32_t next_code_point(std::string_view& utf8);

} // namespace kavo::host
