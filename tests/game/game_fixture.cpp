#include "tests/game/game_fixture.h"

namespace kavo::test {

const std::initializer_list<const char*> i_piece = {"....", "####"};
const std::initializer_list<const char*> o_piece = {".##.", ".##."};
const std::initializer_list<const char*> t_piece = {".#..", "###."};
const std::initializer_list<const char*> single_cell = {"....", ".#.."};

void GameTest::SetUp() {
  start_afresh();
}

void GameTest::start_afresh() {
  host().reset();
  clock() = FakeClock();
  qor_runtime_set_handle(qorrt_init(0, nullptr));
  qor_err_clear();
  qor_recursion_reset_to(0);
  set_geometry();
  set_initial_values();
}

void GameTest::TearDown() {
  EXPECT_TRUE(host().faults.empty()) << host().faults.front();
  EXPECT_EQ(qor_recursion_depth(), 0);
  EXPECT_EQ(qor_err_code(), 0) << "an error is still pending";
  EXPECT_EQ(host().open_frames, 0);
  release_state();
}

Trace GameTest::new_trace() {
  return std::exchange(host().trace, {});
}

bool GameTest::fails_cleanly_at(int64_t nth, const std::function<void()>& arrange,
                                const std::function<void()>& routine) {
  start_afresh();
  arrange();
  host().forget();
  host().is_discarding = true;
  host().fail_at = nth;
  routine();
  if (host().commands < nth)
    return false;
  SCOPED_TRACE("command " + std::to_string(nth));
  EXPECT_EQ(host().commands, nth) << "it went on after the failure";
  EXPECT_TRUE(host().faults.empty()) << host().faults.front();
  EXPECT_EQ(qor_recursion_depth(), 0);
  EXPECT_TRUE(take_error().ends_with(": failed on command"));
  return !HasFailure();
}

int64_t GameTest::fail_each_command(const std::function<void()>& arrange,
                                    const std::function<void()>& routine) {
  int64_t nth = 1;
  while (fails_cleanly_at(nth, arrange, routine))
    ++nth;
  return HasFailure() ? 0 : host().commands;
}

std::string GameTest::take_error() {
  const Text message(qor_err_code() != 0 ? qor_err_msg() : nullptr);
  qor_err_clear();
  host().open_frames = 0; // an error leaves them open
  return chars(message);
}

constexpr std::string_view digits = ".123456789abc"; // the kinds as board_text() writes them

void set_board_size(int64_t rows, int64_t columns) {
  ROWS = rows;
  COLS = columns;
  BOARD = zero_matrix(rows, columns);
}

void put(int64_t row, int64_t column, double kind) {
  put_cell(BOARD.get(), row, column, kind);
}

void fill_row(int64_t row, double kind) {
  for (int64_t column = 0; column < COLS; ++column)
    put(row, column, kind);
}

double at(int64_t row, int64_t column) {
  return cell_at(BOARD.get(), row, column);
}

void set_bottom(std::initializer_list<std::string_view> rows) {
  int64_t row = ROWS - std::ssize(rows);
  for (const std::string_view line : rows) {
    for (int64_t column = 0; column < COLS; ++column)
      put(row, column, static_cast<double>(digits.find(line[column])));
    ++row;
  }
}

std::string bottom_text(int64_t rows) {
  return board_text().substr((ROWS - rows) * (COLS + 1));
}

std::string board_text() {
  std::string text;
  for (int64_t row = 0; row < ROWS; ++row) {
    for (int64_t column = 0; column < COLS; ++column)
      text += digits[static_cast<int>(at(row, column))];
    text += '\n';
  }
  return text;
}

int64_t blocks_on_board() {
  int64_t blocks = 0;
  for (int64_t row = 0; row < ROWS; ++row)
    for (int64_t column = 0; column < COLS; ++column)
      blocks += is_occupied(BOARD.get(), row, column);
  return blocks;
}

Array shape(std::initializer_list<const char*> rows) {
  Array matrix = zero_matrix(4, 4);
  int64_t row = 0;
  for (const char* line : rows) {
    for (int64_t column = 0; column < 4; ++column)
      put_cell(matrix.get(), row, column, line[column] == '#' ? 1.0 : 0.0);
    ++row;
  }
  return matrix;
}

std::string shape_text(const Array& matrix) {
  std::string text;
  for (int64_t row = 0; row < 4; ++row) {
    for (int64_t column = 0; column < 4; ++column)
      text += is_occupied(matrix.get(), row, column) ? '#' : '.';
    text += '\n';
  }
  return text;
}

void hold(Array piece, int64_t kind, int64_t x, int64_t y) {
  CURRENTPIECE = std::move(piece);
  PIECECOLOR = kind;
  PIECEX = x;
  PIECEY = y;
}

void arrange_busy_lock() {
  set_board_size(15, 10);
  for (int64_t row = 4; row < 14; ++row)
    for (int64_t column = 1; column < 10; ++column)
      put(row, column, 3);
  NEXTPIECE = shape(t_piece);
  NEXTCOLOR = 6;
  hold(shape(single_cell), 12, 3, 13);
}

std::string name_at(int64_t slot) {
  return qor_array_get_str(HS_NAME.get(), slot);
}
double score_at(int64_t slot) {
  return qor_array_get(HS_SCORE.get(), slot);
}

} // namespace kavo::test
