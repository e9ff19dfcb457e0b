#include "host/screen/painter.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <utility>

#include "host/screen/font.h"
#include "host/screen/ground.h"
#include "host/screen/legibility.h"
#include "host/screen/pixels.h"

namespace kavo::host {

namespace {

Range clipped(int64_t start, int64_t size, Range bounds) {
  return {static_cast<int>(std::clamp<int64_t>(start, bounds.begin, bounds.end)),
          static_cast<int>(std::clamp<int64_t>(start + size, bounds.begin, bounds.end))};
}

// The coordinate of a line on its slower axis at each step along its faster one, nearest pixel
// first. Works in 64-bit integers: exact, also when the line starts far outside.
class Slope {
public:
  // `run` is positive, `rise` at most as large as `run` in either direction.
  Slope(int64_t start, int64_t run, int64_t rise, int64_t first_step)
      : twice_run_(2 * run), twice_rise_(2 * rise) {
    const int64_t scaled = first_step * twice_rise_ + run;
    int64_t whole = scaled / twice_run_;
    remainder_ = scaled % twice_run_;
    if (remainder_ < 0) {
      remainder_ += twice_run_;
      --whole;
    }
    position_ = start + whole;
  }

  int64_t position() const { return position_; }

  void step() {
    remainder_ += twice_rise_;
    if (remainder_ >= twice_run_) {
      remainder_ -= twice_run_;
      ++position_;
    } else if (remainder_ < 0) {
      remainder_ += twice_run_;
      --position_;
    }
  }

private:
  int64_t twice_run_;
  int64_t twice_rise_;
  int64_t position_;
  int64_t remainder_;
};

// A glyph's row and the pixels beside it in ten bits: column x − 1 of the picture is the highest.
unsigned bit_of(int64_t column, int64_t x) {
  return 1U << (x + cell_width - column);
}

unsigned bits_of(const Range& columns, int64_t x) {
  return 2 * bit_of(columns.begin, x) - bit_of(columns.end - 1, x);
}

unsigned bits_in_row(const uint8_t* rows, int64_t line) {
  return line < 0 || line >= cell_height ? 0U : rows[line];
}

// The pixels of a line that touch one of the glyph's and are none; lines −1 and 16 touch it, too.
unsigned bits_around(const uint8_t* rows, int64_t line) {
  const unsigned own = bits_in_row(rows, line);
  const unsigned near = own | bits_in_row(rows, line - 1) | bits_in_row(rows, line + 1);
  return (near | near << 1U | near << 2U) & ~(own << 1U);
}

} // namespace

void Painter::paint(const Shape& shape) {
  if (common_part(columns_, shape.columns).is_empty() || common_part(rows_, shape.rows).is_empty())
    return;
  switch (shape.kind) {
  case Shape::Kind::rectangle:
    return rectangle(shape);
  case Shape::Kind::line:
    return std::abs(shape.x2 - shape.x1) >= std::abs(shape.y2 - shape.y1) ? shallow_line(shape)
                                                                          : steep_line(shape);
  case Shape::Kind::text:
    return text(shape);
  }
}

void Painter::rectangle(const Shape& shape) {
  const Range columns = common_part(columns_, shape.columns);
  const Range rows = common_part(rows_, shape.rows);
  const int run = columns.end - columns.begin;
  const int lines = rows.end - rows.begin;
  ground_.make_room(pixels_, columns, rows, true);
  uint32_t* first = row(rows.begin) + columns.begin;
  if (run == width_)
    return fill({first, 0, int64_t{run} * lines, 1}, shape.colour);
  fill({first, width_, run, lines}, shape.colour);
}

void Painter::shallow_line(Shape line) {
  if (line.x1 > line.x2) {
    std::swap(line.x1, line.x2);
    std::swap(line.y1, line.y2);
  }
  const int64_t run = int64_t{line.x2} - line.x1;
  const int64_t rise = int64_t{line.y2} - line.y1;
  const Range columns = clipped(line.x1, run + 1, columns_);
  const Range rows = clipped(std::min(line.y1, line.y2), std::abs(rise) + 1, rows_);
  ground_.make_room(pixels_, columns, rows, false);
  Slope slope(line.y1, run, rise, int64_t{columns.begin} - line.x1);
  for (int64_t x = columns.begin; x < columns.end; ++x, slope.step())
    if (slope.position() >= rows_.begin && slope.position() < rows_.end)
      row(slope.position())[x] = line.colour;
}

void Painter::steep_line(Shape line) {
  if (line.y1 > line.y2) {
    std::swap(line.x1, line.x2);
    std::swap(line.y1, line.y2);
  }
  const int64_t run = int64_t{line.y2} - line.y1;
  const int64_t rise = int64_t{line.x2} - line.x1;
  const Range rows = clipped(line.y1, run + 1, rows_);
  const Range columns = clipped(std::min(line.x1, line.x2), std::abs(rise) + 1, columns_);
  ground_.make_room(pixels_, columns, rows, false);
  Slope slope(line.x1, run, rise, int64_t{rows.begin} - line.y1);
  for (int64_t y = rows.begin; y < rows.end; ++y, slope.step())
    if (slope.position() >= columns_.begin && slope.position() < columns_.end)
      row(y)[slope.position()] = line.colour;
}

void Painter::text(const Shape& text) {
  const auto for_each_glyph = [&](auto draw) {
    std::string_view rest = text.text;
    for (int64_t pen = text.x1; !rest.empty() && pen - 1 < columns_.end; pen += cell_width) {
      const char32_t letter = next_code_point(rest);
      if (pen + cell_width + 1 > columns_.begin)
        draw(pen, glyph_rows(letter));
    }
  };
  // All outlines first, so that none covers the letter beside it.
  Legibility letters(text.colour);
  if (letters.have_outline())
    for_each_glyph(
        [&](int64_t pen, const uint8_t* rows) { outline_of_glyph(pen, text.y1, rows, letters); });
  for_each_glyph([&](int64_t pen, const uint8_t* rows) { glyph(pen, text.y1, rows, text.colour); });
}

void Painter::outline_of_glyph(int64_t x, int64_t y, const uint8_t* rows, Legibility& letters) {
  constexpr int outlined_width = cell_width + 2;
  const Range columns = clipped(x - 1, outlined_width, columns_);
  const Range lines = clipped(y - 1, cell_height + 2, rows_);
  if (columns.is_empty() || lines.is_empty())
    return;
  ground_.make_room(pixels_, columns, lines, false);
  uint32_t* pixels = row(lines.begin);
  const PixelRows ground = {pixels + columns.begin, width_, columns.end - columns.begin,
                            lines.end - lines.begin};
  if (ground.width == outlined_width && !letters.are_lost_on(*ground.first) &&
      has_one_colour(ground, *ground.first))
    return;
  const unsigned visible = bits_of(columns, x);
  for (int64_t line = lines.begin; line < lines.end; ++line, pixels += width_)
    for (unsigned bits = bits_around(rows, line - y) & visible; bits != 0; bits &= bits - 1) {
      uint32_t& pixel = pixels[x + cell_width - std::countr_zero(bits)];
      if (letters.are_lost_on(pixel))
        pixel = Legibility::outline;
    }
}

void Painter::glyph(int64_t x, int64_t y, const uint8_t* rows, uint32_t colour) {
  const Range columns = clipped(x, cell_width, columns_);
  const Range lines = clipped(y, cell_height, rows_);
  if (columns.is_empty() || lines.is_empty())
    return;
  ground_.make_room(pixels_, columns, lines, false);
  uint32_t* pixels = row(lines.begin);
  rows += lines.begin - y;
  if (columns.end - columns.begin == cell_width)
    return fill_bits({pixels + x, width_, cell_width, lines.end - lines.begin}, rows, colour);
  for (int64_t line = lines.begin; line < lines.end; ++line, ++rows, pixels += width_)
    for (int64_t column = columns.begin; column < columns.end; ++column)
      if ((static_cast<unsigned>(*rows) << (column - x)) & 0x80U)
        pixels[column] = colour;
}

} // namespace kavo::host
