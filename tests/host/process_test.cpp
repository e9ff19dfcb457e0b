// What a running host changes in its process, and how it leaves it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "tests/host/bridge.h"

namespace {

namespace fs = std::filesystem;
using kavo::test::Bridge;
using kavo::test::Environment;

bool is_null_device(int file) {
  struct stat status = {};
  struct stat null = {};
  return fstat(file, &status) == 0 && stat("/dev/null", &null) == 0 &&
         status.st_rdev == null.st_rdev;
}

TEST(Process, HasItsStandardStreamsEvenWhenTheyWereClosed) {
  EXPECT_EXIT(
      {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
          close(stream);
        const Bridge bridge;
        std::_Exit(is_null_device(0) && is_null_device(1) && is_null_device(2) ? 7 : 1);
      },
      testing::ExitedWithCode(7), "");
}

TEST(Process, KeepsTheStandardStreamsThatAreOpen) {
  EXPECT_EXIT(
      {
        close(STDIN_FILENO);
        const Bridge bridge;
        std::fputs("heard", stderr);
        std::_Exit(is_null_device(STDIN_FILENO) ? 7 : 1);
      },
      testing::ExitedWithCode(7), "heard");
}

int error_of_writing_to_nobody() {
  std::array<int, 2> ends = {};
  if (pipe(ends.data()) != 0)
    return 0;
  close(ends[0]);
  return write(ends[1], "x", 1) < 0 ? errno : 0;
}

TEST(Process, GetsAnErrorFromAPipeThatNobodyReads) {
  EXPECT_EXIT(
      {
        const Bridge bridge;
        std::_Exit(error_of_writing_to_nobody() == EPIPE ? 7 : 1);
      },
      testing::ExitedWithCode(7), "");
}

TEST(Process, DiesOfABrokenPipeAgainAfterShutdown) {
  EXPECT_EXIT(
      {
        { const Bridge bridge; }
        std::raise(SIGPIPE);
      },
      testing::KilledBySignal(SIGPIPE), "");
}

long threads_of_this_process() {
  return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
}

long threads_before = 0;

void tell_threads(const char* moment) {
  std::fprintf(stderr, "%s: %ld;", moment, threads_of_this_process() - threads_before);
}

// Handlers run in the reverse order of their registration.
[[noreturn]] void exit_while_sound_plays() {
  const Environment driver("SDL_AUDIODRIVER", "dummy");
  threads_before = threads_of_this_process();
  std::atexit([] { tell_threads("at exit"); });
  Bridge bridge;
  bridge.send("SOUND.INIT");
  bridge.send("SOUND.NOTE", "c3 e3 g3", 1);
  tell_threads("playing");
  std::exit(3);
}

TEST(Process, HasNoThreadOfTheSoundLeftWhenItExitsOnAnError) {
  GTEST_FLAG_SET(death_test_style, "threadsafe"); // a new process: no test before has had a host
  EXPECT_EXIT(exit_while_sound_plays(), testing::ExitedWithCode(3), "playing: 1;at exit: 0;$");
}

TEST(Process, LooksForNoSessionBusThatNobodyNamed) {
  const Environment bus("DBUS_SESSION_BUS_ADDRESS", nullptr);
  { const Bridge bridge; }
  EXPECT_STREQ(std::getenv("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

TEST(Process, KeepsTheSessionBusThatIsNamed) {
  const Environment bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/run/bus");
  { const Bridge bridge; }
  EXPECT_STREQ(std::getenv("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/run/bus");
}

} // namespace
