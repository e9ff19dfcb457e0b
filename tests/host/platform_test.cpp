// Another place to play in, plugged in by the seam alone: where pictures go, where actions come
// from, where sound goes, what is told, how it ends.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/sound/memory_output.h"
#include "tests/fakes/stage.h"
#include "tests/host/bridge.h"
#include "tests/host/played.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

class PlatformTest : public testing::Test {
protected:
  PlatformTest() { stage() = {}; }
  ~PlatformTest() override { stage() = {}; }
};

TEST_F(PlatformTest, ReceivesEveryPictureThatIsShown) {
  std::vector<uint32_t> corners;
  stage().watch = [&](const host::Canvas& picture) { corners.push_back(picture.pixels()[0]); };
  Bridge bridge;
  bridge.send("SCREEN", 8, 4, "x", 1);
  bridge.send("SCREENFLIP");
  bridge.send("RECT", 0, 0, 1, 1, 1);
  bridge.send("SCREENFLIP");
  EXPECT_EQ(corners, (std::vector<uint32_t>{0, 0x00FFFFFF}));
}

TEST_F(PlatformTest, SendsThePlayersActions) {
  const std::string left = "Left";
  stage().play = [&](host::EventSink& sink) { sink.key_went_down(key_named(left), false); };
  Bridge bridge;
  bridge.send("SCREEN", 8, 4, "x", 1);
  EXPECT_EQ(bridge.send("GFX.KEYSTATE", "Left"), 0.0);
  bridge.send("SCREENFLIP");
  EXPECT_EQ(bridge.send("GFX.KEYSTATE", "Left"), 1.0);
  EXPECT_EQ(bridge.send("GFX.KEYSTATE", "Right"), 0.0);
}

TEST_F(PlatformTest, SaysWhatKeysMean) {
  stage().code_of_key = [](const std::string& name) {
    return name == "Any" ? std::optional(7) : std::nullopt;
  };
  stage().play = [](host::EventSink& sink) { sink.key_went_down({1, 7, "Any"}, false); };
  Bridge bridge;
  bridge.send("SCREEN", 8, 4, "x", 1);
  bridge.send("SCREENFLIP");
  EXPECT_EQ(bridge.send("GFX.KEYSTATE", "Any"), 1.0);
  EXPECT_EQ(bridge.error_of("GFX.KEYSTATE", "Left"),
            "GFX.KEYSTATE: argument 1: unknown key \"Left\"");
}

TEST_F(PlatformTest, TakesTheSound) {
  sound::MemoryOutput* output = nullptr;
  stage().make_sound_output = [&] {
    auto made = std::make_unique<sound::MemoryOutput>();
    output = made.get();
    return made;
  };
  Bridge bridge;
  bridge.send("SOUND.INIT");
  bridge.send("SOUND.VOICE", 0, "SQUARE", 0, 0.1, 0.5, 0.1);
  bridge.send("SOUND.PLAY", 0, "a4");
  ASSERT_NE(output, nullptr);
  output->render(4800);
  const auto& samples = output->interleaved();
  EXPECT_GT(*std::ranges::max_element(samples), 0.05f);
  EXPECT_TRUE(stage().told.empty());
}

TEST_F(PlatformTest, TellsThePlayerWhatIsMissing) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("SOUND.INIT"), "");
  EXPECT_EQ(stage().told, std::vector<std::string>{"no sound: there is no device here"});
}

TEST_F(PlatformTest, ShowsItsPicturesOnACalmDisplayWhenThatIsWanted) {
  const Environment calm("QORRT_CALM", "1");
  uint32_t corner = 0;
  stage().watch = [&](const host::Canvas& picture) { corner = picture.pixels()[0] & 0xFFU; };
  Bridge bridge;
  bridge.send("SCREEN", 8, 4, "x", 1);
  bridge.send("RECT", 0, 0, 8, 4, 1);
  bridge.send("SCREENFLIP");
  EXPECT_GT(corner, 0U);
  EXPECT_LT(corner, 0x40U);
}

// The loudest sample of a square wave, or of a pattern, with these settings.
float loudness_with(const std::string& settings, bool is_music) {
  const WorkingFolder scores;
  const TemporaryFolder folder;
  stage().settings_folder = folder.path() / "config";
  std::filesystem::create_directory(stage().settings_folder);
  write_file(stage().settings_folder / "settings.ini", settings);
  sound::MemoryOutput* output = nullptr;
  stage().make_sound_output = [&] {
    auto made = std::make_unique<sound::MemoryOutput>();
    output = made.get();
    return made;
  };
  const Played program;
  program.send("SOUND.INIT");
  program.send("SOUND.VOICE", 0, "SQUARE", 0, 0.1, 0.5, 0.1);
  if (is_music)
    program.send("SOUND.NOTE", "a4", 0);
  else
    program.send("SOUND.PLAY", 0, "a4");
  output->render(4800);
  return *std::ranges::max_element(output->interleaved());
}

TEST_F(PlatformTest, PlaysAsLoudAsThePlayerHasSetIt) {
  const float full_effects = loudness_with("", false);
  EXPECT_GT(full_effects, 0.05f);
  EXPECT_NEAR(loudness_with("[sound]\neffects = 50\n", false), full_effects / 4, 0.01f);
  EXPECT_EQ(loudness_with("[sound]\neffects = 0\n", false), 0.0f);
  EXPECT_EQ(loudness_with("[sound]\nmusic = 0\n", false), full_effects);
}

TEST_F(PlatformTest, ShowsACalmDisplayWhenThePlayerHasSetOne) {
  const WorkingFolder scores;
  const TemporaryFolder folder;
  stage().settings_folder = folder.path();
  write_file(folder / "settings.ini", "[picture]\ncalm = yes\n");
  uint32_t corner = 0;
  stage().watch = [&](const host::Canvas& picture) { corner = picture.pixels()[0] & 0xFFU; };
  for (const char* environment : {static_cast<const char*>(nullptr), "0"}) {
    const Environment calm("QORRT_CALM", environment);
    const Played program;
    program.send("SCREEN", 8, 4, "x", 1);
    program.send("RECT", 0, 0, 8, 4, 1);
    program.send("SCREENFLIP");
    EXPECT_EQ(corner == 0xFFU, environment != nullptr) << corner;
  }
}

TEST_F(PlatformTest, TellsWhatIsWrongWithTheSettings) {
  const WorkingFolder scores;
  const TemporaryFolder folder;
  stage().settings_folder = folder.path();
  write_file(folder / "settings.ini", "[sound]\nmusic = loud\n");
  const Played program;
  ASSERT_EQ(stage().told.size(), 1U);
  EXPECT_NE(stage().told[0].find("sound.music must be a whole number from 0 to 100"),
            std::string::npos);
}

TEST_F(PlatformTest, KeepsNoSettingsOfWhatNobodyPlays) {
  const WorkingFolder scores;
  const TemporaryFolder folder;
  stage().settings_folder = folder.path() / "config";
  {
    const Bridge bridge;
    const Played scene({"kavo", "shot", "title"});
  }
  EXPECT_FALSE(std::filesystem::exists(stage().settings_folder));
  { const Played program; }
  EXPECT_TRUE(std::filesystem::exists(stage().settings_folder));
}

TEST_F(PlatformTest, EndsTheProgramInItsOwnWay) {
  EXPECT_EXIT(
      {
        stage().play = [](host::EventSink& sink) { sink.close_was_asked(); };
        std::atexit([] { std::_Exit(stage().ends == 1 ? 7 : 1); });
        Bridge bridge;
        bridge.send("SCREEN", 8, 4, "x", 1);
        bridge.send("SCREENFLIP");
      },
      testing::ExitedWithCode(7), "");
}

} // namespace
} // namespace kavo::test
