// The pools of short-lived effects: how they fill, age, draw and end.
#include <cmath>

#include "game/presentation/effects.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class EffectsTest : public GameTest {
protected:
  static Trace frame_of(Out<> (*draw)()) {
    new_trace();
    run(draw());
    return drawn();
  }
};

double in(const Array& pool, int64_t slot) {
  return qor_array_get(pool.get(), slot);
}

int64_t live(const Array& lives, int64_t count) {
  int64_t result = 0;
  for (int64_t slot = 0; slot < count; ++slot)
    result += in(lives, slot) > 0 ? 1 : 0;
  return result;
}

// ---- bursts
// --------------------------------------------------------------------------------------

TEST_F(EffectsTest, ABurstOfLessThanOneSpawnsNothing) {
  run(BURST(0, 0, 0.9, 2, 1, 2, 3));
  run(BURST(0, 0, -3, 2, 1, 2, 3));
  EXPECT_EQ(live(PAR_LIFE, NPART), 0);
  EXPECT_EQ(host().draws, 0);
}

TEST_F(EffectsTest, ABurstOfFiveAndAFractionSpawnsFiveWithFifteenDraws) {
  run(BURST(0, 0, 5.7, 2, 1, 2, 3));
  EXPECT_EQ(live(PAR_LIFE, NPART), 5);
  EXPECT_TRUE(same(new_trace(), Trace(15, "RND i1")));
}

TEST_F(EffectsTest, AParticleTakesAngleSpeedAndLifeFromChanceInThisOrder) {
  host().chance = {0.25, 0.5, 0.75};
  run(BURST(100, 200, 1, 2, 10, 20, 30));
  const double angle = 0.25 * 6.2832;
  EXPECT_EQ(in(PAR_X, 0), 100);
  EXPECT_EQ(in(PAR_Y, 0), 200);
  EXPECT_DOUBLE_EQ(in(PAR_VX, 0), 1.8 * std::cos(angle));
  EXPECT_DOUBLE_EQ(in(PAR_VY, 0), 1.8 * std::sin(angle) - 1.2);
  EXPECT_EQ(in(PAR_LIFE, 0), 32);
  EXPECT_EQ(in(PAR_R, 0), 10);
  EXPECT_EQ(in(PAR_G, 0), 20);
  EXPECT_EQ(in(PAR_B, 0), 30);
}

TEST_F(EffectsTest, LivesGoFromTwentyTwoToThirtyFive) {
  host().chance = {0, 0, 0, 0, 0, 0.9999};
  run(BURST(0, 0, 2, 1, 0, 0, 0));
  EXPECT_EQ(in(PAR_LIFE, 0), 22);
  EXPECT_EQ(in(PAR_LIFE, 1), 35);
}

TEST_F(EffectsTest, TheSlowestParticleHasFourTenthsOfTheSpeed) {
  host().chance = {0, 0, 0};
  run(BURST(0, 0, 1, 10, 0, 0, 0));
  EXPECT_DOUBLE_EQ(in(PAR_VX, 0), 4);
  EXPECT_DOUBLE_EQ(in(PAR_VY, 0), -1.2);
}

TEST_F(EffectsTest, AFullPoolDropsABurstAndItsParticlesContinueUndisturbed) {
  for (int particle = 0; particle < NPART; ++particle)
    run(ADDPART(particle, 2, 3, 4, 10, 6, 7, 8));
  EXPECT_EQ(live(PAR_LIFE, NPART), 140);
  run(BURST(999, 999, 5, 2, 1, 1, 1));
  EXPECT_EQ(host().draws, 15);
  for (int particle = 0; particle < NPART; ++particle) {
    EXPECT_EQ(in(PAR_X, particle), particle);
    EXPECT_EQ(in(PAR_LIFE, particle), 10);
  }
}

TEST_F(EffectsTest, ABurstStopsAtTheDrawThatFails) {
  EXPECT_EQ(fail_each_command([] {}, [] { run(BURST(0, 0, 3, 2, 1, 1, 1)); }), 9);
}

// ---- particles
// -----------------------------------------------------------------------------------

TEST_F(EffectsTest, AParticleTakesTheFirstFreeSlot) {
  for (int particle = 0; particle < 3; ++particle)
    run(ADDPART(particle, 0, 0, 0, 10, 0, 0, 0));
  qor_array_set(PAR_LIFE.get(), 1, 0);
  run(ADDPART(50, 0, 0, 0, 10, 0, 0, 0));
  EXPECT_EQ(in(PAR_X, 1), 50);
  EXPECT_EQ(in(PAR_X, 3), 0);
}

TEST_F(EffectsTest, AParticleMovesThenFallsThenIsDrawn) {
  run(ADDPART(100, 200, 1.5, -2.5, 22, 250, 250, 200));
  EXPECT_TRUE(same(frame_of(draw_particles), {"DRAWCOLOR 250 250 200", "RECT 101 197 3 3 1"}));
  EXPECT_DOUBLE_EQ(in(PAR_X, 0), 101.5);
  EXPECT_DOUBLE_EQ(in(PAR_Y, 0), 197.5);
  EXPECT_DOUBLE_EQ(in(PAR_VY, 0), -2.32);
  EXPECT_EQ(in(PAR_LIFE, 0), 21);
  EXPECT_TRUE(same(frame_of(draw_particles), {"DRAWCOLOR 250 250 200", "RECT 103 195 3 3 1"}));
}

TEST_F(EffectsTest, AKickedParticleRisesForSevenFramesAndFallsFromTheEighth) {
  run(ADDPART(0, 100, 0, -1.2, 30, 0, 0, 0));
  for (int frame = 1; frame <= 10; ++frame) {
    const double before = in(PAR_Y, 0);
    run(draw_particles());
    EXPECT_NEAR(in(PAR_Y, 0) - before, -1.2 + 0.18 * (frame - 1), 1e-9);
    EXPECT_EQ(in(PAR_Y, 0) < before, frame <= 7) << frame;
  }
}

TEST_F(EffectsTest, AParticleIsDrawnAsManyTimesAsItHasLives) {
  run(ADDPART(0, 0, 0, 0, 3, 0, 0, 0));
  for (int frame = 0; frame < 3; ++frame)
    EXPECT_EQ(frame_of(draw_particles).size(), 2);
  EXPECT_TRUE(same(frame_of(draw_particles), {}));
}

TEST_F(EffectsTest, ParticlesAreDrawnInTheOrderOfTheirSlots) {
  run(ADDPART(10, 0, 0, 0, 9, 0, 0, 0));
  run(ADDPART(20, 0, 0, 0, 9, 0, 0, 0));
  EXPECT_TRUE(same(only("RECT", frame_of(draw_particles)), {"RECT 10 0 3 3 1", "RECT 20 0 3 3 1"}));
}

// ---- popups
// --------------------------------------------------------------------------------------

TEST_F(EffectsTest, APopupOfTwoHundredIsGoldAndStartsAlmostFresh) {
  run(ADDPOPUP(100, 200, 200));
  const double fresh = 54.0 / 55.0;
  EXPECT_TRUE(same(
      frame_of(draw_popups),
      {command_line("DRAWCOLOR", {std::trunc(135 * fresh + 120), std::trunc(125 * fresh + 90), 40}),
       R"(TEXT 100 198 "+200")"}));
  EXPECT_EQ(in(POP_LIFE, 0), 54);
}

TEST_F(EffectsTest, APopupOfOneHundredNinetyNineIsYellow) {
  run(ADDPOPUP(100, 200, 199));
  const double pale = std::trunc(175 * 54.0 / 55.0 + 80);
  EXPECT_TRUE(same(frame_of(draw_popups),
                   {command_line("DRAWCOLOR", {pale, pale, 90}), R"(TEXT 100 198 "+199")"}));
}

TEST_F(EffectsTest, APopupIsDrawnFiftyFiveTimesTheLastTimeAtItsDarkest) {
  run(ADDPOPUP(100, 200.5, 50));
  for (int frame = 1; frame < 55; ++frame)
    EXPECT_EQ(frame_of(draw_popups).size(), 2);
  EXPECT_TRUE(same(frame_of(draw_popups), {"DRAWCOLOR 80 80 90", R"(TEXT 100 123 "+50")"}));
  EXPECT_NEAR(in(POP_Y, 0), 200.5 - 55 * 1.4, 1e-9);
  EXPECT_TRUE(same(frame_of(draw_popups), {}));
}

TEST_F(EffectsTest, APopupsPlaceAndValueAreCut) {
  run(ADDPOPUP(100.9, 201.3, 25.9));
  EXPECT_EQ(frame_of(draw_popups)[1], R"(TEXT 100 199 "+25")");
}

TEST_F(EffectsTest, APopupTakesTheFirstFreeSlotAndTheSeventeenthIsDropped) {
  for (int popup = 0; popup < 17; ++popup)
    run(ADDPOPUP(popup, 0, 10));
  EXPECT_EQ(live(POP_LIFE, NPOP), 16);
  EXPECT_EQ(in(POP_X, 0), 0);
  EXPECT_EQ(in(POP_X, 15), 15);
  qor_array_set(POP_LIFE.get(), 4, 0);
  run(ADDPOPUP(99, 0, 10));
  EXPECT_EQ(in(POP_X, 4), 99);
}

// ---- streaks
// -------------------------------------------------------------------------------------

TEST_F(EffectsTest, AStreakFadesOverEightFrames) {
  run(ADDSTREAK(168, 80, 548));
  for (int life = 8; life >= 1; --life) {
    const double bright = 120 + 15 * life;
    EXPECT_TRUE(same(frame_of(draw_streaks),
                     {command_line("DRAWCOLOR", {bright, bright, 170}), "LINE 168 80 168 548"}));
  }
  EXPECT_TRUE(same(frame_of(draw_streaks), {}));
}

TEST_F(EffectsTest, TheNinthStreakIsDropped) {
  for (int streak = 0; streak < 9; ++streak)
    run(ADDSTREAK(streak, 0, 1));
  EXPECT_EQ(live(STR_LIFE, NSTREAK), 8);
  EXPECT_EQ(in(STR_X, 7), 7);
  EXPECT_EQ(in(STR_X, 0), 0);
}

// ---- shock square
// --------------------------------------------------------------------------------

TEST_F(EffectsTest, TheShockSquareGrowsFromTwentyTwoToThreeHundredFiftyTwoPixels) {
  SHOCKLIFE = 16;
  SHOCKX = 330;
  SHOCKY = 350;
  for (int frame = 1; frame <= 16; ++frame) {
    const double half = 11 * frame;
    EXPECT_TRUE(same(frame_of(draw_shock_square),
                     {"DRAWCOLOR 255 180 80",
                      command_line("RECT", {330 - half, 350 - half, 2 * half, 2 * half, 0})}));
    EXPECT_EQ(SHOCKLIFE, 16 - frame);
  }
  EXPECT_TRUE(same(frame_of(draw_shock_square), {}));
  EXPECT_EQ(SHOCKLIFE, 0);
}

// ---- rain and lightning
// --------------------------------------------------------------------------

TEST_F(EffectsTest, RainIsTwentyFiveSlantedDrops) {
  clock().now_ms = 1000;
  const Trace rain = frame_of(draw_rain);
  ASSERT_EQ(rain.size(), 26);
  EXPECT_EQ(rain[0], "DRAWCOLOR 120 140 180");
  for (int drop = 0; drop < 25; ++drop) {
    const double x = (500 + 53 * drop) % 660;
    const double y = (6000 + 80 * drop) % 800;
    EXPECT_EQ(rain[static_cast<size_t>(drop + 1)], command_line("LINE", {x, y, x - 3, y + 12}));
  }
}

TEST_F(EffectsTest, EachCoordinateOfADropReadsTheClockAnew) {
  clock().step_ms = 1;
  run(draw_rain());
  EXPECT_EQ(clock().now_ms, 50);
}

TEST_F(EffectsTest, LightningStartsBelowTwoInAHundred) {
  host().chance = {0.0199, 0.999};
  run(maybe_start_lightning());
  EXPECT_EQ(LIGHTNING, 3);
  EXPECT_EQ(BOLTX, 579);
  EXPECT_TRUE(same(new_trace(), {"RND i1", "RND i1"}));
}

TEST_F(EffectsTest, TheLeftmostBoltStartsAtEighty) {
  host().chance = {0.0, 0.0};
  run(maybe_start_lightning());
  EXPECT_EQ(BOLTX, 80);
}

TEST_F(EffectsTest, LightningDoesNotStartFromTwoInAHundredOn) {
  host().chance = {0.02};
  run(maybe_start_lightning());
  EXPECT_EQ(LIGHTNING, 0);
  EXPECT_EQ(host().draws, 1);
}

TEST_F(EffectsTest, WhileABoltIsLitNoneIsDrawnFromChance) {
  LIGHTNING = 1;
  run(maybe_start_lightning());
  EXPECT_EQ(host().draws, 0);
}

TEST_F(EffectsTest, ABoltIsSixBentSegmentsDownToThreeHundredThirty) {
  LIGHTNING = 3;
  BOLTX = 300;
  host().chance = {0.0, 0.999, 0.5, 0.5, 0.5, 0.25};
  EXPECT_TRUE(same(frame_of(draw_lightning), {
                                                 "DRAWCOLOR 235 240 255",
                                                 "RND 1",
                                                 "LINE 300 0 278 55",
                                                 "RND 1",
                                                 "LINE 278 55 299 110",
                                                 "RND 1",
                                                 "LINE 299 110 299 165",
                                                 "RND 1",
                                                 "LINE 299 165 299 220",
                                                 "RND 1",
                                                 "LINE 299 220 299 275",
                                                 "RND 1",
                                                 "LINE 299 275 288 330",
                                             }));
  EXPECT_EQ(LIGHTNING, 2);
  EXPECT_EQ(BOLTX, 300);
}

TEST_F(EffectsTest, ABoltLastsThreeFrames) {
  LIGHTNING = 3;
  for (int frame = 0; frame < 3; ++frame)
    EXPECT_EQ(frame_of(draw_lightning).size(), 13);
  EXPECT_TRUE(same(frame_of(draw_lightning), {}));
  EXPECT_EQ(LIGHTNING, 0);
}

TEST_F(EffectsTest, AgeingStopsAtTheCommandThatFails) {
  run(ADDPOPUP(0, 0, 1));
  run(ADDPOPUP(0, 0, 2));
  host().fail_at = 2;
  run(draw_popups());
  EXPECT_EQ(take_error(), "TEXT: failed on command");
  EXPECT_EQ(in(POP_LIFE, 0), 54);
  EXPECT_EQ(in(POP_LIFE, 1), 55);
}

} // namespace
} // namespace kavo::test
