// The real program in a world where something is missing, from the start or from some moment on:
// it plays on, or it ends with what its player can do about it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "tests/desktop/game/playing.h"

namespace {

namespace fs = std::filesystem;
using kavo::playing::Conditions;
using kavo::playing::Game;

Conditions started_by(void (*change)(kavo::desktop::Launch&)) {
  Conditions conditions;
  conditions.change = change;
  return conditions;
}

// Plays a little and leaves through the title.
kavo::desktop::Outcome play_and_leave(Game& game) {
  game.start_playing();
  EXPECT_EQ(game.move(-1) + game.move(1), 2);
  game.tap("Escape");
  EXPECT_TRUE(game.is_paused());
  game.tap("Escape");
  EXPECT_TRUE(game.is_on_title());
  game.tap("Escape");
  return game.process->wait();
}

void expect_a_game(void (*change)(kavo::desktop::Launch&)) {
  Game game(started_by(change));
  const auto outcome = play_and_leave(game);
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
}

// ---- the display --------------------------------------------------------------------------------

kavo::desktop::Outcome start_with_display(const std::optional<std::string>& display) {
  const kavo::test::TemporaryFolder folder;
  kavo::desktop::Launch launch = kavo::playing::launch(folder.path(), "", {});
  launch.environment["DISPLAY"] = display;
  launch.environment["WAYLAND_DISPLAY"] = std::nullopt;
  launch.environment["SDL_VIDEODRIVER"] = std::nullopt;
  return kavo::desktop::Process(launch).wait();
}

TEST(WithoutADisplay, TheGameSaysWhatIsMissing) {
  for (const auto& display : {std::optional<std::string>(), {""}, {":987"}, {"nonsense"}}) {
    const auto outcome = start_with_display(display);
    EXPECT_TRUE(outcome.has_exited);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(
        outcome.errors.find("no display: start the game in a desktop session, or set DISPLAY"),
        std::string::npos)
        << outcome.errors;
  }
}

void expect_an_end_for_want_of_a_display(Game& game) {
  game.desktop.end();
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors,
            "no display: it went away while the game ran; start the game again in a "
            "desktop session\n");
}

TEST(ADisplayThatGoesAway, EndsTheTitleWithWhatHappened) {
  Game game;
  ASSERT_TRUE(game.is_on_title());
  expect_an_end_for_want_of_a_display(game);
}

TEST(ADisplayThatGoesAway, EndsAGameWithWhatHappened) {
  Game game;
  game.start_playing();
  expect_an_end_for_want_of_a_display(game);
}

// Nothing but the player's second, later signal can end it then.
TEST(ADisplayThatHangs, LeavesTheProgramToASignal) {
  Game game;
  game.start_playing();
  game.desktop.freeze();
  ASSERT_TRUE(kavo::desktop::eventually([&] {
    game.process->send_signal(SIGTERM);
    return !game.process->is_running();
  }));
}

// ---- sound --------------------------------------------------------------------------------------

TEST(WithoutASoundDevice, TheGamePlaysOn) {
  Game game(started_by(
      [](kavo::desktop::Launch& launch) { launch.environment["SDL_AUDIODRIVER"] = "nonsense"; }));
  const auto outcome = play_and_leave(game);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "no sound: Audio target 'nonsense' not available\n");
}

// A device that writes what it plays into a file and is lost when that is full.
void play_into_a_small_file(kavo::desktop::Launch& launch) {
  launch.environment["SDL_AUDIODRIVER"] = "disk";
  launch.environment["SDL_DISKAUDIOFILE"] = launch.folder + "/sound.raw";
  launch.last_act = [] {
    const rlimit limit = {100'000, 100'000};
    setrlimit(RLIMIT_FSIZE, &limit);
  };
}

TEST(ASoundDeviceThatGoesAway, LeavesTheGamePlaying) {
  Game game(started_by(play_into_a_small_file));
  ASSERT_TRUE(kavo::desktop::eventually([&] {
    return game.process->errors_so_far().find("no sound: the audio device is gone\n") !=
           std::string::npos;
  }));
  EXPECT_EQ(play_and_leave(game).code, 0);
}

// ---- the process --------------------------------------------------------------------------------

// What it keeps still goes to the test's own folders: the system's user table knows the home of
// whoever runs the tests.
TEST(WithoutAHome, TheGameIsPlayed) {
  expect_a_game([](kavo::desktop::Launch& launch) {
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "USER"})
      launch.environment[name] = std::nullopt;
  });
}

TEST(InAFolderThatWasDeleted, TheGameIsPlayed) {
  expect_a_game([](kavo::desktop::Launch& launch) {
    fs::create_directory(launch.folder + "/gone");
    launch.folder += "/gone";
    launch.last_act = [] { rmdir(fs::current_path().c_str()); };
  });
}

TEST(WithStandardStreamsClosed, TheGameIsPlayed) {
  expect_a_game(
      [](kavo::desktop::Launch& launch) { launch.last_act = [] { close(STDOUT_FILENO); }; });
  expect_a_game(
      [](kavo::desktop::Launch& launch) { launch.last_act = [] { close(STDERR_FILENO); }; });
  expect_a_game([](kavo::desktop::Launch& launch) {
    launch.last_act = [] {
      for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        close(stream);
    };
  });
}

TEST(WithStandardStreamsClosed, AnErrorIsStillAnError) {
  const kavo::test::TemporaryFolder folder;
  kavo::desktop::Launch launch = kavo::playing::launch(folder.path(), "", {});
  launch.environment["DISPLAY"] = std::nullopt;
  launch.last_act = [] { close(STDERR_FILENO); };
  const auto outcome = kavo::desktop::Process(launch).wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 1);
}

TEST(WithOutputThatNobodyReads, TheGameIsPlayed) {
  expect_a_game([](kavo::desktop::Launch& launch) {
    launch.last_act = [] {
      std::array<int, 2> ends = {};
      if (pipe(ends.data()) == 0)
        dup2(ends[1], STDOUT_FILENO);
      close(ends[0]);
      close(ends[1]);
    };
  });
}

TEST(WithOutputToAFullDisk, TheGameIsPlayed) {
  expect_a_game([](kavo::desktop::Launch& launch) {
    launch.last_act = [] { dup2(open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO); };
  });
}

// Of the game's own: those that whoever runs the tests left open are closed.
template<rlim_t count>
void allow_descriptors() {
  close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
  const rlimit limit = {count, count};
  setrlimit(RLIMIT_NOFILE, &limit);
}

TEST(WithSixteenFileDescriptors, TheGameIsPlayed) {
  expect_a_game([](kavo::desktop::Launch& launch) { launch.last_act = allow_descriptors<16>; });
}

TEST(WithEightFileDescriptors, TheGameIsPlayed) {
  expect_a_game([](kavo::desktop::Launch& launch) { launch.last_act = allow_descriptors<8>; });
}

// ---- time ---------------------------------------------------------------------------------------

bool is_stopped(const kavo::desktop::Process& process) {
  const std::string status =
      kavo::test::read_file("/proc/" + std::to_string(process.id()) + "/stat");
  const size_t behind_name = status.rfind(')');
  return behind_name != std::string::npos && status.substr(behind_name, 3) == ") T";
}

// A minute in scripts/soak; how long it is makes no difference to the program.
std::chrono::seconds wanted_suspension() {
  const char* wanted = std::getenv("KAVO_SUSPENSION_S");
  return std::chrono::seconds(wanted == nullptr ? 0 : std::atoi(wanted));
}

TEST(Suspended, TheGameGoesOnWhereItWasAndKnowsTheKeysOfTheMeantime) {
  Game game;
  game.start_playing();
  game.process->send_signal(SIGSTOP);
  ASSERT_TRUE(kavo::desktop::eventually([&] { return is_stopped(*game.process); }));
  game.tap("p");
  std::this_thread::sleep_for(wanted_suspension());
  game.process->send_signal(SIGCONT);
  ASSERT_TRUE(game.is_paused());
  game.tap("p");
  ASSERT_TRUE(game.is_playing());
  EXPECT_EQ(game.move(-1) + game.move(1), 2);
  game.window->ask_to_close();
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
}

} // namespace
