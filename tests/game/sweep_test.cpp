// Fails one command after the other of whole runs of the program. Each time it must stop right
// there, with the error pending and every routine left.
//
// A quick run sweeps start-up and one scene whole and strides through the rest; with
// KAVO_SWEEP_ALL set every one of the first 20,000 commands of each run fails once.
#include <cstdlib>
#include <filesystem>

#include "game/program.h"
#include "tests/game/game_test.h"
#include "tests/game/pools.h"

namespace kavo::test {
namespace {

constexpr int64_t last_swept = 20'000;

class SweepTest : public GameTest {
protected:
  static void start(std::vector<std::string> words) {
    std::vector<char*> argv;
    for (std::string& word : words)
      argv.push_back(word.data());
    argv.push_back(nullptr);
    run(run_program(static_cast<int>(words.size()), argv.data()));
  }

  // Fails every `stride`-th command of the run; gives how many commands the whole run sends.
  static int64_t sweep(int64_t stride, const std::function<void()>& arrange,
                       const std::function<void()>& routine) {
    const bool is_thorough = std::getenv("KAVO_SWEEP_ALL") != nullptr;
    int64_t nth = 1;
    const auto arrange_folder = [&arrange] {
      std::filesystem::remove_all("tmp");
      arrange();
    };
    while (nth <= last_swept && fails_cleanly_at(nth, arrange_folder, routine))
      nth += is_thorough ? 1 : stride;
    return host().commands;
  }

  static int64_t sweep_scene(const char* word, int64_t stride) {
    return sweep(
        stride, [] {},
        [word] {
          start({"kavo", "shot", word});
        });
  }

  WorkingFolder folder;
};

TEST_F(SweepTest, StartUpTheTitleAndTheEnd) {
  const auto commands = sweep(
      1, [] { host().keys = {"Escape"}; }, [] { start({"kavo"}); });
  EXPECT_GT(commands, 200);
}

TEST_F(SweepTest, TheOptionsScene) {
  EXPECT_GT(sweep_scene("opts", 1), 300);
}

TEST_F(SweepTest, EveryOtherScene) {
  for (const char* word : {"", "kavo", "pop", "pu", "storm", "qbomb", "title", "enter"}) {
    SCOPED_TRACE(word);
    EXPECT_GT(sweep_scene(word, 97), 300);
  }
}

// ---- a whole game in few frames -----------------------------------------------------------------

struct Step {
  const char* key;
  void (*arrange)();
};

void keep() {}

void start_turning_among_stars() {
  put_star(0, 1, 4);
  put_star(1, 2, 4);
}

void raise_storm() {
  set_board_size(15, 10);
  put(2, 9, 7);
  LIGHTNING = 3;
}

// What is pressed, and what stands ready for it: everything that a game can send comes up once.
constexpr Step steps[] = {
    {"Space", keep}, // from the title into a game
    {"Up", start_turning_among_stars},
    {"Left", raise_storm},
    {"P", keep},
    {"P", keep},
    {"Space", arrange_busy_lock}, // a drop, a power-up, a clear, a tip, the end of the game
    {"Up", keep},                 // the name
    {"Return", keep},
    {"O", keep},
    {"Return", keep},
    {"Escape", keep},
    {"M", keep},
    {"Escape", keep}, // out of the program
};

// One step every second frame; between them no key is held. There is a score to beat.
void play_steps() {
  std::filesystem::create_directory("tmp");
  write_file("tmp/kavo_high.txt", "ONE;1");
  int64_t frame = 0;
  recording_host().on_frame = [frame]() mutable {
    recording_host().keys.clear();
    const auto step = static_cast<std::size_t>(frame / 2);
    if (frame++ % 2 != 0 || step >= std::size(steps))
      return;
    steps[step].arrange();
    recording_host().keys = {steps[step].key};
  };
}

TEST_F(SweepTest, TheScriptedGameComesToItsEnd) {
  play_steps();
  start({"kavo"});
  EXPECT_TRUE(host().is_shut_down);
  EXPECT_EQ(score_at(0), static_cast<double>(SCORE));
  for (const char* name : {"TRANSPOSE", "RESHAPE", "MVINS", "SPLIT", "DIR$", "BINWRITER"})
    EXPECT_GT(host().count(name), 0) << name;
  EXPECT_LT(host().commands, last_swept) << "the end lies beyond what is swept";
}

TEST_F(SweepTest, AWholeGame) {
  EXPECT_GT(sweep(131, play_steps, [] { start({"kavo"}); }), 10'000);
}

// ---- the process --------------------------------------------------------------------------------

using SweepDeathTest = SweepTest;

TEST_F(SweepDeathTest, AFailureInTheMiddleOfAGameEndsTheProgramWithItsMessageAndStatusOne) {
  play_steps();
  host().is_discarding = true;
  host().fail_name = "MVINS";
  std::string name = "kavo";
  char* arguments[] = {name.data(), nullptr};
  EXPECT_EXIT(run_to_exit(1, arguments), ::testing::ExitedWithCode(1),
              "^Unhandled exception: MVINS: failed on command\n$");
}

} // namespace
} // namespace kavo::test
