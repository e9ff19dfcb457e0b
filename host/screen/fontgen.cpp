// Build-time tool: copies the 8 × 16 bitmaps out of a font file into a C++ header.
//   fontgen FONT HEADER
#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

namespace {

constexpr int cell_width = 8;
constexpr int cell_height = 16;

using Rows = uint8_t[cell_height];

void check(FT_Error error, const std::string& action) {
  if (error != 0)
    throw std::runtime_error(action + ": FreeType error " + std::to_string(error));
}

// Bitmap fonts hold one picture per size; scaling another size would blur it.
void select_strike(FT_Face face) {
  for (int i = 0; i < face->num_fixed_sizes; ++i) {
    const FT_Bitmap_Size& size = face->available_sizes[i];
    if (size.width == cell_width && size.height == cell_height)
      return check(FT_Select_Size(face, i), "selecting the size");
  }
  throw std::runtime_error("the font has no bitmaps of 8 x 16");
}

void copy_bitmap(FT_Face face, Rows& rows) {
  const FT_GlyphSlotRec* slot = face->glyph;
  const FT_Bitmap& bitmap = slot->bitmap;
  const int ascender = static_cast<int>(face->size->metrics.ascender / 64);
  if (bitmap.pixel_mode != FT_PIXEL_MODE_MONO && bitmap.rows > 0)
    throw std::runtime_error("the font's bitmaps are not of one bit a pixel");
  for (int y = 0; y < static_cast<int>(bitmap.rows); ++y)
    for (int x = 0; x < static_cast<int>(bitmap.width); ++x) {
      const int row = ascender - slot->bitmap_top + y;
      const int column = slot->bitmap_left + x;
      const bool is_set = (bitmap.buffer[y * bitmap.pitch + x / 8] >> (7 - x % 8)) & 1;
      if (is_set && row >= 0 && row < cell_height && column >= 0 && column < cell_width)
        rows[row] = static_cast<uint8_t>(rows[row] | (0x80 >> column));
    }
}

void write_glyph(std::ostream& out, FT_ULong code_point, const Rows& rows) {
  char text[32];
  std::snprintf(text, sizeof text, "0x%04lX", code_point);
  out << "    {" << text << ", {";
  for (int y = 0; y < cell_height; ++y)
    out << (y > 0 ? ", " : "") << static_cast<int>(rows[y]);
  out << "}},\n";
}

void write_header(FT_Face face, std::ostream& out) {
  out << "#pragma once\n\n#include \"host/screen/font.h\"\n\nnamespace kavo::host {\n\n"
      << "// " << face->family_name << ' ' << face->style_name << ", in rising code points.\n"
      << "inline constexpr Glyph font_glyphs[] = {\n";
  FT_UInt index = 0;
  for (FT_ULong code_point = FT_Get_First_Char(face, &index); index != 0;
       code_point = FT_Get_Next_Char(face, code_point, &index)) {
    if (code_point < ' ' || (code_point >= 0x7F && code_point < 0xA0) || code_point == 0xFFFD)
      continue; // the screen shows these as its own box
    check(FT_Load_Glyph(face, index, FT_LOAD_RENDER | FT_LOAD_TARGET_MONO), "loading a glyph");
    Rows rows = {};
    copy_bitmap(face, rows);
    write_glyph(out, code_point, rows);
  }
  out << "};\n\n} // namespace kavo::host\n";
}

void generate(const char* font, const char* header) {
  FT_Library library = nullptr;
  FT_Face face = nullptr;
  check(FT_Init_FreeType(&library), "starting FreeType");
  check(FT_New_Face(library, font, 0, &face), std::string("opening ") + font);
  select_strike(face);
  std::ofstream out(header);
  write_header(face, out);
  out.close();
  if (!out)
    throw std::runtime_error(std::string("cannot write ") + header);
  FT_Done_Face(face);
  FT_Done_FreeType(library);
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: fontgen FONT HEADER\n", stderr);
    return 2;
  }
  try {
    generate(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "fontgen: %s\n", error.what());
    return 1;
  }
  return 0;
}
