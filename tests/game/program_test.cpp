// From the first statement to the last: start-up, the choice between game and scene, the end.
#include <sys/stat.h>

#include <filesystem>

#include "game/program.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

constexpr size_t star_draws = 80; // two for each of the 40 background stars

// Runs the whole program in an empty folder. On the title screen Escape is held, so that the game
// ends after its first frame.
class ProgramTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    host().keys = {"Escape"};
  }

  static void start(std::initializer_list<const char*> arguments) {
    std::vector<std::string> words(arguments.begin(), arguments.end());
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (std::string& word : words)
      argv.push_back(word.data());
    argv.push_back(nullptr);
    ::testing::internal::CaptureStdout();
    run(run_program(static_cast<int>(words.size()), argv.data()));
    printed = ::testing::internal::GetCapturedStdout();
  }

  static Trace trace_from(size_t first, size_t count) {
    const auto begin = host().trace.begin() + static_cast<ptrdiff_t>(first);
    return {begin, begin + static_cast<ptrdiff_t>(count)};
  }

  WorkingFolder folder;
  static inline std::string printed;
};

constexpr const char* start_of_music = // as one command
    R"(SOUND.NOTE "< [c5 e5 g5 e5] [a4 c5 e5 c5] [f4 a4 c5 [d5 c5]] [g4 b4 d5 ~] )"
    R"([e5 g5 [a5 g5] e5] [d5 f5 [e5 d5] c5] [c5 [b4 c5] d5 e5] [c5 ~ ~ ~] , )"
    R"([[c2 c3]*4] [[a1 a2]*4] [[f1 f2]*4] [[g1 g2]*4] [[c2 c3]*4] [[d2 d3]*2 [f1 f2]*2] )"
    R"([[g1 g2]*2 [g1 b1]*2] [[c2 c3]*4] >" i1)";

const Trace screen_and_sound = {
    R"(SCREEN i660 i800 "KAVO - Schlagseite" i1)",
    "SOUND.INIT",
    "SOUND.BPM i125",
    R"(SOUND.VOICE i0 "SQUARE" f0.01 f0.15 f0.3 f0.25)",
    "SOUND.FILTER i0 i2000",
    "SOUND.GAIN i0 f0.55",
    R"(SOUND.VOICE i1 "SAW" f0.005 f0.08 f0.5 f0.08)",
    "SOUND.FILTER i1 i500",
    "SOUND.GAIN i1 f0.6",
    "SOUND.REVERB f0.7 f0.3 f0.8 f0.25",
    "SOUND.REVERBSEND i0 f0.4",
    R"(SOUND.VOICE i3 "TRIANGLE" f0.004 f0.1 f0 f0.08)",
    "SOUND.GAIN i3 f0.5",
    R"(SOUND.VOICE i4 "SQUARE" f0.004 f0.09 f0 f0.07)",
    "SOUND.GAIN i4 f0.45",
    R"(SOUND.VOICE i5 "SAW" f0.02 f0.28 f0 f0.3)",
    "SOUND.GAIN i5 f0.5",
    start_of_music,
};

TEST_F(ProgramTest, StartUpHandsTheHostItsArgumentsAndTheDispatcher) {
  qor_runtime_set_handle(0);
  start({"kavo", "somewhere"});
  EXPECT_EQ(host().arguments, (std::vector<std::string>{"kavo", "somewhere"}));
  EXPECT_EQ(qor_runtime_handle(), RecordingHost::handle);
  EXPECT_TRUE(host().can_dispatch_events);
  EXPECT_STREQ(qor_array_get_str(ARGS.get(), 1), "somewhere");
}

TEST_F(ProgramTest, StartUpOpensTheScreenAndThenSetsUpTheSound) {
  start({"kavo"});
  EXPECT_TRUE(same(trace_from(0, screen_and_sound.size()), screen_and_sound));
}

TEST_F(ProgramTest, AfterTheSoundComeChanceStarsTwoPiecesAndTheHighScores) {
  start({"kavo"});
  const Trace expected = joined({{"RND -1"},
                                 Trace(star_draws, "RND 1"),
                                 Trace(4, "RND 1"),
                                 {R"(DIR$ "tmp/kavo_high.txt")", R"(GFX.KEYSTATE "Left")"}});
  EXPECT_TRUE(same(plain(trace_from(screen_and_sound.size(), expected.size())), expected));
  EXPECT_EQ(trace_from(screen_and_sound.size() + 1, 1).front(), "RND i1");
}

TEST_F(ProgramTest, BackgroundStarsTakeTheirColumnThenTheirRowFromChance) {
  host().chance = {0.5, 0.5, 0.999, 0.999, 0.0, 0.0};
  start({"kavo"});
  EXPECT_EQ(qor_array_get(BGSTAR_X.get(), 0), 330);
  EXPECT_EQ(qor_array_get(BGSTAR_Y.get(), 0), 55);
  EXPECT_EQ(qor_array_get(BGSTAR_X.get(), 1), 659);
  EXPECT_EQ(qor_array_get(BGSTAR_Y.get(), 1), 109);
  EXPECT_EQ(qor_array_get(BGSTAR_X.get(), 2), 0);
  EXPECT_EQ(qor_array_get(BGSTAR_Y.get(), 2), 0);
}

TEST_F(ProgramTest, AFallingPieceAndAPreviewExistBeforeTheFirstGame) {
  host().chance.assign(star_draws, 0.5);
  host().chance.insert(host().chance.end(), {0.5, 0.0, 0.0, 0.1}); // an I, then a bomb
  start({"kavo"});
  EXPECT_EQ(shape_text(CURRENTPIECE), "....\n####\n....\n....\n");
  EXPECT_EQ(PIECECOLOR, 1);
  EXPECT_EQ(NEXTCOLOR, 8);
}

TEST_F(ProgramTest, HighScoresAreReadAtStartUp) {
  std::filesystem::create_directory("tmp");
  write_file("tmp/kavo_high.txt", "JON;1200");
  start({"kavo"});
  EXPECT_EQ(name_at(0), "JON");
  EXPECT_EQ(score_at(0), 1200);
}

TEST_F(ProgramTest, TheFolderForFilesExistsAfterStartUpInAnEmptyFolder) {
  const mode_t mask = umask(0);
  start({"kavo"});
  umask(mask);
  struct stat status = {};
  ASSERT_EQ(stat("tmp", &status), 0);
  EXPECT_TRUE(S_ISDIR(status.st_mode));
  EXPECT_EQ(status.st_mode & 0777, 0755);
}

TEST_F(ProgramTest, AnExistingFolderIsNoError) {
  std::filesystem::create_directory("tmp");
  start({"kavo"});
  EXPECT_EQ(printed, "done\n");
}

TEST_F(ProgramTest, WithoutArgumentsTheGameRuns) {
  start({"kavo"});
  EXPECT_FALSE(TESTMODE);
  EXPECT_STREQ(chars(TESTTAB$), "");
  EXPECT_EQ(host().frames, 1);
  EXPECT_EQ(qor_array_len(ARGS.get()), 1);
}

TEST_F(ProgramTest, WithAnotherArgumentThanShotTheGameRuns) {
  start({"kavo", "shoot"});
  EXPECT_FALSE(TESTMODE);
  EXPECT_EQ(host().frames, 1);
  EXPECT_EQ(printed, "done\n");
}

TEST_F(ProgramTest, ShotAloneRunsTheDefaultScene) {
  start({"kavo", "shot"});
  EXPECT_TRUE(TESTMODE);
  EXPECT_STREQ(chars(TESTTAB$), "");
  EXPECT_TRUE(contains(host().trace, R"(GFX.SAVE_SCREENSHOT "tmp/kavo.png")"));
  EXPECT_EQ(printed, "shot saved\n");
}

TEST_F(ProgramTest, ASceneWordWithoutShotInFrontStartsTheGame) {
  start({"kavo", "pop"});
  EXPECT_FALSE(TESTMODE);
  EXPECT_EQ(host().count("GFX.SAVE_SCREENSHOT"), 0);
  EXPECT_EQ(printed, "done\n");
}

TEST_F(ProgramTest, TheSceneWordIsTheThirdArgumentAndLaterOnesAreIgnored) {
  start({"kavo", "shot", "opts", "enter"});
  EXPECT_STREQ(chars(TESTTAB$), "opts");
  EXPECT_EQ(qor_array_len(ARGS.get()), 4);
  EXPECT_EQ(printed, "opts shot\n");
}

TEST_F(ProgramTest, AGameEndsByShuttingSoundScreenAndHostDown) {
  start({"kavo"});
  const size_t commands = host().trace.size();
  EXPECT_TRUE(same(trace_from(commands - 3, 3), {"SCREENFLIP", "SOUND.SHUTDOWN", "GFX.CLOSE"}));
  EXPECT_EQ(printed, "done\n");
  EXPECT_TRUE(host().is_shut_down);
}

TEST_F(ProgramTest, ASceneEndsWithoutShuttingTheHostDown) {
  start({"kavo", "shot", "opts"});
  const size_t commands = host().trace.size();
  EXPECT_TRUE(same(trace_from(commands - 2, 2), {"SOUND.SHUTDOWN", "GFX.CLOSE"}));
  EXPECT_FALSE(host().is_shut_down);
}

TEST_F(ProgramTest, FramesFollowUntilTheQuitFlagIsSet) {
  host().keys = {};
  host().on_flip = [flips = 0]() mutable {
    if (++flips == 3)
      host().keys = {"Escape"};
  };
  start({"kavo"});
  EXPECT_EQ(host().frames, 4);
}

TEST_F(ProgramTest, AFailureInAFrameEndsTheProgram) {
  host().keys = {};
  host().fail_at = 1000;
  start({"kavo"});
  EXPECT_EQ(host().commands, 1000);
  EXPECT_FALSE(take_error().empty());
  EXPECT_EQ(printed, "");
}

TEST_F(ProgramTest, StartUpFramesAndShutDownAreTheWholeProgram) {
  std::vector<int64_t> depths;
  host().on_flip = [&depths] { depths.push_back(qor_recursion_depth()); };
  start({"kavo"});
  const Trace whole = new_trace();

  start_afresh();
  host().keys = {"Escape"};
  host().on_flip = [&depths] { depths.push_back(qor_recursion_depth()); };
  std::string name = "kavo";
  char* arguments[] = {name.data(), nullptr};
  run(start_up(1, arguments));
  EXPECT_FALSE(TESTMODE);
  EXPECT_FALSE(QUITFLAG);
  run(run_frame());
  EXPECT_TRUE(QUITFLAG);
  EXPECT_FALSE(host().is_shut_down);
  ::testing::internal::CaptureStdout();
  run(shut_down());
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "done\n");
  EXPECT_TRUE(host().is_shut_down);
  EXPECT_TRUE(same(new_trace(), whole));
  EXPECT_EQ(depths, (std::vector<int64_t>{1, 1})) << "the program enters the guard once";
}

TEST_F(ProgramTest, AFailureInStartUpEndsTheRunBeforeTheNextCommand) {
  host().fail_name = "SCREEN";
  start({"kavo"});
  EXPECT_EQ(take_error(), "SCREEN: failed on command");
  EXPECT_EQ(host().commands, 1);
  EXPECT_EQ(printed, "");
}

TEST_F(ProgramTest, AFailureWhileShuttingDownPrintsNoDone) {
  host().fail_name = "GFX.CLOSE";
  start({"kavo"});
  EXPECT_EQ(take_error(), "GFX.CLOSE: failed on command");
  EXPECT_EQ(printed, "");
  EXPECT_FALSE(host().is_shut_down);
}

using ProgramDeathTest = ProgramTest;

int run_kavo() {
  std::string name = "kavo";
  char* arguments[] = {name.data(), nullptr};
  return run_to_exit(1, arguments);
}

TEST_F(ProgramDeathTest, AnUncaughtErrorSaysWhatFailedAndEndsWithStatusOne) {
  host().fail_name = "SOUND.BPM";
  EXPECT_EXIT(run_kavo(), ::testing::ExitedWithCode(1),
              "^Unhandled exception: SOUND.BPM: failed on command\n$");
}

TEST_F(ProgramDeathTest, RecursionPastTheLimitEndsTheProgram) {
  host().on_frame = [] { qor_recursion_reset_to(256); };
  EXPECT_EXIT(run_kavo(), ::testing::ExitedWithCode(1),
              "^Unhandled exception: Stack overflow: recursion too deep\n$");
}

TEST_F(ProgramDeathTest, AGameThatEndsInOrderEndsWithStatusZero) {
  EXPECT_EXIT(std::exit(run_kavo()), ::testing::ExitedWithCode(0), "^$");
}

} // namespace
} // namespace kavo::test
