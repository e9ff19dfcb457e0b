// The call convention: what every routine owes the guard and the host.
#include "game/board/pull.h"
#include "game/clearing/lines.h"
#include "game/frame_scope.h"
#include "game/highscores/entry.h"
#include "game/highscores/table.h"
#include "game/playfield/movement.h"
#include "game/playfield/pieces.h"
#include "game/presentation/cells.h"
#include "game/presentation/frame.h"
#include "game/routine.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

using RoutineTest = GameTest;
using RoutineDeathTest = GameTest;

int passes = 0;

Out<double> three_passes() {
  ENTER();
  for (passes = 0; passes < 3; ++passes)
    DO(command::cls());
  return 7.5;
}

Out<double> twice_three_passes() {
  ENTER();
  const double first = TRY(three_passes());
  DO(command::screen_flip());
  return first * 2;
}

// ---- the guard ----------------------------------------------------------------------------------

TEST_F(RoutineTest, ARoutineGivesItsResultAndLeavesTheGuardAsItWas) {
  qor_recursion_reset_to(3);
  EXPECT_EQ(run(three_passes()), 7.5);
  EXPECT_EQ(qor_recursion_depth(), 3);
  qor_recursion_reset_to(0);
}

TEST_F(RoutineTest, TheTwoHundredAndFiftySixthRoutineStillRuns) {
  qor_recursion_reset_to(255);
  EXPECT_EQ(run(three_passes()), 7.5);
  EXPECT_EQ(qor_recursion_depth(), 255);
  qor_recursion_reset_to(0);
}

TEST_F(RoutineTest, ARefusedRoutineRunsNothingAndLowersTheDepthByOne) {
  qor_recursion_reset_to(256);
  passes = -1;
  EXPECT_EQ(run(three_passes()), 0.0);
  EXPECT_EQ(passes, -1);
  EXPECT_EQ(host().commands, 0);
  EXPECT_EQ(qor_recursion_depth(), 255);
  EXPECT_EQ(take_error(), "Stack overflow: recursion too deep");
  qor_recursion_reset_to(0);
}

TEST_F(RoutineTest, ARefusedRoutineGivesTheZeroOfItsKind) {
  qor_recursion_reset_to(256);
  EXPECT_EQ(run(ROTATEMATRIX(shape(i_piece))), nullptr);
  EXPECT_EQ(take_error(), "Stack overflow: recursion too deep");
  qor_recursion_reset_to(0);
}

int64_t deepest = 0;

Out<> call_oneself() {
  ENTER();
  deepest = qor_recursion_depth();
  DO(call_oneself());
  deepest = -1;
  return {};
}

TEST_F(RoutineTest, ARoutineThatCallsItselfWithoutEndStopsAtTheLimit) {
  run(call_oneself());
  EXPECT_EQ(deepest, 256);
  EXPECT_EQ(qor_recursion_depth(), 0);
  EXPECT_EQ(take_error(), "Stack overflow: recursion too deep");
}

// ---- errors -------------------------------------------------------------------------------------

TEST_F(RoutineTest, AnErrorInTheMiddleOfALoopEndsTheLoopAndTheRoutine) {
  host().fail_at = 2;
  EXPECT_EQ(run(three_passes()), 0.0);
  EXPECT_EQ(passes, 1);
  EXPECT_EQ(host().commands, 2);
  EXPECT_EQ(take_error(), "CLS: failed on command");
}

TEST_F(RoutineTest, AnErrorDeepDownUnwindsEveryRoutine) {
  host().fail_at = 3;
  EXPECT_EQ(run(twice_three_passes()), 0.0);
  EXPECT_EQ(host().commands, 3) << "SCREENFLIP must not follow";
  EXPECT_EQ(qor_recursion_depth(), 0);
  EXPECT_EQ(take_error(), "CLS: failed on command");
}

TEST_F(RoutineTest, WithoutAnErrorEverythingRuns) {
  EXPECT_EQ(run(twice_three_passes()), 15.0);
  EXPECT_TRUE(same(new_trace(), {"CLS", "CLS", "CLS", "SCREENFLIP"}));
}

TEST_F(RoutineTest, APollMovesTheHostsMessageIntoTheErrorState) {
  host().fail("the message");
  EXPECT_TRUE(error_is_pending());
  EXPECT_EQ(qor_err_code(), 1);
  EXPECT_EQ(host().error(), nullptr);
  EXPECT_EQ(take_error(), "the message");
}

TEST_F(RoutineTest, WithoutAMessageAPollLeavesAPendingErrorAsItIs) {
  qor_err_set("older", 3);
  EXPECT_TRUE(error_is_pending());
  EXPECT_EQ(qor_err_code(), 3);
  EXPECT_EQ(take_error(), "older");
}

TEST_F(RoutineTest, ALongMessageIsCutToFiveHundredAndElevenBytes) {
  host().fail(std::string(600, 'x'));
  EXPECT_TRUE(error_is_pending());
  EXPECT_EQ(take_error(), std::string(511, 'x'));
}

TEST_F(RoutineTest, AnErrorOfTheRuntimeEndsARoutineToo) {
  qor_err_set("from the runtime", 1);
  EXPECT_EQ(run(three_passes()), 0.0);
  EXPECT_LE(host().commands, 1) << "nothing follows the first poll";
  EXPECT_EQ(take_error(), "from the runtime");
}

TEST_F(RoutineTest, RoutinesThatOnlyComputeGiveTheirZeroWhileAnErrorIsPending) {
  put(14, 9);
  SCORE = 1;
  qor_err_set("older", 1);
  EXPECT_EQ(run(TORQUE()), 0.0);
  EXPECT_EQ(run(HS_RANK(1)), 0.0);
  EXPECT_EQ(run(PIECE_POINTS(1)), 0.0);
  EXPECT_EQ(run(PU_LABEL$(8)), nullptr);
  EXPECT_EQ(run(ENTER_CHAR$(3)), nullptr);
  EXPECT_EQ(run(COLOR_FOR(1)), Color());
  const Array row = numbers({0, 1});
  EXPECT_EQ(__lambda_0(qor_slot_of(row.get()).f64), 0.0);
  EXPECT_EQ(take_error(), "older");

  EXPECT_EQ(run(TORQUE()), 4.5);
  EXPECT_EQ(run(PIECE_POINTS(1)), 10.0);
  EXPECT_EQ(run(COLOR_FOR(1)), (Color{90, 210, 230}));
}

TEST_F(RoutineTest, EveryCommandIsPolledBeforeTheNext) {
  static_cast<void>(command::cls());
  static_cast<void>(command::cls());
  ASSERT_EQ(host().faults.size(), 1U) << "the recording host must notice";
  host().faults.clear();
  error_is_pending();
}

Out<bool> both(const char* first, const char* second) {
  ENTER();
  return TRY(command::key_state(first)) != 0.0 && TRY(command::key_state(second)) != 0.0;
}

TEST_F(RoutineTest, TheSecondOfTwoConditionsIsAskedOnlyWhenTheFirstHolds) {
  EXPECT_FALSE(run(both("A", "B")));
  EXPECT_TRUE(same(new_trace(), {R"(GFX.KEYSTATE "A")"}));
  host().keys = {"A", "B"};
  EXPECT_TRUE(run(both("A", "B")));
  EXPECT_TRUE(same(new_trace(), {R"(GFX.KEYSTATE "A")", R"(GFX.KEYSTATE "B")"}));
}

Out<> fail_within_a_scope() {
  ENTER();
  FrameScope scope;
  scope.next_pass();
  DO(command::cls());
  return {};
}

TEST_F(RoutineTest, AFrameScopeIsLeftOpenOnTheErrorPath) {
  host().fail_name = "CLS";
  run(fail_within_a_scope());
  EXPECT_EQ(host().open_frames, 1) << "its end could end the program before the error is told";
  EXPECT_EQ(host().frames, 2);
  EXPECT_EQ(take_error(), "CLS: failed on command");
}

// ---- division by zero ---------------------------------------------------------------------------

TEST_F(RoutineDeathTest, ARemainderByZeroEndsTheProgramAtOnce) {
  EXPECT_EXIT(remainder_of(7, 0), ::testing::ExitedWithCode(1),
              "^Unhandled exception: Division by zero\n$");
}

TEST_F(RoutineDeathTest, ADivisionByZeroEndsTheProgramAtOnce) {
  EXPECT_EXIT(divisor(0), ::testing::ExitedWithCode(1),
              "^Unhandled exception: Division by zero\n$");
}

TEST_F(RoutineDeathTest, AFrameOfABoardWithoutRowsEndsTheProgram) {
  ROWS = 0;
  EXPECT_EXIT(run(DRAW()), ::testing::ExitedWithCode(1),
              "^Unhandled exception: Division by zero\n$");
}

TEST_F(RoutineTest, OtherDivisorsDivide) {
  EXPECT_EQ(remainder_of(-7, 3), -1);
  EXPECT_EQ(divisor(3), 3.0);
  EXPECT_EQ(qor_err_code(), 0);
}

} // namespace
} // namespace kavo::test
