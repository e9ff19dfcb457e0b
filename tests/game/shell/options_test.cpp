#include <cmath>

#include "game/audio/sounds.h"
#include "game/presentation/options.h"
#include "game/presentation/sky.h"
#include "game/shell/options.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

const Trace music_on = {"SOUND.GAIN i0 f0.55", "SOUND.GAIN i1 f0.6"};
const Trace music_off = {"SOUND.GAIN i0 f0", "SOUND.GAIN i1 f0"};

class OptionsTest : public GameTest {
protected:
  // The screen, with its two rows as given.
  static Trace expected_screen(const Trace& music, const Trace& sound) {
    start_afresh();
    run(DRAWSKY());
    const Trace sky = drawn();
    return joined(
        {{"CLS", "DRAWCOLOR 12 26 44", "RECT 0 0 660 800 1"},
         sky,
         {"DRAWCOLOR 245 245 255", R"(TEXT 150 150 "OPTIONEN")"},
         music,
         sound,
         {"DRAWCOLOR 160 175 190", R"(TEXT 90 380 "Hoch/Runter waehlen, Enter umschalten")",
          R"(TEXT 90 410 "ESC = zurueck")"}});
  }
};

TEST_F(OptionsTest, UpAndDownBothChangeTheRow) {
  run(UPDATEOPTIONS(1, 0, 0, 0));
  EXPECT_EQ(OPTSEL, 1);
  run(UPDATEOPTIONS(1, 0, 0, 0));
  EXPECT_EQ(OPTSEL, 0);
  run(UPDATEOPTIONS(0, 1, 0, 0));
  EXPECT_EQ(OPTSEL, 1);
  run(UPDATEOPTIONS(0, 1, 0, 0));
  EXPECT_EQ(OPTSEL, 0);
}

TEST_F(OptionsTest, UpAndDownTogetherChangeTheRowOnce) {
  run(UPDATEOPTIONS(1, 1, 0, 0));
  EXPECT_EQ(OPTSEL, 1);
}

TEST_F(OptionsTest, EnterOnTheMusicRowSwitchesTheMusicOffAndOn) {
  run(UPDATEOPTIONS(0, 0, 1, 0));
  EXPECT_EQ(MUSICON, 0);
  EXPECT_TRUE(same(new_trace(), music_off));
  run(UPDATEOPTIONS(0, 0, 1, 0));
  EXPECT_EQ(MUSICON, 1);
  EXPECT_TRUE(same(new_trace(), music_on));
  EXPECT_EQ(SFXON, 1);
}

TEST_F(OptionsTest, AMusicSwitchOfAnyOtherValueBecomesOff) {
  MUSICON = 7;
  run(UPDATEOPTIONS(0, 0, 1, 0));
  EXPECT_EQ(MUSICON, 0);
}

TEST_F(OptionsTest, EnterOnTheSoundRowSwitchesTheEffectsAndSendsNothing) {
  OPTSEL = 1;
  run(UPDATEOPTIONS(0, 0, 1, 0));
  EXPECT_EQ(SFXON, 0);
  run(UPDATEOPTIONS(0, 0, 1, 0));
  EXPECT_EQ(SFXON, 1);
  EXPECT_EQ(MUSICON, 1);
  EXPECT_TRUE(same(new_trace(), {}));
}

TEST_F(OptionsTest, EnterActsOnTheRowSelectedInTheSameFrame) {
  run(UPDATEOPTIONS(0, 1, 1, 0));
  EXPECT_EQ(SFXON, 0);
  EXPECT_EQ(MUSICON, 1);
}

TEST_F(OptionsTest, EscapeReturnsToTheTitle) {
  enter_state("options");
  run(UPDATEOPTIONS(0, 0, 0, 1));
  EXPECT_TRUE(state_is("title"));
}

TEST_F(OptionsTest, OneFrameMaySwitchToggleAndLeave) {
  enter_state("options");
  run(UPDATEOPTIONS(1, 0, 1, 1));
  EXPECT_EQ(OPTSEL, 1);
  EXPECT_EQ(SFXON, 0);
  EXPECT_TRUE(state_is("title"));
}

TEST_F(OptionsTest, WithoutInputNothingChanges) {
  enter_state("options");
  const double nan = std::nan("");
  run(UPDATEOPTIONS(0, 0, 0, 0));
  run(UPDATEOPTIONS(nan, nan, nan, nan));
  EXPECT_EQ(OPTSEL, 0);
  EXPECT_EQ(MUSICON, 1);
  EXPECT_EQ(SFXON, 1);
  EXPECT_TRUE(state_is("options"));
  EXPECT_TRUE(same(new_trace(), {}));
}

TEST_F(OptionsTest, TheScreenShowsBothSwitchesOnAndTheMusicRowSelected) {
  const Trace expected = expected_screen({"DRAWCOLOR 250 230 120", R"(TEXT 130 250 "Musik:  an")"},
                                         {"DRAWCOLOR 200 210 220", R"(TEXT 130 290 "Sound:  an")"});
  run(DRAWOPTIONS());
  EXPECT_TRUE(same(drawn(), expected));
}

TEST_F(OptionsTest, TheSelectedRowIsBright) {
  const Trace expected = expected_screen({"DRAWCOLOR 200 210 220", R"(TEXT 130 250 "Musik:  an")"},
                                         {"DRAWCOLOR 250 230 120", R"(TEXT 130 290 "Sound:  an")"});
  OPTSEL = 1;
  run(DRAWOPTIONS());
  EXPECT_TRUE(same(drawn(), expected));
}

TEST_F(OptionsTest, WithTheMusicOffItsRowReadsAus) {
  MUSICON = 0;
  run(DRAWOPTIONS());
  EXPECT_TRUE(contains(drawn(), R"(TEXT 130 250 "Musik:  aus")"));
}

TEST_F(OptionsTest, WithEffectsOffTheRowReadsAusAndNoEffectIsSent) {
  OPTSEL = 1;
  run(UPDATEOPTIONS(0, 0, 1, 0));
  run(DRAWOPTIONS());
  EXPECT_TRUE(contains(drawn(), R"(TEXT 130 290 "Sound:  aus")"));
  for (const auto effect : {SFXKAVO, SFXCLEAR, SFXLOCK, SFXOVER})
    run(effect());
  EXPECT_TRUE(same(new_trace(), {}));
}

TEST_F(OptionsTest, TheScreenIsNotPresentedByItself) {
  run(DRAWOPTIONS());
  EXPECT_EQ(host().count("SCREENFLIP"), 0);
}

TEST_F(OptionsTest, TextsAreSentWithANumberAndAnInteger) {
  run(DRAWOPTIONS());
  EXPECT_TRUE(contains(host().trace, R"(TEXT f150 i150 "OPTIONEN")"));
  EXPECT_TRUE(contains(host().trace, "RECT i0 i0 i660 i800 i1"));
  EXPECT_TRUE(contains(host().trace, "DRAWCOLOR i245 i245 i255"));
}

TEST_F(OptionsTest, DrawingStopsAtTheCommandThatFails) {
  EXPECT_GT(fail_each_command([] {}, [] { run(DRAWOPTIONS()); }), 0);
}

TEST_F(OptionsTest, AFailedGainStopsBeforeTheNextAndBeforeLeaving) {
  enter_state("options");
  host().fail_name = "SOUND.GAIN";
  run(UPDATEOPTIONS(0, 0, 1, 1));
  EXPECT_EQ(take_error(), "SOUND.GAIN: failed on command");
  EXPECT_EQ(host().commands, 1);
  EXPECT_TRUE(state_is("options"));
}

} // namespace
} // namespace kavo::test
