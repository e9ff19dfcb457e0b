// The real program, played to a high score that cannot be saved, or not where it seems to be.
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <thread>
#include <utility>

#include "tests/desktop/game/playing.h"

namespace {

namespace fs = std::filesystem;
using kavo::playing::Conditions;
using kavo::playing::Game;
using kavo::test::read_file;
using kavo::test::TemporaryFolder;
using kavo::test::write_file;

constexpr const char* scores = "tmp/kavo_high.txt";
constexpr const char* old_table = "OLD;5\n---;0\n---;0\n---;0\n---;0";

void put_old_table(const TemporaryFolder& folder) {
  fs::create_directory(folder / "tmp");
  write_file(folder / scores, old_table);
}

// What is told before play begins when scores are not kept.
std::string not_kept(const std::string& action, const std::string& reason,
                     const std::string& folder) {
  return "scores are not kept: cannot " + action + " \"tmp/kavo_high.txt\": " + reason +
         (folder.empty() ? "" : " (in " + folder + ")") + "\n";
}

// Plays to the name, enters it and leaves through the title.
void expect_a_game_that_tells(Game& game, const std::string& told) {
  game.lose();
  EXPECT_EQ(game.process->errors_so_far(), told);
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  game.tap("Escape");
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, told);
}

void expect_scores_not_kept(Game& game, const std::string& reason) {
  expect_a_game_that_tells(game, not_kept("write", reason, fs::canonical(game.folder.path())));
}

// Plays to the name, enters it and expects the program to end with what it could not do.
void expect_refusal(Game& game, const std::string& reason) {
  game.lose();
  game.enter_name();
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors,
            "Unhandled exception: BINWRITER: cannot write \"tmp/kavo_high.txt\": " + reason + "\n");
}

void expect_only_the_old_table(const TemporaryFolder& folder) {
  EXPECT_EQ(read_file(folder / scores), old_table);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder / "tmp"), fs::directory_iterator()), 1);
}

// The table as it is after the first name was entered above the old one.
bool is_new_table(const std::string& path) {
  const std::string table = read_file(path);
  return table.starts_with("AAA;") && table.ends_with("\nOLD;5\n---;0\n---;0\n---;0");
}

TEST(Saving, BeyondTheLargestSizeOfAFileIsNotTried) {
  // The line that tells it and the settings have to fit, the table with its long name has not.
  const std::string long_table = std::string(20'000, 'N') + ";5";
  Game game(Conditions{.arrange =
                           [&](const TemporaryFolder& folder) {
                             put_old_table(folder);
                             write_file(folder / scores, long_table);
                           },
                       .change =
                           [](kavo::desktop::Launch& launch) {
                             launch.environment["QORRT_RECORD"] = "0";
                             launch.last_act = [] {
                               const rlimit limit = {10'000, 10'000};
                               setrlimit(RLIMIT_FSIZE, &limit);
                             };
                           }});
  expect_scores_not_kept(game, "File too large");
  EXPECT_EQ(read_file(game.folder / scores), long_table);
}

// A file system of one page, which the old table fills, seen by the program alone. What is on it
// when the program has ended comes as its output.
constexpr const char* play_on_a_full_disk = R"sh(
mount -t tmpfs -o size=4k none tmp || exit 99
printf %s "$1" >tmp/kavo_high.txt
"$0"
status=$?
cat tmp/kavo_high.txt
printf ' and %d in all' "$(ls -A tmp | wc -l)"
exit $status)sh";

bool may_mount() {
  const auto outcome =
      kavo::desktop::Process({{"unshare", "-rm", "mount", "-t", "tmpfs", "none", "/mnt"}, {}, "."})
          .wait();
  return outcome.has_exited && outcome.code == 0;
}

TEST(Saving, OnAFullDiskIsNotTriedAndTheOldTableStays) {
  if (!may_mount())
    GTEST_SKIP() << "no file system may be mounted here; the largest size of a file stands in";
  Game game(Conditions{.arrange = put_old_table, .change = [](kavo::desktop::Launch& launch) {
                         launch.arguments = {"unshare",           "-rm",        "sh",     "-c",
                                             play_on_a_full_disk, KAVO_PROGRAM, old_table};
                       }});
  game.lose();
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  game.tap("Escape");
  const auto outcome = game.process->wait();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors,
            not_kept("write", "No space left on device", fs::canonical(game.folder.path())));
  EXPECT_EQ(outcome.output, "done\n" + std::string(old_table) + " and 1 in all");
}

// Root is stopped by permissions like everybody else once it has given this up.
void obey_permissions(kavo::desktop::Launch& launch) {
  launch.last_act = [] {
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
  };
}

TEST(Saving, InAFolderThatMayNotBeWrittenIsNotTriedAndTheOldTableStays) {
  Game game(Conditions{.arrange =
                           [](const TemporaryFolder& folder) {
                             put_old_table(folder);
                             fs::permissions(folder / "tmp",
                                             fs::perms::owner_read | fs::perms::owner_exec);
                           },
                       .change = obey_permissions});
  expect_scores_not_kept(game, "Permission denied");
  expect_only_the_old_table(game.folder);
  fs::permissions(game.folder / "tmp", fs::perms::owner_all);
}

TEST(Saving, InAFolderThatIsClosedMeanwhileIsAnErrorAndTheOldTableStays) {
  Game game(Conditions{.arrange = put_old_table, .change = obey_permissions});
  ASSERT_TRUE(game.is_on_title());
  fs::permissions(game.folder / "tmp", fs::perms::owner_read | fs::perms::owner_exec);
  expect_refusal(game, "Permission denied");
  fs::permissions(game.folder / "tmp", fs::perms::owner_all);
  EXPECT_EQ(read_file(game.folder / scores), old_table);
}

TEST(Saving, InAFolderThatMayNotBeEnteredIsNotTried) {
  Game game(Conditions{.arrange =
                           [](const TemporaryFolder& folder) {
                             put_old_table(folder);
                             fs::permissions(folder / "tmp", fs::perms::none);
                           },
                       .change = obey_permissions});
  expect_a_game_that_tells(
      game, not_kept("read", "Permission denied", fs::canonical(game.folder.path())));
  fs::permissions(game.folder / "tmp", fs::perms::owner_all);
  expect_only_the_old_table(game.folder);
}

TEST(Saving, OverAFileThatMayNotBeReadIsNotTriedAndItStays) {
  Game game(Conditions{.arrange =
                           [](const TemporaryFolder& folder) {
                             put_old_table(folder);
                             fs::permissions(folder / scores, fs::perms::none);
                           },
                       .change = obey_permissions});
  expect_a_game_that_tells(
      game, not_kept("read", "Permission denied", fs::canonical(game.folder.path())));
  EXPECT_EQ(fs::status(game.folder / scores).permissions(), fs::perms::none);
  fs::permissions(game.folder / scores, fs::perms::owner_all);
  expect_only_the_old_table(game.folder);
}

TEST(Saving, OverAFileThatMayNotBeWrittenIsNotTriedAndTheOldTableStays) {
  Game game(Conditions{.arrange =
                           [](const TemporaryFolder& folder) {
                             put_old_table(folder);
                             fs::permissions(folder / scores, fs::perms::owner_read);
                           },
                       .change = obey_permissions});
  expect_scores_not_kept(game, "Permission denied");
  expect_only_the_old_table(game.folder);
}

TEST(Saving, WhereAFileStandsForTheFolderIsNotTriedAndTheFileStays) {
  Game game(Conditions{
      .arrange = [](const TemporaryFolder& folder) { write_file(folder / "tmp", "mine"); }});
  expect_a_game_that_tells(game,
                           not_kept("read", "Not a directory", fs::canonical(game.folder.path())));
  EXPECT_EQ(read_file(game.folder / "tmp"), "mine");
}

// The second start reads what the first one saved, and finds it no worse than its own.
TEST(Saving, UnderAMaskThatTakesEverythingLeavesATableThatItsOwnerCanRead) {
  const auto close_everything = [](kavo::desktop::Launch& launch) {
    launch.last_act = [] {
      prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
      prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
      umask(0777);
    };
  };
  Game game(Conditions{.change = close_everything});
  expect_a_game_that_tells(game, "");
  EXPECT_EQ(fs::status(game.folder / scores).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
  Game again(Conditions{.change = [&](kavo::desktop::Launch& launch) {
    close_everything(launch);
    launch.folder = game.folder.path();
  }});
  expect_a_game_that_tells(again, "");
  const std::string table = read_file(game.folder / scores);
  EXPECT_NE(table.find("\nAAA;"), std::string::npos) << table;
}

TEST(Saving, ThroughALinkReplacesTheFileItLeadsToAndLeavesTheLink) {
  Game game(Conditions{.arrange = [](const TemporaryFolder& folder) {
    put_old_table(folder);
    fs::create_directory(folder / "elsewhere");
    fs::rename(folder / scores, folder / "elsewhere/table");
    fs::create_symlink("../elsewhere/table", folder / scores);
  }});
  game.lose();
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  EXPECT_TRUE(fs::is_symlink(game.folder / scores));
  EXPECT_TRUE(is_new_table(game.folder / "elsewhere/table"));
}

TEST(Saving, ThroughALinkToNoFolderIsNotTriedAndTheLinkStays) {
  Game game(Conditions{.arrange = [](const TemporaryFolder& folder) {
    fs::create_directory(folder / "tmp");
    fs::create_symlink("../missing/table", folder / scores);
  }});
  expect_scores_not_kept(game, "No such file or directory");
  EXPECT_TRUE(fs::is_symlink(game.folder / scores));
}

TEST(Saving, InAFolderThatWasDeletedIsNotTried) {
  Game game(Conditions{.change = [](kavo::desktop::Launch& launch) {
    fs::create_directory(launch.folder + "/gone");
    launch.folder += "/gone";
    launch.last_act = [] { rmdir(fs::current_path().c_str()); };
  }});
  expect_a_game_that_tells(game, not_kept("write", "No such file or directory", ""));
}

// How often the real program is killed around a save; tests of the two libraries alone, which need
// no game for each kill, do it far more often.
int kills_wanted() {
  const char* wanted = std::getenv("KAVO_PROGRAM_KILLS");
  return wanted == nullptr ? 2 : std::atoi(wanted);
}

// From the key press on: the frame in which it is seen, the save, and some time after it.
void kill_around_the_save(Game& game, int delay_us) {
  game.lose();
  game.enter_name();
  std::this_thread::sleep_for(std::chrono::microseconds(delay_us));
  game.process->send_signal(SIGKILL);
  const auto outcome = game.process->wait();
  EXPECT_FALSE(outcome.has_exited) << outcome.errors;
}

void start_again_in(const Game& game) {
  kavo::desktop::Launch launch = kavo::playing::launch(game.folder.path(), "", {});
  launch.environment["DISPLAY"] = std::nullopt; // which it asks for when it has its scores
  EXPECT_EQ(kavo::desktop::Process(launch).wait().code, 1);
}

TEST(Saving, IsWholeOrNotDoneWhenTheProgramIsKilled) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> delay_us(0, 40'000);
  int saved = 0;
  const int kills = kills_wanted();
  for (int i = 0; i < kills; ++i) {
    Game game(Conditions{.arrange = put_old_table});
    kill_around_the_save(game, delay_us(random));
    const bool is_saved = is_new_table(game.folder / scores);
    EXPECT_TRUE(is_saved || read_file(game.folder / scores) == old_table);
    saved += is_saved;
    start_again_in(game);
    EXPECT_EQ(std::distance(fs::directory_iterator(game.folder / "tmp"), fs::directory_iterator()),
              1);
  }
  std::printf("%d kills of the program, %d after the save\n", kills, saved);
}

} // namespace
