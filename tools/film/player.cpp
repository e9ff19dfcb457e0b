#include "tools/film/player.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "game/state.h"
#include "tests/fakes/stage.h"

namespace kavo::film {

namespace {

using Cells = std::vector<std::vector<bool>>;

Cells cells_of_board() {
  Cells cells(static_cast<size_t>(ROWS), std::vector<bool>(static_cast<size_t>(COLS)));
  for (int64_t row = 0; row < ROWS; ++row)
    for (int64_t column = 0; column < COLS; ++column)
      cells[row][column] = is_occupied(BOARD.get(), row, column);
  return cells;
}

template<typename Shape>
Shape falling_shape() {
  Shape shape{};
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column)
      shape[row][column] = is_occupied(CURRENTPIECE.get(), row, column);
  return shape;
}

template<typename Shape>
Shape turned(const Shape& shape) {
  Shape result{};
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column)
      result[row][column] = shape[column][3 - row];
  return result;
}

// Calls visit(row, column) for every cell of the shape that lies with its corner there.
template<typename Shape, typename Visit>
void for_each_cell(const Shape& shape, int x, int y, Visit visit) {
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column)
      if (shape[row][column])
        visit(y + row, x + column);
}

template<typename Shape>
bool fits(const Cells& cells, const Shape& shape, int x, int y) {
  bool is_free = true;
  for_each_cell(shape, x, y, [&](int row, int column) {
    is_free = is_free && column >= 0 && column < static_cast<int>(cells[0].size()) &&
              row < static_cast<int>(cells.size()) && (row < 0 || !cells[row][column]);
  });
  return is_free;
}

struct Look {
  int full_rows = 0;
  int holes = 0;
  int height = 0;
  double pull = 0;
};

Look look_at(const Cells& cells) {
  Look look;
  const auto columns = cells[0].size();
  for (const auto& row : cells)
    look.full_rows += std::find(row.begin(), row.end(), false) == row.end() ? 1 : 0;
  for (size_t column = 0; column < columns; ++column) {
    bool is_covered = false;
    for (size_t row = 0; row < cells.size(); ++row) {
      if (cells[row][column]) {
        look.height += is_covered ? 0 : static_cast<int>(cells.size() - row);
        is_covered = true;
        look.pull += static_cast<double>(column) - static_cast<double>(columns - 1) / 2;
      } else if (is_covered) {
        ++look.holes;
      }
    }
  }
  return look;
}

void send(host::EventSink& sink, std::string_view name, bool is_down) {
  const std::string text(name);
  const host::Key key = kavo::test::key_named(text);
  if (is_down)
    sink.key_went_down(key, false);
  else
    sink.key_went_up(key);
}

} // namespace

void Player::act(host::EventSink& sink) {
  if (!held_.empty()) {
    send(sink, held_, false);
    held_ = {};
    frames_to_wait_ = frames_for_a_key_ - 2;
    return;
  }
  if (frames_to_wait_-- > 0)
    return;
  held_ = next_key();
  if (!held_.empty())
    send(sink, held_, true);
}

std::string_view Player::next_key() {
  const std::string_view state = chars(GSTATE$);
  if (state == "enter")
    return "Return";
  if (is_leaving_)
    return "Escape";
  if (state == "title")
    return "Space";
  return state == "play" ? next_move() : "P";
}

std::string_view Player::next_move() {
  if (!has_plan_) {
    plan_ = best_plan();
    has_plan_ = true;
    moves_left_ = 16;
  }
  if (plan_.turns > 0) {
    --plan_.turns;
    return "Up";
  }
  if (PIECEX != plan_.column && moves_left_-- > 0)
    return PIECEX > plan_.column ? "Left" : "Right";
  has_plan_ = false;
  return "Space";
}

Player::Plan Player::best_plan() const {
  Plan best{};
  double best_worth = -std::numeric_limits<double>::infinity();
  auto shape = falling_shape<Shape>();
  for (int turns = 0; turns < 4; ++turns) {
    for (int column = -2; column < COLS; ++column) {
      const double worth = worth_of(shape, column);
      if (worth > best_worth) {
        best_worth = worth;
        best = {.turns = turns, .column = column};
      }
    }
    shape = turned(shape);
  }
  return best;
}

// Minus infinity where the shape does not fit.
double Player::worth_of(const Shape& shape, int column) const {
  auto cells = cells_of_board();
  auto row = static_cast<int>(PIECEY);
  if (!fits(cells, shape, column, row))
    return -std::numeric_limits<double>::infinity();
  while (fits(cells, shape, column, row + 1))
    ++row;
  for_each_cell(shape, column, row, [&](int y, int x) {
    if (y >= 0)
      cells[y][x] = true;
  });
  const Look look = look_at(cells);
  return look.full_rows * taste_.cleared_row + look.holes * taste_.hole +
         look.height * taste_.height + std::abs(look.pull) * taste_.pull;
}

} // namespace kavo::film
