#include "game/playfield/pieces.h"

#include <array>

#include "game/commands.h"
#include "game/state.h"

namespace kavo {

namespace {

// Rows 0 and 1 of a 4 x 4 shape; the lower two rows of every shape are empty.
using Shape = std::array<std::array<double, 4>, 2>;

constexpr std::array<Shape, 7> standard_shapes = {{
    {{{0, 0, 0, 0}, {1, 1, 1, 1}}}, // I
    {{{1, 0, 0, 0}, {1, 1, 1, 0}}}, // J
    {{{0, 0, 1, 0}, {1, 1, 1, 0}}}, // L
    {{{0, 1, 1, 0}, {0, 1, 1, 0}}}, // O
    {{{0, 1, 1, 0}, {1, 1, 0, 0}}}, // S
    {{{0, 1, 0, 0}, {1, 1, 1, 0}}}, // T
    {{{1, 1, 0, 0}, {0, 1, 1, 0}}}, // Z
}};
constexpr Shape single_cell = {{{0, 0, 0, 0}, {0, 1, 0, 0}}};

constexpr double special_chance = 0.15;

// The runtime owns what it returns: every call builds a fresh matrix, so that the falling piece
// and the preview never share one.
Array matrix_of(const Shape& shape) {
  Array matrix = zero_matrix(4, 4);
  for (int64_t row = 0; row < 2; ++row)
    for (int64_t column = 0; column < 4; ++column)
      put_cell(matrix.get(), row, column,
               shape[static_cast<size_t>(row)][static_cast<size_t>(column)]);
  return matrix;
}

int64_t special_kind(double draw) {
  if (draw < 0.25)
    return 8;
  if (draw < 0.47)
    return 9;
  if (draw < 0.6)
    return 10;
  return draw < 0.8 ? 11 : 12;
}

Out<> roll_special() {
  DO(NEXTPIECE = matrix_of(single_cell));
  DO(NEXTCOLOR = special_kind(TRY(command::rnd(1))));
  return {};
}

Out<> roll_standard() {
  const int64_t shape = qor_int(TRY(command::rnd(1)) * 7);
  if (shape < 0 || shape >= static_cast<int64_t>(standard_shapes.size()))
    return {};
  DO(NEXTPIECE = matrix_of(standard_shapes[static_cast<size_t>(shape)]));
  DO(NEXTCOLOR = shape + 1);
  return {};
}

} // namespace

Out<> ROLLNEXT() {
  ENTER();
  if (TRY(command::rnd(1)) < special_chance)
    DO(roll_special());
  else
    DO(roll_standard());
  return {};
}

Out<> SPAWNPIECE() {
  ENTER();
  // A copy, so that a preview survives a roll that is cut short.
  DO(CURRENTPIECE = Array(qor_array_copy_deep(NEXTPIECE.get())));
  DO(PIECECOLOR = NEXTCOLOR);
  DO(PIECEX = qor_int(static_cast<double>(COLS) * 0.5) - 2);
  DO(PIECEY = 0);
  DO(ROLLNEXT());
  return {};
}

Out<double> PIECE_POINTS(double kind) {
  ENTER();
  constexpr std::array<double, 11> points = {10, 10, 15, 15, 5, 20, 25, 20, 0, 0, 0};
  for (size_t known = 1; known < points.size(); ++known)
    if (TRY(kind == static_cast<double>(known)))
      return points[known];
  return 10.0;
}

} // namespace kavo
