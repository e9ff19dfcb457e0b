// What the sound commands accept and refuse, as a program sends them.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/host/bridge.h"

namespace {

using kavo::test::Bridge;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class SoundCommands : public testing::Test {
protected:
  Bridge bridge;
};

TEST_F(SoundCommands, AcceptTheGamesOwnSetUp) {
  EXPECT_EQ(bridge.error_of("SOUND.INIT"), "");
  EXPECT_EQ(bridge.error_of("SOUND.BPM", 125), "");
  EXPECT_EQ(bridge.error_of("SOUND.VOICE", 0, "SQUARE", 0.01, 0.15, 0.3, 0.25), "");
  EXPECT_EQ(bridge.error_of("SOUND.VOICE", 1, "SAW", 0.005, 0.08, 0.5, 0.08), "");
  EXPECT_EQ(bridge.error_of("SOUND.VOICE", 3, "TRIANGLE", 0.004, 0.1, 0, 0.08), "");
  EXPECT_EQ(bridge.error_of("SOUND.VOICE", 15, "SINE", 0, 0, 1, 0), "");
  EXPECT_EQ(bridge.error_of("SOUND.FILTER", 0, 2000), "");
  EXPECT_EQ(bridge.error_of("SOUND.GAIN", 0, 0.55), "");
  EXPECT_EQ(bridge.error_of("SOUND.REVERB", 0.7, 0.3, 0.8, 0.25), "");
  EXPECT_EQ(bridge.error_of("SOUND.REVERBSEND", 0, 0.4), "");
  EXPECT_EQ(bridge.error_of("SOUND.NOTE", "< [c5 e5] , [c2 c3] >", 1), "");
  EXPECT_EQ(bridge.error_of("SOUND.PLAY", 3, "c3"), "");
  EXPECT_EQ(bridge.error_of("SOUND.SHUTDOWN"), "");
}

TEST_F(SoundCommands, HaveNoResult) {
  EXPECT_EQ(bridge.send("SOUND.INIT"), 0);
  EXPECT_EQ(bridge.send("SOUND.BPM", 125), 0);
  EXPECT_EQ(bridge.send("SOUND.VOICE", 0, "SQUARE", 0.01, 0.15, 0.3, 0.25), 0);
  EXPECT_EQ(bridge.send("SOUND.FILTER", 0, 2000), 0);
  EXPECT_EQ(bridge.send("SOUND.GAIN", 0, 0.55), 0);
  EXPECT_EQ(bridge.send("SOUND.REVERB", 0.7, 0.3, 0.8, 0.25), 0);
  EXPECT_EQ(bridge.send("SOUND.REVERBSEND", 0, 0.4), 0);
  EXPECT_EQ(bridge.send("SOUND.NOTE", "c5", 1), 0);
  EXPECT_EQ(bridge.send("SOUND.PLAY", 3, "c3"), 0);
  EXPECT_EQ(bridge.send("SOUND.SHUTDOWN"), 0);
  EXPECT_EQ(bridge.take_error(), "");
}

// Each with its position, so that no two arguments can change places.
TEST_F(SoundCommands, NameTheArgumentThatTheyRefuse) {
  const auto refuses = [](const std::string& error, const std::string& argument) {
    return error.find(": argument " + argument + " must be ") != std::string::npos;
  };
  EXPECT_PRED2(refuses, bridge.error_of("SOUND.VOICE", 0, "SAW", -1, 0, 0, 0), "3 (attack)");
  EXPECT_PRED2(refuses, bridge.error_of("SOUND.VOICE", 0, "SAW", 0, -1, 0, 0), "4 (decay)");
  EXPECT_PRED2(refuses, bridge.error_of("SOUND.VOICE", 0, "SAW", 0, 0, -1, 0), "5 (sustain)");
  EXPECT_PRED2(refuses, bridge.error_of("SOUND.VOICE", 0, "SAW", 0, 0, 0, -1), "6 (release)");
}

TEST_F(SoundCommands, RefuseAVoiceThatDoesNotExist) {
  for (const double voice : {-1.0, 16.0, nan, infinity}) {
    EXPECT_NE(bridge.error_of("SOUND.GAIN", voice, 0.5).find("SOUND.GAIN: argument 1 (voice)"),
              std::string::npos);
    EXPECT_NE(bridge.error_of("SOUND.PLAY", voice, "c3").find("argument 1 (voice)"),
              std::string::npos);
  }
  EXPECT_EQ(bridge.error_of("SOUND.FILTER", 16, 2000),
            "SOUND.FILTER: argument 1 (voice) must be a whole number from 0 to 15, got 16");
}

TEST_F(SoundCommands, RefuseAWaveformThatDoesNotExist) {
  EXPECT_EQ(bridge.error_of("SOUND.VOICE", 0, "NOISE", 0.0, 0.0, 0.0, 0.0),
            "SOUND.VOICE: argument 2 (waveform) must be SQUARE, SAW, TRIANGLE or SINE, got "
            "\"NOISE\"");
}

TEST_F(SoundCommands, RefuseTimesAndLevelsThatAreNone) {
  for (const double odd : {-0.1, nan, infinity, 1e9}) {
    for (const int place : {0, 1, 2, 3}) {
      const auto value = [&](int index) { return index == place ? odd : 0.5; };
      EXPECT_NE(bridge.error_of("SOUND.VOICE", 0, "SAW", value(0), value(1), value(2), value(3)),
                "");
      EXPECT_NE(bridge.error_of("SOUND.REVERB", value(0), value(1), value(2), value(3)), "");
    }
    EXPECT_NE(bridge.error_of("SOUND.GAIN", 0, odd), "");
    EXPECT_NE(bridge.error_of("SOUND.REVERBSEND", 0, odd), "");
    EXPECT_NE(bridge.error_of("SOUND.BPM", odd), "");
  }
}

// Zero and below, as well as what lies above hearing, switch the filter off.
TEST_F(SoundCommands, TakeAnyCutoffThatIsANumber) {
  for (const double cutoff : {-0.1, 0.0, 500.0, 1e9})
    EXPECT_EQ(bridge.error_of("SOUND.FILTER", 0, cutoff), "");
  EXPECT_EQ(bridge.error_of("SOUND.FILTER", 0, nan),
            "SOUND.FILTER: argument 2 (cutoff) must be a finite number, got nan");
  EXPECT_NE(bridge.error_of("SOUND.FILTER", 0, infinity), "");
}

TEST_F(SoundCommands, RefuseAPatternThatDoesNotParseWithItsColumn) {
  EXPECT_EQ(bridge.error_of("SOUND.NOTE", "c4 [e4", 1),
            "SOUND.NOTE: argument 1 (pattern), column 7: expected a note, ~, [, <, a modifier or "
            "\"]\", got the end");
  EXPECT_NE(bridge.error_of("SOUND.NOTE", "c4", 2), "");
}

TEST_F(SoundCommands, RefuseANoteThatIsNone) {
  for (const char* note : {"", "c", "h3", "c33", "3c", "C3", "c3 "})
    EXPECT_NE(bridge.error_of("SOUND.PLAY", 0, note).find("SOUND.PLAY: argument 2"),
              std::string::npos)
        << note;
}

} // namespace
