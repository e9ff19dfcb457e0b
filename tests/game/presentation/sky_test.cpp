#include <cmath>

#include "game/presentation/sky.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

constexpr size_t sun_lines = 53;
constexpr size_t cloud_commands = 4;

class SkyTest : public GameTest {
protected:
  // The left edges of both clouds at a moment of the clock.
  static Trace clouds_at(double now_ms) {
    clock().now_ms = now_ms;
    run(DRAWSKY());
    const Trace trace = drawn();
    return {trace[1 + sun_lines + 1], trace[1 + sun_lines + cloud_commands + 1]};
  }
};

TEST_F(SkyTest, TheSkyIsSunTwoCloudsAndFortyStars) {
  run(DRAWSKY());
  EXPECT_EQ(new_trace().size(), 1 + sun_lines + 2 * cloud_commands + 80);
}

TEST_F(SkyTest, TheSunIsADiscOfFiftyThreeLines) {
  run(DRAWSKY());
  const Trace trace = drawn();
  EXPECT_EQ(trace[0], "DRAWCOLOR 232 230 200");
  for (int i = -26; i <= 26; ++i) {
    const double half = std::trunc(std::sqrt(676.0 - i * i));
    EXPECT_EQ(trace[static_cast<size_t>(i + 27)],
              command_line("LINE", {568 - half, 66.0 + i, 568 + half, 66.0 + i}));
  }
  EXPECT_EQ(trace[1], "LINE 568 40 568 40");
  EXPECT_EQ(trace[27], "LINE 542 66 594 66");
}

TEST_F(SkyTest, ACloudIsThreeRectangles) {
  run(DRAWCLOUD(100, 48));
  EXPECT_TRUE(same(drawn(), {"DRAWCOLOR 38 48 70", "RECT 100 48 64 16 1", "RECT 122 38 52 18 1",
                             "RECT 148 50 52 14 1"}));
}

TEST_F(SkyTest, AtTickZeroBothCloudsAreLeftOfTheScreen) {
  EXPECT_TRUE(same(clouds_at(0), {"RECT -180 48 64 16 1", "RECT -220 104 64 16 1"}));
}

TEST_F(SkyTest, TheFirstCloudIsBackAfterEightHundredAndSixtySteps) {
  EXPECT_EQ(clouds_at(60.0 * 859 + 59)[0], "RECT 679 48 64 16 1");
  EXPECT_EQ(clouds_at(60.0 * 860)[0], "RECT -180 48 64 16 1");
}

TEST_F(SkyTest, TheSecondCloudIsBackAfterNineHundredSteps) {
  EXPECT_EQ(clouds_at(90.0 * 899 + 89)[1], "RECT 679 104 64 16 1");
  EXPECT_EQ(clouds_at(90.0 * 900)[1], "RECT -220 104 64 16 1");
}

TEST_F(SkyTest, TheCloudsMoveOnePixelInSixtyAndInNinetyMilliseconds) {
  EXPECT_TRUE(same(clouds_at(59), {"RECT -180 48 64 16 1", "RECT -220 104 64 16 1"}));
  EXPECT_TRUE(same(clouds_at(60), {"RECT -179 48 64 16 1", "RECT -220 104 64 16 1"}));
  EXPECT_TRUE(same(clouds_at(90), {"RECT -179 48 64 16 1", "RECT -219 104 64 16 1"}));
}

TEST_F(SkyTest, EachStarTwinklesInItsOwnPhaseAtItsOwnPlace) {
  clock().now_ms = 1234;
  for (int64_t star = 0; star < NBG; ++star) {
    qor_array_set(BGSTAR_X.get(), star, static_cast<double>(10 * star));
    qor_array_set(BGSTAR_Y.get(), star, static_cast<double>(2 * star));
  }
  run(DRAWSKY());
  const Trace trace = drawn();
  size_t line = 1 + sun_lines + 2 * cloud_commands;
  for (int star = 0; star < 40; ++star, line += 2) {
    const double bright = std::trunc((std::sin(1234.0 / 280 + star) + 1) * 0.5 * 140 + 90);
    EXPECT_EQ(trace[line], command_line("DRAWCOLOR", {bright, bright, std::trunc(0.8 * bright)}));
    EXPECT_EQ(trace[line + 1], command_line("RECT", {10.0 * star, 2.0 * star, 2, 2, 1}));
  }
}

TEST_F(SkyTest, AtTickZeroTheFirstStarIsHalfBright) {
  run(DRAWSKY());
  EXPECT_EQ(drawn()[1 + sun_lines + 2 * cloud_commands], "DRAWCOLOR 160 160 128");
}

TEST_F(SkyTest, EveryCloudAndEveryStarReadsTheClockAnew) {
  clock().step_ms = 1;
  run(DRAWSKY());
  EXPECT_EQ(clock().now_ms, 2 + 40);
}

TEST_F(SkyTest, LinesAreSentAsFourDoubles) {
  run(DRAWSKY());
  EXPECT_EQ(new_trace()[1], "LINE f568 f40 f568 f40");
}

TEST_F(SkyTest, TheSkyIsNotPresentedByItself) {
  run(DRAWSKY());
  EXPECT_EQ(host().count("SCREENFLIP"), 0);
}

TEST_F(SkyTest, DrawingStopsAtTheCommandThatFails) {
  EXPECT_EQ(fail_each_command([] {}, [] { run(DRAWSKY()); }), 142);
}

} // namespace
} // namespace kavo::test
