// Files that are whole or untouched, and what a folder lists, with every way to fail that a test
// can bring about.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/command.h"
#include "host/files.h"
#include "host/temporary_file.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using kavo::host::CommandError;
using kavo::host::link_end;
using kavo::host::names_at;
using kavo::host::remove_leftovers;
using kavo::host::try_writing;
using kavo::host::write_whole_file;
using kavo::test::read_file;
using kavo::test::TemporaryFolder;
using kavo::test::write_file;
using Names = std::vector<std::string>;

std::string error_of_writing(const std::string& path, const std::string& content = "new") {
  try {
    write_whole_file(path, content);
  } catch (const CommandError& error) {
    return error.what();
  }
  return "(no error)";
}

std::string cannot_write(const std::string& path, const std::string& reason) {
  return "cannot write \"" + path.substr(0, 80) + (path.size() > 80 ? "…" : "") + "\": " + reason;
}

// Runs `check` in a process of its own, as an ordinary user when the test runs as root, and tells
// whether it returned true.
bool holds_for_a_user(const std::function<bool()>& check) {
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && (setegid(nobody) != 0 || seteuid(nobody) != 0))
      _exit(2);
    _exit(check() ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

mode_t permissions_of(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

TEST(WritingAFile, MakesANewOne) {
  const TemporaryFolder folder;
  write_whole_file(folder / "a.txt", "hello");
  EXPECT_EQ(read_file(folder / "a.txt"), "hello");
}

TEST(WritingAFile, ReplacesAnOldOneWhole) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", std::string(100'000, 'x'));
  write_whole_file(folder / "a.txt", "short");
  EXPECT_EQ(read_file(folder / "a.txt"), "short");
}

TEST(WritingAFile, LeavesNothingElseBehind) {
  const TemporaryFolder folder;
  write_whole_file(folder / "a.txt", "1");
  write_whole_file(folder / "a.txt", "2");
  EXPECT_EQ(folder.entry_count(), 1U);
}

TEST(WritingAFile, KeepsEveryByte) {
  const TemporaryFolder folder;
  std::string bytes;
  for (int i = 0; i < 256; ++i)
    bytes += static_cast<char>(i);
  write_whole_file(folder / "a.bin", bytes);
  EXPECT_EQ(read_file(folder / "a.bin"), bytes);
}

TEST(WritingAFile, CanBeEmpty) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", "old");
  write_whole_file(folder / "a.txt", "");
  EXPECT_EQ(read_file(folder / "a.txt"), "");
  EXPECT_EQ(folder.entry_count(), 1U);
}

TEST(WritingAFile, GivesANewOneTheUsersPermissions) {
  const TemporaryFolder folder;
  const mode_t before = umask(027);
  write_whole_file(folder / "a.txt", "x");
  umask(before);
  EXPECT_EQ(permissions_of(folder / "a.txt"), mode_t{0640});
}

TEST(WritingAFile, GivesANewOnesOwnerAtLeastWhatHeNeeds) {
  const TemporaryFolder folder;
  const mode_t before = umask(0777);
  write_whole_file(folder / "a.txt", "x");
  umask(before);
  EXPECT_EQ(permissions_of(folder / "a.txt"), mode_t{0600});
}

TEST(WritingAFile, KeepsTheOldOnesPermissions) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", "old");
  chmod((folder / "a.txt").c_str(), 0604);
  write_whole_file(folder / "a.txt", "new");
  EXPECT_EQ(permissions_of(folder / "a.txt"), mode_t{0604});
}

TEST(WritingAFile, TakesANameWithoutAFolder) {
  const TemporaryFolder folder;
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  write_whole_file("a.txt", "here");
  fs::current_path(before);
  EXPECT_EQ(read_file(folder / "a.txt"), "here");
}

TEST(WritingAFile, FollowsASymbolicLink) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "elsewhere");
  write_file(folder / "elsewhere/a.txt", "old");
  fs::create_symlink("elsewhere/a.txt", folder / "link");
  write_whole_file(folder / "link", "new");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(read_file(folder / "elsewhere/a.txt"), "new");
}

TEST(WritingAFile, FollowsALinkToNothingYet) {
  const TemporaryFolder folder;
  fs::create_symlink("second", folder / "first");
  fs::create_symlink(folder / "a.txt", folder / "second");
  write_whole_file(folder / "first", "new");
  EXPECT_EQ(read_file(folder / "a.txt"), "new");
  EXPECT_TRUE(fs::is_symlink(folder / "first"));
}

TEST(WritingAFile, FailsOnLinksThatGoRound) {
  const TemporaryFolder folder;
  fs::create_symlink("b", folder / "a");
  fs::create_symlink("a", folder / "b");
  EXPECT_EQ(error_of_writing(folder / "a"),
            cannot_write(folder / "a", "Too many levels of symbolic links"));
}

TEST(WritingAFile, FailsWithoutTheFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(error_of_writing(folder / "missing/a.txt"),
            cannot_write(folder / "missing/a.txt", "No such file or directory"));
}

TEST(WritingAFile, FailsWhereAFileIsTakenForAFolder) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", "old");
  EXPECT_EQ(error_of_writing(folder / "a.txt/b"),
            cannot_write(folder / "a.txt/b", "Not a directory"));
}

TEST(WritingAFile, FailsOnAFolderInTheWay) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "a.txt");
  EXPECT_EQ(error_of_writing(folder / "a.txt"), cannot_write(folder / "a.txt", "Is a directory"));
  EXPECT_EQ(folder.entry_count(), 1U);
}

TEST(WritingAFile, FailsOnATooLongName) {
  const TemporaryFolder folder;
  const std::string path = folder / std::string(300, 'x');
  EXPECT_EQ(error_of_writing(path), cannot_write(path, "File name too long"));
}

TEST(WritingAFile, FailsOnNamesThatAreNone) {
  EXPECT_EQ(error_of_writing(""), "argument 1 (path) must be the name of a file, got \"\"");
  EXPECT_EQ(error_of_writing(std::string("a\0b", 3)),
            "argument 1 (path) must be without NUL bytes, got \"a\\x00b\"");
}

TEST(WritingAFile, InAFolderThatMayNotBeWrittenLeavesTheOldFile) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", "old");
  chmod((folder / "a.txt").c_str(), 0666);
  chmod(folder.path().c_str(), 0555);
  EXPECT_TRUE(holds_for_a_user([&] {
    return error_of_writing(folder / "a.txt") ==
           cannot_write(folder / "a.txt", "Permission denied");
  }));
  chmod(folder.path().c_str(), 0755);
  EXPECT_EQ(read_file(folder / "a.txt"), "old");
  EXPECT_EQ(folder.entry_count(), 1U);
}

TEST(WritingAFile, ThatMayNotBeWrittenLeavesIt) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", "old");
  chmod((folder / "a.txt").c_str(), 0444);
  chmod(folder.path().c_str(), 0777);
  EXPECT_TRUE(holds_for_a_user([&] {
    return error_of_writing(folder / "a.txt") ==
           cannot_write(folder / "a.txt", "Permission denied");
  }));
  EXPECT_EQ(read_file(folder / "a.txt"), "old");
}

TEST(WritingAFile, ThatRunsOutOfSpaceLeavesTheOldFileAndNoOther) {
  const TemporaryFolder folder;
  chmod(folder.path().c_str(), 0777);
  write_file(folder / "a.txt", "old");
  chmod((folder / "a.txt").c_str(), 0666);
  EXPECT_TRUE(holds_for_a_user([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {1000, 1000};
    setrlimit(RLIMIT_FSIZE, &limit);
    return error_of_writing(folder / "a.txt", std::string(5000, 'x')) ==
           cannot_write(folder / "a.txt", "File too large");
  }));
  EXPECT_EQ(read_file(folder / "a.txt"), "old");
  EXPECT_EQ(folder.entry_count(), 1U);
}

TEST(WritingAFile, PassesAFullDeviceOnAsAnError) {
  EXPECT_EQ(error_of_writing("/dev/full"), cannot_write("/dev/full", "No space left on device"));
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

// The reader's end of a pipe, open without anybody who writes.
class PipeReader {
public:
  explicit PipeReader(const std::string& path)
      : file_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {}
  ~PipeReader() { close(file_); }
  PipeReader(const PipeReader&) = delete;
  PipeReader& operator=(const PipeReader&) = delete;

  std::string read_some() const {
    std::array<char, 100> content = {};
    const ssize_t count = read(file_, content.data(), content.size());
    return {content.data(), static_cast<size_t>(std::max<ssize_t>(count, 0))};
  }

private:
  int file_;
};

TEST(WritingAFile, WritesIntoAPipeInsteadOfReplacingIt) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  const PipeReader reader(folder / "pipe");
  write_whole_file(folder / "pipe", "through");
  EXPECT_EQ(reader.read_some(), "through");
  EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
}

TEST(WritingAFile, WaitsForNobodyToReadAPipe) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(error_of_writing(folder / "pipe"),
            cannot_write(folder / "pipe", "No such device or address"));
}

TEST(WritingAFile, WaitsForNoPipeToBecomeEmpty) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  const PipeReader reader(folder / "pipe");
  EXPECT_EQ(error_of_writing(folder / "pipe", std::string(1'000'000, 'x')),
            cannot_write(folder / "pipe", "Resource temporarily unavailable"));
}

TEST(WritingAFile, PassesOverATemporaryFileThatAnotherRunLeft) {
  const TemporaryFolder folder;
  const std::string left = folder / (".qorrt-" + std::to_string(getpid()) + "-0.tmp");
  write_file(left, "half");
  write_whole_file(folder / "a.txt", "whole");
  EXPECT_EQ(read_file(folder / "a.txt"), "whole");
  EXPECT_EQ(read_file(left), "half");
}

TEST(Listing, AFileGivesItsName) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", "");
  EXPECT_EQ(names_at(folder / "a.txt"), Names{"a.txt"});
}

TEST(Listing, NothingThereGivesNothing) {
  const TemporaryFolder folder;
  EXPECT_EQ(names_at(folder / "missing"), Names{});
  EXPECT_EQ(names_at(folder / "missing/deeper"), Names{});
  EXPECT_EQ(names_at(folder / "*.none"), Names{});
}

TEST(Listing, AFolderGivesWhatItHoldsSorted) {
  const TemporaryFolder folder;
  for (const char* name : {"b", "a", ".hidden", "Z"})
    write_file(folder / name, "");
  EXPECT_EQ(names_at(folder.path().string()), (Names{".hidden", "Z", "a", "b"}));
  EXPECT_EQ(names_at(folder.path().string() + "/"), (Names{".hidden", "Z", "a", "b"}));
}

TEST(Listing, AnEmptyFolderGivesNothing) {
  const TemporaryFolder folder;
  EXPECT_EQ(names_at(folder.path().string()), Names{});
}

TEST(Listing, APatternGivesTheNamesThatMatch) {
  const TemporaryFolder folder;
  for (const char* name : {"b.txt", "a.txt", "a.png"})
    write_file(folder / name, "");
  EXPECT_EQ(names_at(folder / "*.txt"), (Names{"a.txt", "b.txt"}));
  EXPECT_EQ(names_at(folder / "a.???"), (Names{"a.png", "a.txt"}));
  EXPECT_EQ(names_at(folder / "[b]*"), Names{"b.txt"});
}

TEST(Listing, ANameThatLooksLikeAPatternIsFoundAsItIs) {
  const TemporaryFolder folder;
  write_file(folder / "a[1].txt", "");
  EXPECT_EQ(names_at(folder / "a[1].txt"), Names{"a[1].txt"});
}

TEST(Listing, AFolderThatMayNotBeReadIsAnError) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "closed");
  write_file(folder / "closed/a.txt", "");
  chmod(folder.path().c_str(), 0755);
  chmod((folder / "closed").c_str(), 0700);
  if (geteuid() != 0)
    chmod((folder / "closed").c_str(), 0);
  EXPECT_TRUE(holds_for_a_user([&] {
    try {
      names_at(folder / "closed/a.txt");
    } catch (const CommandError& error) {
      return std::string(error.what()) ==
             "cannot list \"" + (folder / "closed/a.txt") + "\": Permission denied";
    }
    return false;
  }));
  chmod((folder / "closed").c_str(), 0700);
}

// ---- what a killed program leaves ---------------------------------------------------------------

// Leaves the temporary file that a program writes to, as its kill would.
void be_killed_while_writing(const std::string& path) {
  const pid_t child = fork();
  if (child == 0) {
    const kavo::host::TemporaryFile temporary(fs::path(path).parent_path());
    std::raise(SIGKILL);
  }
  waitpid(child, nullptr, 0);
}

TEST(Leftovers, OfAKilledProgramAreRemoved) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", "old");
  be_killed_while_writing(folder / "a.txt");
  ASSERT_EQ(folder.entry_count(), 2U);
  remove_leftovers(folder.path());
  EXPECT_EQ(folder.entry_count(), 1U);
  EXPECT_EQ(read_file(folder / "a.txt"), "old");
}

TEST(Leftovers, StayWhenAFileIsOnlyLookedFor) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", "old");
  be_killed_while_writing(folder / "a.txt");
  EXPECT_EQ(names_at(folder / "a.txt"), Names{"a.txt"});
  EXPECT_EQ(folder.entry_count(), 2U);
}

TEST(Leftovers, AreNotTheFilesOfAProgramAtWork) {
  const TemporaryFolder folder;
  kavo::host::TemporaryFile at_work(folder.path());
  remove_leftovers(folder.path());
  ASSERT_TRUE(at_work.fill("whole", std::nullopt));
  ASSERT_TRUE(at_work.rename_to(folder / "a.txt"));
  EXPECT_EQ(read_file(folder / "a.txt"), "whole");
}

TEST(Leftovers, AreNothingThatOnlySoundsLikeThem) {
  const TemporaryFolder folder;
  write_file(folder / ".qorrt-notes", "mine");
  write_file(folder / "a.tmp", "mine");
  fs::create_directory(folder / ".qorrt-1-0.tmp");
  fs::create_symlink("a.tmp", folder / ".qorrt-1-1.tmp");
  ASSERT_EQ(mkfifo((folder / ".qorrt-1-2.tmp").c_str(), 0600), 0);
  remove_leftovers(folder.path());
  EXPECT_EQ(folder.entry_count(), 5U);
}

TEST(Leftovers, ThatMayNotBeRemovedAreNoError) {
  const TemporaryFolder folder;
  write_file(folder / ".qorrt-1-0.tmp", "half");
  chmod(folder.path().c_str(), 0555);
  EXPECT_TRUE(holds_for_a_user([&] {
    remove_leftovers(folder.path());
    return true;
  }));
  chmod(folder.path().c_str(), 0755);
  EXPECT_EQ(folder.entry_count(), 1U);
}

// ---- whether a file could be written ------------------------------------------------------------

std::string error_of_trying(const std::string& path, int64_t growth = 1) {
  try {
    try_writing(path, growth);
  } catch (const CommandError& error) {
    return error.what();
  }
  return "";
}

TEST(TryingToWrite, ChangesNothing) {
  const TemporaryFolder folder;
  write_file(folder / "a.txt", "old");
  const auto written = fs::last_write_time(folder / "a.txt");
  EXPECT_EQ(error_of_trying(folder / "a.txt"), "");
  EXPECT_EQ(error_of_trying(folder / "new.txt"), "");
  EXPECT_EQ(read_file(folder / "a.txt"), "old");
  EXPECT_EQ(fs::last_write_time(folder / "a.txt"), written);
  EXPECT_EQ(folder.entry_count(), 1U);
}

TEST(TryingToWrite, FailsAsWritingWould) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "folder");
  for (const std::string& path : {folder / "missing/a.txt", folder / "folder", std::string()})
    EXPECT_EQ(error_of_trying(path), error_of_writing(path));
}

TEST(TryingToWrite, FindsThatTheFileMayGrowNoFurther) {
  const TemporaryFolder folder;
  chmod(folder.path().c_str(), 0777);
  write_file(folder / "a.txt", std::string(990, 'x'));
  chmod((folder / "a.txt").c_str(), 0666);
  EXPECT_TRUE(holds_for_a_user([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {1000, 1000};
    setrlimit(RLIMIT_FSIZE, &limit);
    return error_of_trying(folder / "a.txt", 10).empty() &&
           error_of_trying(folder / "a.txt", 11) ==
               cannot_write(folder / "a.txt", "File too large");
  }));
  EXPECT_EQ(folder.entry_count(), 1U);
}

// As in /tmp, where everybody may make files and replace no others'. Only root has another's.
TEST(TryingToWrite, FindsAnotherUsersFileWhereEverybodyKeepsToTheirOwn) {
  const TemporaryFolder folder;
  chmod(folder.path().c_str(), 01777);
  write_file(folder / "a.txt", "old");
  chmod((folder / "a.txt").c_str(), 0666);
  const std::string expected =
      geteuid() == 0 ? cannot_write(folder / "a.txt", "Operation not permitted") : "";
  EXPECT_TRUE(holds_for_a_user([&] { return error_of_trying(folder / "a.txt") == expected; }));
  EXPECT_TRUE(holds_for_a_user([&] {
    return error_of_writing(folder / "a.txt") == (expected.empty() ? "(no error)" : expected);
  }));
  EXPECT_EQ(folder.entry_count(), 1U);
}

TEST(LinkEnd, IsWhereALinkLeads) {
  const TemporaryFolder folder;
  fs::create_symlink("second", folder / "first");
  fs::create_symlink(folder / "a.txt", folder / "second");
  fs::create_symlink("round", folder / "round");
  EXPECT_EQ(link_end(folder / "first"), folder / "a.txt");
  EXPECT_EQ(link_end(folder / "a.txt"), folder / "a.txt");
  EXPECT_EQ(link_end(folder / "round"), folder / "round");
}

TEST(Listing, TheRootAndDotsWork) {
  EXPECT_FALSE(names_at("/").empty());
  EXPECT_FALSE(names_at("/dev/null").empty());
}

} // namespace
