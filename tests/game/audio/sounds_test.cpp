#include "game/audio/sounds.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class SoundsTest : public GameTest {};

// The text between the quotes of the one command that starts the music.
std::string pattern_of(const Trace& trace) {
  const std::string& line = trace.back();
  const auto begin = line.find('"') + 1;
  return line.substr(begin, line.rfind('"') - begin);
}

int top_level_groups(std::string_view layer) {
  int depth = 0;
  int groups = 0;
  for (const char letter : layer) {
    depth += letter == '[' ? 1 : 0;
    groups += letter == '[' && depth == 1 ? 1 : 0;
    depth -= letter == ']' ? 1 : 0;
  }
  return depth == 0 ? groups : -1;
}

TEST_F(SoundsTest, TheSetUpEndsWithTheMusic) {
  run(set_up_sound());
  const Trace trace = new_trace();
  EXPECT_EQ(trace.size(), 17);
  EXPECT_TRUE(trace.back().starts_with("SOUND.NOTE \"< [c5 e5 g5 e5] "));
}

TEST_F(SoundsTest, VoiceTwoIsNeverConfigured) {
  run(set_up_sound());
  for (const std::string& line : new_trace())
    EXPECT_EQ(line.find(" i2 "), std::string::npos) << line;
}

TEST_F(SoundsTest, OnlyTheMelodyIsSentToTheReverb) {
  run(set_up_sound());
  EXPECT_TRUE(same(host().sent("SOUND.REVERBSEND"), {"SOUND.REVERBSEND i0 f0.4"}));
}

TEST_F(SoundsTest, BothLayersOfTheMusicAreEightBarsLong) {
  run(STARTMUSIC());
  const std::string pattern = pattern_of(new_trace());
  const auto comma = pattern.find(" , ");
  ASSERT_NE(comma, std::string::npos);
  EXPECT_TRUE(pattern.starts_with("< "));
  EXPECT_TRUE(pattern.ends_with(" >"));
  EXPECT_EQ(top_level_groups(pattern.substr(0, comma)), 8);
  EXPECT_EQ(top_level_groups(pattern.substr(comma)), 8);
}

TEST_F(SoundsTest, TheMusicStartsEvenWhileItIsSwitchedOff) {
  MUSICON = 0;
  run(STARTMUSIC());
  EXPECT_EQ(host().count("SOUND.NOTE"), 1);
}

TEST_F(SoundsTest, EachEffectIsOneNoteOnItsVoice) {
  run(SFXKAVO());
  run(SFXCLEAR());
  run(SFXLOCK());
  run(SFXOVER());
  EXPECT_TRUE(same(new_trace(), {
                                    R"(SOUND.PLAY i5 "c2")",
                                    R"(SOUND.PLAY i4 "g4")",
                                    R"(SOUND.PLAY i3 "c3")",
                                    R"(SOUND.PLAY i5 "c1")",
                                }));
}

TEST_F(SoundsTest, TheTipAndTheEndOfTheGameShareVoiceFive) {
  run(SFXKAVO());
  run(SFXOVER());
  for (const std::string& line : new_trace())
    EXPECT_TRUE(line.starts_with("SOUND.PLAY i5 ")) << line;
}

TEST_F(SoundsTest, WithEffectsOffNoNoteIsSentAndTheMusicIsUnaffected) {
  SFXON = 0;
  for (const auto effect : {SFXKAVO, SFXCLEAR, SFXLOCK, SFXOVER})
    run(effect());
  EXPECT_TRUE(same(new_trace(), {}));
  EXPECT_EQ(MUSICON, 1);
}

TEST_F(SoundsTest, WithTheMusicOffEffectsStillSound) {
  run(toggle_music());
  EXPECT_TRUE(same(new_trace(), {"SOUND.GAIN i0 f0", "SOUND.GAIN i1 f0"}));
  run(SFXLOCK());
  EXPECT_TRUE(same(new_trace(), {R"(SOUND.PLAY i3 "c3")"}));
}

TEST_F(SoundsTest, SwitchingBackOnRestoresTheStartUpGainsAndNothingElse) {
  MUSICON = 0;
  run(toggle_music());
  EXPECT_EQ(MUSICON, 1);
  EXPECT_TRUE(same(new_trace(), {"SOUND.GAIN i0 f0.55", "SOUND.GAIN i1 f0.6"}));
}

TEST_F(SoundsTest, TheSetUpStopsAtTheCommandThatFails) {
  EXPECT_EQ(fail_each_command([] {}, [] { run(set_up_sound()); }), 17);
}

TEST_F(SoundsTest, EveryEffectLeavesItsFailurePending) {
  for (const auto effect : {SFXKAVO, SFXCLEAR, SFXLOCK, SFXOVER})
    EXPECT_EQ(fail_each_command([] {}, [effect] { run(effect()); }), 1);
}

} // namespace
} // namespace kavo::test
