// Polling the keyboard: order, current values, edges.
#include <cmath>

#include "game/shell/input.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class InputTest : public GameTest {
protected:
  // One frame with exactly these keys held.
  static void frame_with(std::set<std::string> keys) {
    host().keys = std::move(keys);
    run(poll_keys());
    remember_keys();
  }
};

TEST_F(InputTest, BothNamesOfADirectionAreAskedForWhileNothingIsHeld) {
  run(poll_keys());
  EXPECT_TRUE(same(new_trace(), {
                                    R"(GFX.KEYSTATE "Left")",
                                    R"(GFX.KEYSTATE "A")",
                                    R"(GFX.KEYSTATE "Right")",
                                    R"(GFX.KEYSTATE "D")",
                                    R"(GFX.KEYSTATE "Up")",
                                    R"(GFX.KEYSTATE "W")",
                                    R"(GFX.KEYSTATE "Down")",
                                    R"(GFX.KEYSTATE "S")",
                                    R"(GFX.KEYSTATE "Space")",
                                    R"(GFX.KEYSTATE "Return")",
                                    R"(GFX.KEYSTATE "P")",
                                    R"(GFX.KEYSTATE "O")",
                                    R"(GFX.KEYSTATE "M")",
                                    R"(GFX.KEYSTATE "Escape")",
                                }));
}

TEST_F(InputTest, TheSecondNameIsAskedForOnlyWhenTheFirstReadsZero) {
  host().keys = {"Left", "Down"};
  run(poll_keys());
  const Trace trace = new_trace();
  EXPECT_FALSE(contains(trace, R"(GFX.KEYSTATE "A")"));
  EXPECT_TRUE(contains(trace, R"(GFX.KEYSTATE "D")"));
  EXPECT_TRUE(contains(trace, R"(GFX.KEYSTATE "W")"));
  EXPECT_FALSE(contains(trace, R"(GFX.KEYSTATE "S")"));
}

TEST_F(InputTest, EitherNameHoldsTheDirection) {
  for (const auto& [first, second, current] :
       {std::tuple("Left", "A", &KL), {"Right", "D", &KR}, {"Up", "W", &KU}, {"Down", "S", &KDN}}) {
    frame_with({first});
    EXPECT_TRUE(*current) << first;
    frame_with({});
    EXPECT_FALSE(*current) << first;
    frame_with({second});
    EXPECT_TRUE(*current) << second;
  }
}

TEST_F(InputTest, EachKeySetsItsOwnEdgeAndNoOther) {
  const std::pair<const char*, bool*> keys[] = {
      {"Left", &EL},       {"Right", &ER}, {"Up", &EU}, {"Down", &EDN}, {"Space", &ESPACE},
      {"Return", &EENTER}, {"P", &EP},     {"O", &EO},  {"M", &EMK},    {"Escape", &EESC}};
  for (const auto& [name, own] : keys) {
    frame_with({});
    frame_with({name});
    for (const auto& [other, edge] : keys)
      EXPECT_EQ(*edge, edge == own) << other << " while " << name << " is pressed";
  }
}

TEST_F(InputTest, AHeldKeyGivesOneEdge) {
  frame_with({"Space"});
  EXPECT_TRUE(ESPACE);
  frame_with({"Space"});
  EXPECT_FALSE(ESPACE);
  EXPECT_NE(KSPACE, 0);
  frame_with({});
  EXPECT_FALSE(ESPACE);
  frame_with({"Space"});
  EXPECT_TRUE(ESPACE);
}

TEST_F(InputTest, HoldingLeftAndPressingAGivesNoNewEdge) {
  frame_with({"Left"});
  frame_with({"Left", "A"});
  EXPECT_FALSE(EL);
  frame_with({"A"});
  EXPECT_FALSE(EL);
  EXPECT_TRUE(KL);
}

TEST_F(InputTest, TheOtherKeysKeepTheNumberThatTheHostReturned) {
  host().readings = {{"Space", 0.5}, {"Return", -2.0}, {"P", 3.0},
                     {"O", 4.0},     {"M", 5.0},       {"Escape", 6.0}};
  run(poll_keys());
  EXPECT_EQ(KSPACE, 0.5);
  EXPECT_EQ(KENTER, -2.0);
  EXPECT_EQ(KP, 3.0);
  EXPECT_EQ(KO, 4.0);
  EXPECT_EQ(KMK, 5.0);
  EXPECT_EQ(KESC, 6.0);
  EXPECT_TRUE(ESPACE && EENTER && EP && EO && EMK && EESC);
}

TEST_F(InputTest, ADirectionReadsOneHoweverHardItIsPressed) {
  host().readings = {{"Left", 0.25}, {"S", -7.0}};
  run(poll_keys());
  remember_keys();
  EXPECT_TRUE(KL);
  EXPECT_TRUE(KDN);
  EXPECT_EQ(PL, 1.0);
  EXPECT_EQ(PDN, 1.0);
  EXPECT_EQ(PR, 0.0);
}

TEST_F(InputTest, NotANumberCountsAsZeroNow) {
  host().readings = {{"Space", std::nan("")}, {"Left", std::nan("")}};
  run(poll_keys());
  EXPECT_FALSE(ESPACE);
  EXPECT_FALSE(KL);
  EXPECT_TRUE(contains(new_trace(), R"(GFX.KEYSTATE "A")"));
}

TEST_F(InputTest, NotANumberCountsAsZeroInThePreviousFrame) {
  host().readings = {{"Space", std::nan("")}};
  run(poll_keys());
  remember_keys();
  host().readings = {{"Space", 1.0}};
  run(poll_keys());
  EXPECT_TRUE(ESPACE);
}

TEST_F(InputTest, TheCurrentValuesBecomeThePreviousOnes) {
  frame_with({"Left", "Right", "Up", "Down", "Space", "Return", "P", "O", "M", "Escape"});
  for (const double previous : {PL, PR, PU, PDN, PSPACE, PENTER, PP, PO, PMK, PESC})
    EXPECT_EQ(previous, 1.0);
}

TEST_F(InputTest, AFailedQuestionLeavesTheEdgesOfTheLastFrame) {
  frame_with({"Left"});
  EXPECT_TRUE(EL);
  host().fail_at = host().commands + 4;
  run(poll_keys());
  EXPECT_EQ(take_error(), "GFX.KEYSTATE: failed on command");
  EXPECT_TRUE(EL);
}

TEST_F(InputTest, PollingStopsAtTheQuestionThatFails) {
  EXPECT_EQ(fail_each_command([] {}, [] { run(poll_keys()); }), 14);
}

} // namespace
} // namespace kavo::test
