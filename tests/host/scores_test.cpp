// What a program finds out about its table of scores before it plays.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/scores/scores.h"
#include "host/scores/table_file.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using kavo::host::look_at_table;
using kavo::host::OnlyCopy;
using kavo::host::Scores;
using kavo::host::TableFile;
using kavo::test::read_file;
using kavo::test::write_file;

constexpr const char* table = "tmp/kavo_high.txt";
constexpr const char* lock = "tmp/.kavo_high.txt.lock";

class ScoresTest : public testing::Test {
protected:
  void prepare(std::vector<const char*> words = {"kavo"}) {
    scores.prepare_for(static_cast<int>(words.size()), words.data());
  }

  // In a process of its own; whether it returned true.
  static bool holds_elsewhere(const std::function<bool()>& check) {
    const pid_t child = fork();
    if (child == 0)
      _exit(check() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }

  kavo::test::WorkingFolder folder;
  Scores scores;
};

TEST_F(ScoresTest, AreNobodysOfAProgramWithoutAName) {
  scores.prepare_for(0, nullptr);
  EXPECT_FALSE(fs::exists("tmp"));
  EXPECT_FALSE(scores.hides(table));
  EXPECT_FALSE(scores.drops(table));
}

TEST_F(ScoresTest, AreKeptInAnEmptyFolder) {
  prepare();
  EXPECT_FALSE(scores.are_taken());
  EXPECT_TRUE(scores.news().empty());
  EXPECT_FALSE(scores.drops(table));
  EXPECT_FALSE(scores.hides(table));
  EXPECT_TRUE(fs::exists(lock));
  EXPECT_FALSE(fs::exists(table));
}

TEST_F(ScoresTest, AreLeftWithNothingBehind) {
  prepare();
  scores.leave();
  EXPECT_TRUE(fs::is_empty("tmp"));
}

TEST_F(ScoresTest, AreTakenWhileAnotherProgramHasThem) {
  prepare();
  EXPECT_TRUE(holds_elsewhere([] {
    Scores second;
    const char* name = "kavo";
    second.prepare_for(1, &name);
    return second.are_taken() && second.news().size() == 1;
  }));
}

TEST_F(ScoresTest, AreNotLetGoByAProcessThatWasForkedOff) {
  prepare();
  EXPECT_TRUE(holds_elsewhere([&] {
    scores.leave();
    return fs::exists(lock);
  }));
  Scores second;
  const char* name = "kavo";
  second.prepare_for(1, &name);
  EXPECT_TRUE(second.are_taken());
}

TEST_F(ScoresTest, AreFreeOnceTheirHolderIsGoneThoughItsLockFileStays) {
  fs::create_directory("tmp");
  write_file(lock, "");
  prepare();
  EXPECT_FALSE(scores.are_taken());
}

TEST_F(ScoresTest, TakeNoLockForAScene) {
  prepare({"kavo", "shot", "storm"});
  EXPECT_TRUE(fs::is_empty("tmp"));
}

TEST_F(ScoresTest, OfASceneMoveNothing) {
  fs::create_directories(table);
  prepare({"kavo", "shot"});
  EXPECT_TRUE(fs::is_directory(table));
  EXPECT_TRUE(scores.hides(table));
  EXPECT_TRUE(scores.news().empty());
}

TEST_F(ScoresTest, MakeAFolderThatItsOwnerCanUseWhateverTheMask) {
  const mode_t before = umask(0777);
  prepare();
  umask(before);
  EXPECT_EQ(fs::status("tmp").permissions(), fs::perms::owner_all);
  EXPECT_EQ(fs::status(lock).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_TRUE(scores.news().empty());
}

TEST_F(ScoresTest, RemoveWhatAKilledProgramLeft) {
  fs::create_directory("tmp");
  write_file("tmp/.qorrt-1-0.tmp", "half");
  prepare();
  EXPECT_FALSE(fs::exists("tmp/.qorrt-1-0.tmp"));
}

TEST_F(ScoresTest, RemoveWhatAKilledProgramLeftWhereALinkLeads) {
  fs::create_directory("tmp");
  fs::create_directory("elsewhere");
  fs::create_symlink("../elsewhere/table", table);
  write_file("elsewhere/.qorrt-1-0.tmp", "half");
  prepare();
  EXPECT_FALSE(fs::exists("elsewhere/.qorrt-1-0.tmp"));
  EXPECT_TRUE(fs::exists("elsewhere/.table.lock"));
}

TEST_F(ScoresTest, CannotBeKeptForTheReasonThatTheEnvironmentGives) {
  setenv("QORRT_NO_SCORES", "there is no home", 1);
  prepare();
  unsetenv("QORRT_NO_SCORES");
  EXPECT_EQ(scores.news(), std::vector<std::string>{"scores are not kept: there is no home"});
  EXPECT_TRUE(scores.hides(table));
  EXPECT_TRUE(scores.drops(table));
  EXPECT_FALSE(scores.drops("tmp/other.txt"));
  EXPECT_FALSE(fs::exists("tmp"));
}

TEST_F(ScoresTest, OfAFileWhereTheFolderShouldBeAreNotKept) {
  write_file("tmp", "mine");
  prepare();
  EXPECT_TRUE(scores.drops(table));
  EXPECT_TRUE(scores.hides(table));
  EXPECT_EQ(read_file("tmp"), "mine");
}

TEST_F(ScoresTest, ThatCannotBePutAsideAreHiddenAndNotKept) {
  fs::create_directories(table);
  ASSERT_EQ(chmod(".", 0755) + chmod("tmp", 0555), 0);
  const bool is_refused = holds_elsewhere([&] {
    if (geteuid() == 0 && seteuid(65534) != 0)
      return false;
    prepare();
    return scores.hides(table) && scores.drops(table) && scores.news().size() == 1;
  });
  ASSERT_EQ(chmod("tmp", 0755), 0);
  EXPECT_TRUE(is_refused);
  EXPECT_TRUE(fs::is_directory(table));
}

TEST_F(ScoresTest, OfSixtyFourKibibytesAreATableAndNoLarger) {
  write_file("table", std::string(65'536, '\n'));
  EXPECT_EQ(look_at_table("table").kind, TableFile::Kind::table);
  write_file("table", std::string(65'537, '\n'));
  EXPECT_EQ(look_at_table("table").kind, TableFile::Kind::no_table);
}

// The kernel's files say that they are empty.
TEST_F(ScoresTest, CountWhatComesOutOfAFileThatHidesItsSize) {
  EXPECT_EQ(look_at_table("/proc/kallsyms").kind, TableFile::Kind::no_table);
}

TEST_F(ScoresTest, AreMissingWhereALinkLeadsToNothingYet) {
  fs::create_symlink("nothing", "table");
  EXPECT_EQ(look_at_table("table").kind, TableFile::Kind::missing);
}

TEST_F(ScoresTest, BehindAFolderThatIsALinkThatGoesRoundAreOutOfReach) {
  fs::create_symlink("round", "round");
  EXPECT_EQ(look_at_table("round/table").kind, TableFile::Kind::out_of_reach);
}

// A holder that ends takes its lock file along; who has opened that meanwhile holds nothing.
TEST_F(ScoresTest, AreTakenByOneOfManyThatComeAndGo) {
  constexpr int programs = 4;
  constexpr int rounds = 200;
  const auto take_turns = [] {
    for (int i = 0; i < rounds; ++i) {
      OnlyCopy copy;
      if (!copy.enter("table"))
        continue;
      const int mine = open("inside", O_CREAT | O_EXCL | O_CLOEXEC, 0600);
      if (mine < 0)
        return false;
      close(mine);
      unlink("inside");
    }
    return true;
  };
  std::array<pid_t, programs> ids = {};
  for (pid_t& id : ids) {
    id = fork();
    if (id == 0)
      _exit(take_turns() ? 0 : 1);
  }
  for (const pid_t id : ids) {
    int status = 0;
    waitpid(id, &status, 0);
    EXPECT_EQ(status, 0);
  }
}

} // namespace
