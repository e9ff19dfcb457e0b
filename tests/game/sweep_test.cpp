// Fails one command after the other of whole runs of the program. Each time it must stop right
// there, with the error pending and every routine left; and the process, where the error reaches
// the top, ends with its line and status 1.
//
// A quick run sweeps start-up and one scene whole and strides through the rest; with
// KAVO_SWEEP_ALL set every one of the first 20,000 commands of each run fails once.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "game/program.h"
#include "tests/game/game_fixture.h"
#include "tests/game/pools.h"

namespace kavo::test {
namespace {

constexpr int64_t last_swept = 20'000;

using Words = std::vector<std::string>;

// Calls `run` with the program's arguments.
template<typename Run>
auto with_arguments(Words words, Run run) {
  std::vector<char*> argv;
  for (std::string& word : words)
    argv.push_back(word.data());
  argv.push_back(nullptr);
  return run(static_cast<int>(words.size()), argv.data());
}

// How a process ended that ran the program to its exit.
struct Ending {
  int status;
  std::string errors;
};

class SweepTest : public GameTest {
protected:
  static void start(const Words& words) { run(with_arguments(words, run_program)); }

  // Fails every `stride`-th command of the run; gives how many commands the whole run sends.
  static int64_t sweep(int64_t stride, const std::function<void()>& arrange, const Words& words) {
    const bool is_thorough = std::getenv("KAVO_SWEEP_ALL") != nullptr;
    const auto arrange_folder = [&arrange] {
      std::filesystem::remove_all("tmp");
      arrange();
    };
    int64_t swept = 0;
    int64_t nth = 1;
    while (nth <= last_swept && fails_cleanly_at(nth, arrange_folder, [&] { start(words); })) {
      if (is_thorough || swept++ % quick_processes_stride == 0)
        expect_the_process_to_end_at(nth, arrange_folder, words);
      nth += is_thorough ? 1 : stride;
    }
    return host().commands;
  }

  static int64_t sweep_scene(const char* word, int64_t stride) {
    return sweep(stride, [] {}, {"kavo", "shot", word});
  }

private:
  static constexpr int64_t quick_processes_stride = 16;

  // In a process of its own: the uncaught-error line and nothing else, and status 1.
  static void expect_the_process_to_end_at(int64_t nth, const std::function<void()>& arrange,
                                           const Words& words) {
    const Ending ending = run_process([&] {
      start_afresh();
      arrange();
      host().forget();
      host().is_discarding = true;
      host().fail_at = nth;
      return with_arguments(words, run_to_exit);
    });
    SCOPED_TRACE("command " + std::to_string(nth));
    EXPECT_EQ(ending.status, 1);
    EXPECT_TRUE(ending.errors.starts_with("Unhandled exception: ")) << ending.errors;
    EXPECT_TRUE(ending.errors.ends_with(": failed on command\n")) << ending.errors;
    EXPECT_EQ(std::count(ending.errors.begin(), ending.errors.end(), '\n'), 1) << ending.errors;
  }

  // The status is not the process's own when it did not stop at the command that failed.
  static Ending run_process(const std::function<int()>& program) {
    const Memory errors;
    const pid_t child = fork();
    if (child == 0) {
      dup2(errors.file(), STDERR_FILENO);
      on_exit(check_and_exit, nullptr);
      std::exit(program());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, errors.content()};
  }

  // Leaks are looked for in the test's own process, once and for all.
  static void check_and_exit(int status, void*) {
    constexpr int went_on = 99;
    const bool has_stopped =
        host().commands == host().fail_at && host().faults.empty() && qor_recursion_depth() == 0;
    _exit(has_stopped ? status : went_on);
  }

  // A file without a name.
  class Memory {
  public:
    Memory() : file_(memfd_create("errors", MFD_CLOEXEC)) {}
    ~Memory() { close(file_); }
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    int file() const { return file_; }
    std::string content() const { return read_file("/proc/self/fd/" + std::to_string(file_)); }

  private:
    int file_;
  };

  WorkingFolder folder;
};

TEST_F(SweepTest, StartUpTheTitleAndTheEnd) {
  const auto commands = sweep(1, [] { host().keys = {"Escape"}; }, {"kavo"});
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
    const auto step = static_cast<size_t>(frame / 2);
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
  EXPECT_GT(sweep(131, play_steps, {"kavo"}), 10'000);
}

} // namespace
} // namespace kavo::test
