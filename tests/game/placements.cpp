// The search for a piece's place, on a copy of the board; it sends the host nothing.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

#include "game/state.h"
#include "tests/game/players.h"

namespace kavo::test {

namespace {

constexpr int64_t longest = 15; // rows or columns of a board, whichever way it lies

using Piece = std::array<std::array<bool, 4>, 4>;

struct Grid {
  std::array<std::array<bool, longest>, longest> is_block{};
};

Grid board_grid() {
  Grid grid;
  for (int64_t row = 0; row < ROWS; ++row)
    for (int64_t column = 0; column < COLS; ++column)
      grid.is_block[row][column] = is_occupied(BOARD.get(), row, column);
  return grid;
}

Piece falling_piece() {
  Piece piece{};
  for (int64_t row = 0; row < 4; ++row)
    for (int64_t column = 0; column < 4; ++column)
      piece[row][column] = is_occupied(CURRENTPIECE.get(), row, column);
  return piece;
}

Piece turned(const Piece& piece) {
  Piece result{};
  for (int64_t row = 0; row < 4; ++row)
    for (int64_t column = 0; column < 4; ++column)
      result[row][column] = piece[column][3 - row];
  return result;
}

template<typename Visit>
bool all_cells(const Piece& piece, int64_t top, int64_t left, Visit visit) {
  for (int64_t row = 0; row < 4; ++row)
    for (int64_t column = 0; column < 4; ++column)
      if (piece[row][column] && !visit(top + row, left + column))
        return false;
  return true;
}

bool fits(const Grid& grid, const Piece& piece, int64_t top, int64_t left) {
  return all_cells(piece, top, left, [&grid](int64_t row, int64_t column) {
    return column >= 0 && column < COLS && row < ROWS && (row < 0 || !grid.is_block[row][column]);
  });
}

void remove_full_rows(Grid& grid) {
  int64_t kept = ROWS - 1;
  for (int64_t row = ROWS - 1; row >= 0; --row) {
    const auto& cells = grid.is_block[row];
    if (!std::all_of(cells.begin(), cells.begin() + COLS, [](bool is_block) { return is_block; }))
      grid.is_block[kept--] = cells;
  }
  for (; kept >= 0; --kept)
    grid.is_block[kept] = {};
}

int64_t first_block(const Grid& grid, int64_t column) {
  int64_t row = 0;
  while (row < ROWS && !grid.is_block[row][column])
    ++row;
  return row;
}

// How bad a board is: its stacks, the steps between them, and above all the holes below them.
double badness(const Grid& grid) {
  int64_t heights = 0;
  int64_t steps = 0;
  int64_t holes = 0;
  for (int64_t column = 0; column < COLS; ++column) {
    const int64_t top = first_block(grid, column);
    heights += ROWS - top;
    if (column > 0)
      steps += std::abs(top - first_block(grid, column - 1));
    for (int64_t row = top; row < ROWS; ++row)
      holes += grid.is_block[row][column] ? 0 : 1;
  }
  return static_cast<double>(heights) + 0.4 * static_cast<double>(steps) +
         4.0 * static_cast<double>(holes);
}

// The badness after a drop from the piece's row; infinite when it does not fit there.
double badness_after(Grid grid, const Piece& piece, int64_t column) {
  if (!fits(grid, piece, PIECEY, column))
    return std::numeric_limits<double>::infinity();
  int64_t row = PIECEY;
  while (row < ROWS && fits(grid, piece, row + 1, column))
    ++row;
  all_cells(piece, row, column, [&grid](int64_t r, int64_t c) {
    if (r >= 0 && r < ROWS)
      grid.is_block[r][c] = true;
    return true;
  });
  remove_full_rows(grid);
  return badness(grid);
}

} // namespace

Placement best_placement() {
  const Grid grid = board_grid();
  Piece piece = falling_piece();
  Placement best{0, PIECEX};
  double least = std::numeric_limits<double>::infinity();
  for (int turns = 0; turns < 4; ++turns, piece = turned(piece)) {
    for (int64_t column = -3; column < COLS; ++column) {
      const double bad = badness_after(grid, piece, column);
      if (bad < least) {
        least = bad;
        best = {turns, column};
      }
    }
  }
  return best;
}

Placement random_placement(std::mt19937_64& random) {
  return {static_cast<int>(random() % 4), static_cast<int64_t>(random() % 17) - 2};
}

} // namespace kavo::test
