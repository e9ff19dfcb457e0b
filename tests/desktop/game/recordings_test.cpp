// The real program keeps the games that are played, and plays them again.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/desktop/game/playing.h"

namespace {

namespace fs = std::filesystem;
using kavo::desktop::Launch;
using kavo::desktop::Outcome;
using kavo::desktop::Process;
using kavo::playing::Conditions;
using kavo::playing::Game;
using kavo::test::read_file;
using kavo::test::TemporaryFolder;
using kavo::test::write_file;

std::string games_folder(const Game& game) {
  return game.folder / "state/kavo/games";
}

std::vector<fs::path> games_in(const std::string& folder) {
  if (!fs::exists(folder))
    return {};
  return {fs::directory_iterator(folder), fs::directory_iterator()};
}

Outcome verify(const Game& game, const std::vector<std::string>& words = {}) {
  std::vector<std::string> arguments = {"--replay", "--verify"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  Launch launch = kavo::playing::launch(game.folder.path(), "", arguments);
  launch.environment["DISPLAY"] = std::nullopt;
  return Process(launch).wait();
}

void leave(Game& game) {
  game.tap("Escape");
  EXPECT_EQ(game.process->wait().code, 0);
}

TEST(Recordings, AGameThatWasNamedEndsAsRecordedWhenItIsPlayedAgain) {
  Game game;
  game.lose();
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  leave(game);
  ASSERT_EQ(games_in(games_folder(game)).size(), 1U);
  const std::string file = games_in(games_folder(game)).front();
  const std::string table = read_file(game.folder / "tmp/kavo_high.txt");
  for (const auto& words : {std::vector<std::string>{}, std::vector<std::string>{file}}) {
    const Outcome outcome = verify(game, words);
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    EXPECT_NE(outcome.output.find("ended as recorded"), std::string::npos) << outcome.output;
    EXPECT_EQ(outcome.errors, "");
  }
  EXPECT_EQ(read_file(game.folder / "tmp/kavo_high.txt"), table);
  EXPECT_EQ(games_in(games_folder(game)).size(), 1U) << "a replay was kept as a game";
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(fs::status(games_folder(game)).permissions(), fs::perms::owner_all);
}

TEST(Recordings, AGameThatIsLeftOrKilledIsKeptAsFarAsItWent) {
  Game game;
  game.start_playing();
  game.move(-2);
  game.process->send_signal(SIGTERM);
  EXPECT_EQ(game.process->wait().code, 0);
  ASSERT_EQ(games_in(games_folder(game)).size(), 1U);
  const Outcome left = verify(game);
  EXPECT_EQ(left.code, 1);
  EXPECT_NE(left.output.find("the same as far as it was recorded"), std::string::npos)
      << left.output << left.errors;

  Game killed;
  killed.start_playing();
  killed.move(-2);
  EXPECT_TRUE(kavo::desktop::eventually([&] {
    const auto games = games_in(games_folder(killed));
    return !games.empty() && fs::file_size(games.front()) > 6000;
  }));
  killed.process->send_signal(SIGKILL);
  EXPECT_FALSE(killed.process->wait().has_exited);
  const Outcome outcome = verify(killed);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.output.find("the same as far as it was recorded"), std::string::npos)
      << outcome.output << outcome.errors;
}

TEST(Recordings, NoneIsKeptWhereThePlayerWantsNone) {
  Game game(Conditions{.change = [](Launch& launch) { launch.environment["QORRT_RECORD"] = "0"; }});
  game.lose();
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  leave(game);
  EXPECT_FALSE(fs::exists(games_folder(game)));
  EXPECT_EQ(verify(game).errors, "kavo: no game is kept in " + games_folder(game) + "\n");
}

void expect_a_game_that_is_not_recorded(Game& game, const std::string& reason) {
  game.lose();
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  game.lose();
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  game.tap("Escape");
  const Outcome outcome = game.process->wait();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "this game is not recorded: cannot " + reason + "\n");
}

TEST(Recordings, WithoutAFolderForThemPlayGoesOnAndTheReasonIsToldOnce) {
  Game game(Conditions{
      .arrange = [](const TemporaryFolder& folder) { write_file(folder / "state", "mine"); }});
  expect_a_game_that_is_not_recorded(game,
                                     "make \"" + game.folder / "state/kavo\": Not a directory");
  EXPECT_EQ(read_file(game.folder / "state"), "mine");
}

TEST(Recordings, BeyondTheLargestSizeOfAFilePlayGoesOn) {
  Game game(Conditions{.change = [](Launch& launch) {
    launch.last_act = [] {
      const rlimit limit = {4000, 4000};
      setrlimit(RLIMIT_FSIZE, &limit);
    };
  }});
  game.lose();
  EXPECT_TRUE(game.is_entering_a_name());
  const std::string told = game.process->errors_so_far();
  EXPECT_TRUE(told.starts_with("this game is not recorded: cannot write \"")) << told;
  EXPECT_TRUE(told.ends_with(": File too large\n")) << told;
}

constexpr const char* play_with_a_full_disk_for_games = R"sh(
mkdir -p state
mount -t tmpfs -o size=4k none state || exit 99
exec "$0")sh";

TEST(Recordings, OnAFullDiskPlayGoesOn) {
  const auto outcome =
      Process({{"unshare", "-rm", "mount", "-t", "tmpfs", "none", "/mnt"}, {}, "."}).wait();
  if (!outcome.has_exited || outcome.code != 0)
    GTEST_SKIP() << "no file system may be mounted here; the largest size of a file stands in";
  Game game(Conditions{.change = [](Launch& launch) {
    launch.arguments = {"unshare",   "-rm", "sh", "-c", play_with_a_full_disk_for_games,
                        KAVO_PROGRAM};
  }});
  game.lose();
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  game.tap("Escape");
  const Outcome end = game.process->wait();
  EXPECT_EQ(end.code, 0);
  EXPECT_TRUE(end.errors.ends_with(": No space left on device\n")) << end.errors;
}

TEST(Recordings, AKeptGameIsShownInTheWindowAndLeftByEscapeOrByClosingIt) {
  Game played;
  played.lose();
  played.enter_name();
  EXPECT_TRUE(played.is_on_title());
  leave(played);
  const std::string file = games_in(games_folder(played)).front();
  const std::string content = read_file(file);
  const auto show = [&file](Launch& launch) {
    launch.arguments.insert(launch.arguments.end(), {"--replay", file});
  };

  Game shown(Conditions{.change = show});
  EXPECT_TRUE(shown.is_playing());
  shown.tap("space");
  shown.tap("space");
  shown.tap("End");
  shown.tap("Escape");
  const Outcome outcome = shown.process->wait();
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_EQ(outcome.errors, "");
  EXPECT_FALSE(fs::exists(shown.folder / "tmp")) << "it keeps scores";
  EXPECT_FALSE(fs::exists(games_folder(shown))) << "it keeps games";

  Game closed(Conditions{.change = show});
  EXPECT_TRUE(closed.is_playing());
  closed.window->ask_to_close();
  EXPECT_EQ(closed.process->wait().code, 0);
  EXPECT_EQ(read_file(file), content);
}

TEST(Recordings, AFileThatIsNoneIsNamed) {
  const TemporaryFolder folder;
  write_file(folder / "picture.kavo", "\x89PNG\r\n\x1A\n");
  for (const auto& [file, reason] : std::vector<std::pair<std::string, std::string>>{
           {folder / "picture.kavo", "\": it is no recording of a game\n"},
           {folder.path(), "\": it is no file\n"},
           {"/dev/zero", "\": it is no file\n"}}) {
    const Launch launch = kavo::playing::launch(folder.path(), "", {"--replay", "--verify", file});
    const Outcome outcome = Process(launch).wait();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.errors, "kavo: \"" + file + reason);
  }
}

} // namespace
