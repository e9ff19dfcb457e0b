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

#include "tests/host/bridge.h"

namespace {

using kavo::test::Bridge;

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

} // namespace
