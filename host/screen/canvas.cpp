#include "host/screen/canvas.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <utility>

#include "host/screen/font.h"
#include "host/screen/legibility.h"
#include "host/screen/pixels.h"

namespace kavo::host {

namespace {

// Beyond this a coordinate is far outside any picture; nearer, products of two differences of
// coordinates still fit 64 bits.
constexpr int farthest = 1'000'000'000;

Range clipped(int64_t start, int64_t size, int limit) {
  return {static_cast<int>(std::clamp<int64_t>(start, 0, limit)),
          static_cast<int>(std::clamp<int64_t>(start + size, 0, limit))};
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
  return 1U << (x + Canvas::cell_width - column);
}

unsigned bits_of(const Range& columns, int64_t x) {
  return 2 * bit_of(columns.begin, x) - bit_of(columns.end - 1, x);
}

unsigned bits_in_row(const uint8_t* rows, int64_t line) {
  return line < 0 || line >= Canvas::cell_height ? 0U : rows[line];
}

// The pixels of a line that touch one of the glyph's and are none; lines −1 and 16 touch it, too.
unsigned bits_around(const uint8_t* rows, int64_t line) {
  const unsigned own = bits_in_row(rows, line);
  const unsigned near = own | bits_in_row(rows, line - 1) | bits_in_row(rows, line + 1);
  return (near | near << 1U | near << 2U) & ~(own << 1U);
}

} // namespace

Canvas::Canvas(int width, int height)
    : width_(width), height_(height),
      own_pixels_(static_cast<size_t>(width) * static_cast<size_t>(height)), pixels_(own_pixels_),
      ground_(width, height) {}

void Canvas::move_to(uint32_t* memory) {
  ground_.lay(pixels_.data());
  if (memory == pixels_.data())
    return;
  std::copy(pixels_.begin(), pixels_.end(), memory);
  pixels_ = {memory, pixels_.size()};
  own_pixels_ = {};
}

void Canvas::move_home() {
  if (!own_pixels_.empty())
    return;
  own_pixels_.assign(pixels_.begin(), pixels_.end());
  pixels_ = own_pixels_;
}

void Canvas::fill_rectangle(int x, int y, int width, int height) {
  const Range columns = clipped(x, width, width_);
  const Range rows = clipped(y, height, height_);
  if (columns.is_empty() || rows.is_empty())
    return;
  const int run = columns.end - columns.begin;
  const int lines = rows.end - rows.begin;
  if (run == width_ && lines == height_)
    return ground_.change(colour_);
  ground_.make_room(pixels_.data(), columns, rows, true);
  uint32_t* row = &pixels_[int64_t{rows.begin} * width_ + columns.begin];
  if (run == width_)
    return fill({row, 0, int64_t{run} * lines, 1}, colour_);
  fill({row, width_, run, lines}, colour_);
}

void Canvas::outline_rectangle(int x, int y, int width, int height) {
  if (width <= 0 || height <= 0)
    return;
  // Saturated so that a rectangle that reaches out of all bounds keeps its far edges there.
  const auto right = static_cast<int>(std::min<int64_t>(int64_t{x} + width - 1, INT32_MAX));
  const auto bottom = static_cast<int>(std::min<int64_t>(int64_t{y} + height - 1, INT32_MAX));
  fill_rectangle(x, y, width, 1);
  fill_rectangle(x, bottom, width, 1);
  fill_rectangle(x, y, 1, height);
  fill_rectangle(right, y, 1, height);
}

void Canvas::line(int x1, int y1, int x2, int y2) {
  x1 = std::clamp(x1, -farthest, farthest);
  y1 = std::clamp(y1, -farthest, farthest);
  x2 = std::clamp(x2, -farthest, farthest);
  y2 = std::clamp(y2, -farthest, farthest);
  if (y1 == y2)
    return fill_rectangle(std::min(x1, x2), y1, std::abs(x2 - x1) + 1, 1);
  if (x1 == x2)
    return fill_rectangle(x1, std::min(y1, y2), 1, std::abs(y2 - y1) + 1);
  if (std::abs(x2 - x1) >= std::abs(y2 - y1))
    return shallow_line(x1, y1, x2, y2);
  steep_line(x1, y1, x2, y2);
}

void Canvas::shallow_line(int64_t x1, int64_t y1, int64_t x2, int64_t y2) {
  if (x1 > x2) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  const Range columns = clipped(x1, x2 - x1 + 1, width_);
  if (columns.is_empty())
    return;
  const Range rows = clipped(std::min(y1, y2), std::abs(y2 - y1) + 1, height_);
  ground_.make_room(pixels_.data(), columns, rows, false);
  Slope slope(y1, x2 - x1, y2 - y1, columns.begin - x1);
  for (int64_t x = columns.begin; x < columns.end; ++x, slope.step())
    if (slope.position() >= 0 && slope.position() < height_)
      pixels_[static_cast<size_t>(slope.position() * width_ + x)] = colour_;
}

void Canvas::steep_line(int64_t x1, int64_t y1, int64_t x2, int64_t y2) {
  if (y1 > y2) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  const Range rows = clipped(y1, y2 - y1 + 1, height_);
  if (rows.is_empty())
    return;
  const Range columns = clipped(std::min(x1, x2), std::abs(x2 - x1) + 1, width_);
  ground_.make_room(pixels_.data(), columns, rows, false);
  Slope slope(x1, y2 - y1, x2 - x1, rows.begin - y1);
  for (int64_t y = rows.begin; y < rows.end; ++y, slope.step())
    if (slope.position() >= 0 && slope.position() < width_)
      pixels_[static_cast<size_t>(y * width_ + slope.position())] = colour_;
}

void Canvas::text(int x, int y, std::string_view utf8) {
  const auto for_each_glyph = [&](auto draw) {
    std::string_view rest = utf8;
    for (int64_t pen = x; !rest.empty() && pen - 1 < width_; pen += cell_width)
      draw(pen, glyph_rows(next_code_point(rest)));
  };
  // All outlines first, so that none covers the letter beside it.
  Legibility letters(colour_);
  if (letters.have_outline())
    for_each_glyph(
        [&](int64_t pen, const uint8_t* rows) { outline_of_glyph(pen, y, rows, letters); });
  for_each_glyph([&](int64_t pen, const uint8_t* rows) { glyph(pen, y, rows); });
}

void Canvas::outline_of_glyph(int64_t x, int64_t y, const uint8_t* rows, Legibility& letters) {
  constexpr int outlined_width = cell_width + 2;
  const Range columns = clipped(x - 1, outlined_width, width_);
  const Range lines = clipped(y - 1, cell_height + 2, height_);
  if (columns.is_empty() || lines.is_empty())
    return;
  ground_.make_room(pixels_.data(), columns, lines, false);
  uint32_t* row = &pixels_[int64_t{lines.begin} * width_];
  const PixelRows ground = {row + columns.begin, width_, columns.end - columns.begin,
                            lines.end - lines.begin};
  if (ground.width == outlined_width && !letters.are_lost_on(*ground.first) &&
      has_one_colour(ground, *ground.first))
    return;
  const unsigned visible = bits_of(columns, x);
  for (int64_t line = lines.begin; line < lines.end; ++line, row += width_)
    for (unsigned bits = bits_around(rows, line - y) & visible; bits != 0; bits &= bits - 1) {
      uint32_t& pixel = row[x + cell_width - std::countr_zero(bits)];
      if (letters.are_lost_on(pixel))
        pixel = Legibility::outline;
    }
}

void Canvas::glyph(int64_t x, int64_t y, const uint8_t* rows) {
  const Range columns = clipped(x, cell_width, width_);
  const Range lines = clipped(y, cell_height, height_);
  if (columns.is_empty() || lines.is_empty())
    return;
  ground_.make_room(pixels_.data(), columns, lines, false);
  uint32_t* row = &pixels_[int64_t{lines.begin} * width_];
  rows += lines.begin - y;
  if (columns.end - columns.begin == cell_width)
    return fill_bits({row + x, width_, cell_width, lines.end - lines.begin}, rows, colour_);
  for (int64_t line = lines.begin; line < lines.end; ++line, ++rows, row += width_)
    for (int64_t column = columns.begin; column < columns.end; ++column)
      if ((static_cast<unsigned>(*rows) << (column - x)) & 0x80U)
        row[column] = colour_;
}

} // namespace kavo::host
