// Two copies of the real program and one table of scores.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "tests/desktop/game/playing.h"

namespace {

namespace fs = std::filesystem;
using kavo::desktop::Outcome;
using kavo::playing::Conditions;
using kavo::playing::Game;

constexpr const char* table = "tmp/kavo_high.txt";
constexpr const char* lock = "tmp/.kavo_high.txt.lock";

// Of a program that starts where the game is played.
Outcome start_another(Game& game, std::vector<std::string> arguments = {}) {
  return game.desktop.start(kavo::playing::launch(game.folder.path(), "1", std::move(arguments)))
      ->wait();
}

// A game on the table of another, on a display of its own.
Game start_after(const Game& other) {
  return Game(Conditions{
      .change = [&](kavo::desktop::Launch& launch) { launch.folder = other.folder.path(); }});
}

TEST(ASecondCopy, IsNotStartedAndSaysWhy) {
  Game game;
  ASSERT_TRUE(game.is_on_title());
  const Outcome second = start_another(game);
  EXPECT_TRUE(second.has_exited);
  EXPECT_EQ(second.code, 0);
  EXPECT_EQ(second.output, "");
  EXPECT_EQ(second.errors, "the game is running already, with these scores; play there (in " +
                               fs::canonical(game.folder.path()).string() + ")\n");
  game.start_playing();
  EXPECT_EQ(game.move(-1) + game.move(1), 2);
}

TEST(ASecondCopy, OnTheSameTableThroughALinkIsNotStarted) {
  Game game;
  ASSERT_TRUE(game.is_on_title());
  const kavo::test::TemporaryFolder elsewhere;
  fs::create_directory(elsewhere / "tmp");
  fs::create_symlink(game.folder / table, elsewhere / table);
  const Outcome second =
      game.desktop.start(kavo::playing::launch(elsewhere.path(), "", {}))->wait();
  EXPECT_EQ(second.code, 0);
  EXPECT_TRUE(second.errors.starts_with("the game is running already")) << second.errors;
}

TEST(ASecondCopy, LeavesTheScoresOfTheFirst) {
  Game game;
  game.lose();
  EXPECT_EQ(start_another(game).code, 0);
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  EXPECT_TRUE(kavo::test::read_file(game.folder / table).starts_with("AAA;"));
}

TEST(ASecondCopy, MayDrawAScene) {
  Game game;
  ASSERT_TRUE(game.is_on_title());
  const Outcome scene = start_another(game, {"shot", "opts"});
  EXPECT_EQ(scene.code, 0);
  EXPECT_EQ(scene.output, "opts shot\n");
  EXPECT_EQ(scene.errors, "");
}

TEST(ASecondCopy, IsStartedOnceTheFirstHasEnded) {
  Game first;
  ASSERT_TRUE(first.is_on_title());
  first.tap("Escape");
  EXPECT_EQ(first.process->wait().code, 0);
  EXPECT_TRUE(fs::is_empty(first.folder / "tmp"));
  Game second = start_after(first);
  EXPECT_TRUE(second.is_on_title());
}

TEST(ASecondCopy, IsStartedWhenTheFirstWasKilled) {
  Game first;
  ASSERT_TRUE(first.is_on_title());
  first.process->send_signal(SIGKILL);
  first.process->wait();
  EXPECT_TRUE(fs::exists(first.folder / lock));
  Game second = start_after(first);
  ASSERT_TRUE(second.is_on_title());
  second.tap("Escape");
  EXPECT_EQ(second.process->wait().errors, "");
  EXPECT_TRUE(fs::is_empty(first.folder / "tmp"));
}

TEST(ASecondCopy, ElsewhereIsAGameOfItsOwn) {
  Game first;
  Game second;
  EXPECT_TRUE(first.is_on_title());
  EXPECT_TRUE(second.is_on_title());
}

// Nobody can hold a lock there; better two games than none.
TEST(ASecondCopy, IsStartedWhereNothingCanBeLocked) {
  Game game(Conditions{.arrange = [](const kavo::test::TemporaryFolder& folder) {
    fs::create_directories(folder / lock);
  }});
  ASSERT_TRUE(game.is_on_title());
  Game second = start_after(game);
  EXPECT_TRUE(second.is_on_title());
  EXPECT_TRUE(fs::is_directory(game.folder / lock));
}

} // namespace
