// What every test of a game routine starts from: a fresh game state, a recording host, a clock
// that stands still.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

#include "game/commands.h"
#include "game/state.h"
#include "tests/fakes/fake_clock.h"
#include "tests/fakes/recording_host.h"
#include "tests/game/trace.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {

// Opens what a routine gives back, after the poll that every caller owes.
template<typename T>
T run(Out<T> out) {
  error_is_pending();
  return Opener::open(out);
}
inline void run(Out<>) {
  error_is_pending();
}

class GameTest : public ::testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

  static RecordingHost& host() { return recording_host(); }
  static FakeClock& clock() { return fake_clock(); }

  // A fresh host, clock and game state, as at the start of every test.
  static void start_afresh();

  // The commands since the last call or the start of the test; drawn() without the kinds of their
  // numbers, as most tests want them.
  static Trace new_trace();
  static Trace drawn() { return plain(new_trace()); }

  // Fails command `nth` of `routine` on a fresh state that `arrange` prepared. It must stop at that
  // command with the error pending. False when the routine sends fewer commands, or misbehaves.
  static bool fails_cleanly_at(int64_t nth, const std::function<void()>& arrange,
                               const std::function<void()>& routine);

  // Does so for every command in turn. Gives the number of commands that the routine sends.
  static int64_t fail_each_command(const std::function<void()>& arrange,
                                   const std::function<void()>& routine);

  // For tests in which a command fails: the message, after which no error is pending.
  static std::string take_error();
};

// ---- boards -------------------------------------------------------------------------------------

// Makes an empty board of this shape the board of the game.
void set_board_size(int64_t rows, int64_t columns);

// Writes `kind` into the cells row, column.
void put(int64_t row, int64_t column, double kind = 1);
void fill_row(int64_t row, double kind = 1);
double at(int64_t row, int64_t column);

// The board as text, a line a row: '.' for empty, else the kind in base 36.
std::string board_text();

// Writes the bottom rows of the board, the last line into the last row: '.' empties a cell, any
// other character is a kind in base 36.
void set_bottom(std::initializer_list<std::string_view> rows);

// The last `rows` lines of board_text().
std::string bottom_text(int64_t rows);

// The number of occupied cells.
int64_t blocks_on_board();

// ---- pieces -------------------------------------------------------------------------------------

// A 4 x 4 shape from rows of '.' and '#'; missing rows are empty.
Array shape(std::initializer_list<const char*> rows);
std::string shape_text(const Array& matrix);

// Makes this the falling piece.
void hold(Array piece, int64_t kind, int64_t x, int64_t y);

// A lock in which everything happens: a row filler is about to complete the bottom row; the rows
// above it, which lack their first cell, tip the board to the right and, on its side, leave the
// next piece no room.
void arrange_busy_lock();

extern const std::initializer_list<const char*> i_piece, o_piece, t_piece, single_cell;

// ---- high scores --------------------------------------------------------------------------------

std::string name_at(int64_t slot);
double score_at(int64_t slot);

} // namespace kavo::test
