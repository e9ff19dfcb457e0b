// The pending error and the recursion guard.
#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "runtime/error.h"
#include "runtime/guard.h"
#include "tests/runtime/values.h"

namespace {

class ErrorState : public testing::Test {
protected:
  void SetUp() override {
    qor_err_clear();
    qor_recursion_reset_to(0);
  }
  void TearDown() override {
    qor_err_clear();
    qor_recursion_reset_to(0);
  }
};

TEST_F(ErrorState, StartsEmpty) {
  EXPECT_EQ(qor_err_code(), 0);
  EXPECT_EQ(qor_err_code_visible(), 0);
  EXPECT_EQ(kavo::test::take(qor_err_msg()), "");
}

TEST_F(ErrorState, SettingAnErrorMakesItPendingAndLast) {
  qor_err_set("disk full", 7);
  EXPECT_EQ(qor_err_code(), 7);
  EXPECT_EQ(qor_err_code_visible(), 7);
  EXPECT_EQ(kavo::test::take(qor_err_msg()), "disk full");
}

TEST_F(ErrorState, DismissingKeepsTheLastCodeAndTheText) {
  qor_err_set("disk full", 1);
  qor_err_code_clear();
  EXPECT_EQ(qor_err_code(), 0);
  EXPECT_EQ(qor_err_code_visible(), 1);
  EXPECT_EQ(kavo::test::take(qor_err_msg()), "disk full");
}

TEST_F(ErrorState, ClearingForgetsEverything) {
  qor_err_set("disk full", 1);
  qor_err_clear();
  EXPECT_EQ(qor_err_code_visible(), 0);
  EXPECT_EQ(kavo::test::take(qor_err_msg()), "");
}

TEST_F(ErrorState, ANullMessageEmptiesTheTextsButSetsTheCode) {
  qor_err_set("disk full", 1);
  qor_err_set(nullptr, 3);
  EXPECT_EQ(qor_err_code(), 3);
  EXPECT_EQ(kavo::test::take(qor_err_msg()), "");
}

TEST_F(ErrorState, AMessageIsCutTo511Bytes) {
  qor_err_set(std::string(600, 'x').c_str(), 1);
  EXPECT_EQ(kavo::test::take(qor_err_msg()), std::string(511, 'x'));
}

TEST_F(ErrorState, AMessageOf511BytesIsKeptWhole) {
  qor_err_set(std::string(511, 'x').c_str(), 1);
  EXPECT_EQ(kavo::test::take(qor_err_msg()), std::string(511, 'x'));
}

TEST_F(ErrorState, AnUncaughtErrorEndsTheProcessWithItsMessage) {
  EXPECT_EXIT(
      {
        qor_err_set("disk full", 1);
        qor_throw_uncaught();
      },
      testing::ExitedWithCode(1), "^Unhandled exception: disk full\n$");
}

using Guard = ErrorState;

TEST_F(Guard, EntersAtDepth255AndRefusesAtDepth256) {
  qor_recursion_reset_to(255);
  EXPECT_EQ(qor_recursion_enter(), 0);
  EXPECT_EQ(qor_recursion_depth(), 256);
  EXPECT_EQ(qor_err_code(), 0);
  EXPECT_EQ(qor_recursion_enter(), 1);
  EXPECT_EQ(qor_recursion_depth(), 256);
  EXPECT_EQ(qor_err_code(), 1);
  EXPECT_EQ(qor_err_code_visible(), 1);
  EXPECT_EQ(kavo::test::take(qor_err_msg()), "Stack overflow: recursion too deep");
}

TEST_F(Guard, LeavingLowersTheDepth) {
  qor_recursion_enter();
  qor_recursion_enter();
  qor_recursion_leave();
  EXPECT_EQ(qor_recursion_depth(), 1);
}

TEST_F(Guard, LeavingAtDepthZeroKeepsZero) {
  qor_recursion_leave();
  EXPECT_EQ(qor_recursion_depth(), 0);
}

TEST_F(Guard, ResettingToANegativeDepthIsIgnored) {
  qor_recursion_reset_to(5);
  qor_recursion_reset_to(-1);
  EXPECT_EQ(qor_recursion_depth(), 5);
}

TEST_F(Guard, EveryThreadHasItsOwnDepth) {
  qor_recursion_enter();
  int64_t other_depth = -1;
  std::thread([&other_depth] { other_depth = qor_recursion_depth(); }).join();
  EXPECT_EQ(other_depth, 0);
  EXPECT_EQ(qor_recursion_depth(), 1);
}

} // namespace
