#include "game/presentation/cells.h"

#include "game/board/geometry.h"
#include "game/board/kinds.h"
#include "game/commands.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr double light = 55.0;
constexpr double shade = -60.0;

constexpr std::array<Color, 13> colors = {{
    {200, 200, 200}, // no piece kind
    {90, 210, 230},  // I
    {80, 120, 230},  // J
    {235, 150, 60},  // L
    {235, 205, 70},  // O
    {110, 200, 95},  // S
    {200, 110, 210}, // T
    {220, 90, 90},   // Z
    {240, 110, 60},  // bomb
    {120, 230, 245}, // cross-line
    {245, 215, 80},  // coin
    {110, 120, 140}, // heavy block
    {245, 200, 250}, // row filler
}};

Color color_of(double value) {
  for (size_t kind = 1; kind < colors.size(); ++kind)
    if (value == static_cast<double>(kind))
      return colors[kind];
  return colors[0];
}

const char* letter_of(double kind) {
  if (kind == kind::bomb)
    return "B";
  if (kind == kind::cross_line)
    return "L";
  if (kind == kind::coin)
    return "$";
  if (kind == kind::heavy)
    return "A";
  return kind == kind::row_filler ? "*" : "";
}

// Components may leave 0..255; the host clamps what it is sent.
Out<> set_color(const Color& color, double brighter) {
  DO(command::draw_color(color[0] + brighter, color[1] + brighter, color[2] + brighter));
  return {};
}

Out<> draw_label(double value, double x, double y) {
  DO(command::draw_color(25, 25, 30));
  const Text letter = TRY(PU_LABEL$(value));
  DO(command::text(x, y, chars(letter)));
  return {};
}

Out<> draw_bevelled(double x, double y, const Color& color) {
  DO(set_color(color, 0.0));
  DO(command::rect(x + 1, y + 1, 34, 34, 1));
  DO(set_color(color, light));
  DO(command::rect(x + 1, y + 1, 34, 3, 1));
  DO(command::rect(x + 1, y + 1, 3, 34, 1));
  DO(set_color(color, shade));
  DO(command::rect(x + 1, y + 32, 34, 3, 1));
  DO(command::rect(x + 32, y + 1, 3, 34, 1));
  return {};
}

Out<> draw_mini_cell(double value, double x, double y, int64_t size) {
  DO(set_color(TRY(COLOR_FOR(value)), 0.0));
  DO(command::rect(x, y, size - 2, size - 2, 1));
  if (value >= kind::first_special)
    DO(draw_label(value, x + 2, y - 2));
  return {};
}

} // namespace

Out<Color> COLOR_FOR(double value) {
  ENTER();
  return TRY(color_of(value));
}

Out<Text> PU_LABEL$(double kind) {
  ENTER();
  return TRY(copy(letter_of(kind)));
}

Out<> DRAWCELL(double row, double column, double value) {
  ENTER();
  if (row < 0 || row >= static_cast<double>(ROWS) || column < 0 ||
      column >= static_cast<double>(COLS))
    return {};
  const double x = cell_left(column);
  const double y = cell_top(row);
  if (value == 0.0) {
    DO(command::draw_color(28, 40, 56));
    DO(command::rect(x + 1, y + 1, 34, 34, 1));
    return {};
  }
  DO(draw_bevelled(x, y, TRY(COLOR_FOR(value))));
  if (value >= kind::first_special)
    DO(draw_label(value, x + 13, y + 9));
  return {};
}

Out<> DRAWMINI(double value, double x, double y, int64_t size, const Array& piece) {
  ENTER();
  return for_each_block(piece, [&](int64_t row, int64_t column) {
    return draw_mini_cell(value, x + static_cast<double>(column * size),
                          y + static_cast<double>(row * size), size);
  });
}

} // namespace kavo
