#include "host/panel/drawing.h"

#include "host/panel/texts.h"
#include "host/screen/font.h"

namespace kavo::host {

void dim(Canvas& canvas) {
  for (uint32_t& pixel : canvas.pixels_to_change())
    pixel = pixel >> 2U & 0x3F3F3FU;
}

void draw_box(Canvas& canvas, const Box& box) {
  canvas.set_colour(colour::ground);
  canvas.fill_rectangle(box.x, box.y, box.width, box.height);
  canvas.set_colour(colour::frame);
  canvas.outline_rectangle(box.x, box.y, box.width, box.height);
  canvas.outline_rectangle(box.x + 1, box.y + 1, box.width - 2, box.height - 2);
}

int length_of(std::string_view utf8) {
  int length = 0;
  for (; !utf8.empty(); ++length)
    next_code_point(utf8);
  return length;
}

void draw_text(Canvas& canvas, int x, int y, uint32_t colour, std::string_view utf8) {
  canvas.set_colour(colour);
  canvas.text(x, y, utf8);
}

void draw_centred(Canvas& canvas, int y, uint32_t colour, std::string_view utf8) {
  draw_text(canvas, (canvas.width() - length_of(utf8) * Canvas::cell_width) / 2, y, colour, utf8);
}

Box corner_sign(const Canvas& canvas) {
  constexpr int size = 28;
  constexpr int margin = 8;
  return {canvas.width() - size - margin, margin, size, size};
}

void draw_corner_sign(Canvas& canvas) {
  const Box sign = corner_sign(canvas);
  draw_box(canvas, sign);
  draw_text(canvas, sign.x + 10, sign.y + 6, colour::chosen, "?");
}

void draw_foot_line(Canvas& canvas, std::string_view utf8) {
  constexpr int height = 30;
  constexpr int margin = 8;
  const int width = (length_of(utf8) + 4) * Canvas::cell_width;
  const int top = canvas.height() - height - margin;
  draw_box(canvas, {(canvas.width() - width) / 2, top, width, height});
  draw_centred(canvas, top + 7, colour::chosen, utf8);
}

void draw_waiting(Canvas& canvas, Language language) {
  constexpr int width = 380;
  constexpr int height = 84;
  const int top = (canvas.height() - height) / 2;
  dim(canvas);
  draw_box(canvas, {(canvas.width() - width) / 2, top, width, height});
  draw_centred(canvas, top + 20, colour::chosen, text(Text::waiting, language));
  draw_centred(canvas, top + 48, colour::plain, text(Text::how_to_go_on, language));
}

} // namespace kavo::host
