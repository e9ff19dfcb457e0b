// Help and settings in the real game's window, with real keys.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/desktop/game/playing.h"

namespace {

using kavo::desktop::eventually;
using kavo::playing::Conditions;
using kavo::playing::Game;

constexpr int row_of_keys = 11; // on the page of settings
constexpr int row_of_drop = 4;  // on that of the keys

bool is_kept(const Game& game, const std::string& line) {
  return kavo::desktop::eventually([&] {
    const std::string text = kavo::test::read_file(game.folder / "config/kavo/settings.ini");
    return text.find("\n" + line + "\n") != std::string::npos;
  });
}

void open_panel(Game& game) {
  game.tap("F1");
  ASSERT_TRUE(game.is_panel_open());
}

TEST(OpenPanel, StandsAboveEveryScreenWhichGoesOnWhereItWas) {
  Game game;
  const auto look_in = [&game] {
    open_panel(game);
    game.tap("Escape");
  };
  ASSERT_TRUE(game.is_on_title());
  look_in();
  ASSERT_TRUE(game.is_on_title());
  game.tap("o");
  ASSERT_TRUE(game.is_in_options());
  look_in();
  ASSERT_TRUE(game.is_in_options());
  game.tap("Escape");
  game.start_playing();
  look_in();
  ASSERT_TRUE(game.is_playing());
  game.tap("p");
  ASSERT_TRUE(game.is_paused());
  look_in();
  ASSERT_TRUE(game.is_paused());
}

TEST(OpenPanel, KeepsWhatIsSetForTheNextStart) {
  Game game;
  ASSERT_TRUE(game.is_on_title());
  open_panel(game);
  for (const char* key : {"Down", "Return", "Left", "Left"})
    game.tap(key);
  EXPECT_TRUE(is_kept(game, "music = 90"));
  game.window->ask_to_close();
  EXPECT_EQ(game.process->wait().errors, "");
  Game next(Conditions{.change = [&](kavo::desktop::Launch& launch) {
    launch.folder = game.folder.path();
    launch.environment["XDG_CONFIG_HOME"] = game.folder / "config";
  }});
  ASSERT_TRUE(next.is_on_title());
  open_panel(next);
  for (const char* key : {"Down", "Return", "Left"})
    next.tap(key);
  EXPECT_TRUE(is_kept(game, "music = 85"));
}

constexpr uint32_t chosen_ground = 0x1C3048;

// A page's rows: where the chosen one has its ground, and how far it is to the next.
struct Rows {
  int x;
  int height;
};
constexpr Rows of_settings = {62, 38};
constexpr Rows of_keys = {242, 40};

// Steps down from the first row to this one, each step seen: one key
// twice within two milliseconds is a key that repeats itself, to the window system's library.
void step_down(Game& game, int row, Rows rows) {
  for (int next = 1; next <= row; ++next) {
    game.tap("Down");
    ASSERT_TRUE(game.shows([=](const auto& picture) {
      return picture.at(rows.x, 142 + rows.height * next) == chosen_ground;
    })) << next;
  }
}

void open_settings(Game& game) {
  open_panel(game);
  game.tap("Down");
  game.tap("Return");
  ASSERT_TRUE(game.is_panel_open()); // again the first row of a page
}

// The next start of the same player's.
Conditions next_of(const Game& game, Conditions conditions) {
  conditions.change = [&game](kavo::desktop::Launch& launch) {
    launch.folder = game.folder.path();
    for (const char* name : {"CONFIG", "STATE"})
      launch.environment["XDG_" + std::string(name) + "_HOME"] =
          game.folder / (name == std::string("CONFIG") ? "config" : "state");
  };
  return conditions;
}

TEST(OpenPanel, BindsAnotherKeyForThisGameAndTheNext) {
  Game game;
  ASSERT_TRUE(game.is_on_title());
  open_settings(game);
  step_down(game, row_of_keys, of_settings);
  game.tap("Return");
  step_down(game, row_of_drop, of_keys);
  game.tap("Return");
  game.tap("o");
  EXPECT_TRUE(is_kept(game, "drop = O"));
  game.tap("F1");
  ASSERT_TRUE(game.is_on_title());
  game.tap("o");
  EXPECT_TRUE(game.is_playing());
  game.window->ask_to_close();
  EXPECT_EQ(game.process->wait().errors, "");
  Game next(next_of(game, {}));
  ASSERT_TRUE(next.is_on_title());
  next.tap("o");
  EXPECT_TRUE(next.is_playing());
}

constexpr kavo::desktop::DisplaySize large_display = {1600, 1900};

TEST(AHeldKey, MovesThePieceToTheEdgeWhenItRepeatsItself) {
  Game game(Conditions{.arrange = [](const kavo::test::TemporaryFolder& folder) {
    std::filesystem::create_directories(folder / "config/kavo");
    kavo::test::write_file(folder / "config/kavo/settings.ini",
                           "[repeat]\non = yes\ndelay = 100\nrate = 30\n");
  }});
  game.start_playing();
  ASSERT_TRUE(game.is_piece_high());
  ASSERT_GT(game.leftmost_column(), 1);
  game.desktop.press("Left");
  EXPECT_TRUE(eventually([&] { return game.leftmost_column() == 0; }));
  game.desktop.release("Left");
}

TEST(TheWindow, BeginsAsLargeAsLeavesATenthAndTakesWholeMultiples) {
  Game game(Conditions{.displays = {large_display}, .has_window_manager = true});
  ASSERT_TRUE(eventually([&] { return game.window->size().height == 1600; }));
  EXPECT_EQ(game.window->size().width, 1320);
  game.tap("F1");
  game.tap("Down");
  game.tap("Return");
  ASSERT_TRUE(
      game.shows([](const auto& picture) { return picture.at(162, 284) == chosen_ground; }));
  for (int row = 1; row <= 3; ++row) {
    game.tap("Down");
    ASSERT_TRUE(game.shows(
        [=](const auto& picture) { return picture.at(162, 284 + 76 * row) == chosen_ground; }));
  }
  game.tap("Left");
  EXPECT_TRUE(eventually([&] { return game.window->size().height == 800; }));
  EXPECT_EQ(game.window->size().width, 660);
}

TEST(TheWindow, IsWhereItWasAtTheNextStart) {
  const Conditions conditions = {.displays = {large_display}, .has_window_manager = true};
  Game game(conditions);
  ASSERT_TRUE(eventually([&] { return game.window->size().height == 1600; }));
  game.window->resize(700, 900);
  game.window->move(300, 200);
  ASSERT_TRUE(eventually([&] {
    const auto place = game.window->place();
    return place.width == 700 && place.height == 900 && place.x >= 300 && place.x < 320;
  }));
  const auto before = game.window->place();
  for (int start = 0; start < 2; ++start) {
    game.window->ask_to_close();
    EXPECT_EQ(game.process->wait().errors, "");
    game.process = game.desktop.start(kavo::playing::launch(game.folder.path(), "", {}));
    game.window = game.desktop.wait_for_window(kavo::playing::title);
    EXPECT_TRUE(eventually([&] { return game.window->place() == before; }))
        << game.window->place().x << " " << game.window->place().y << " is not " << before.x << " "
        << before.y;
  }
}

TEST(TheWindow, FillsTheDisplayAgainWhenItDid) {
  const Conditions conditions = {.has_window_manager = true};
  Game game(conditions);
  ASSERT_TRUE(game.is_on_title());
  game.tap("F11");
  ASSERT_TRUE(eventually([&] { return game.window->size().width == 1280; }));
  game.window->ask_to_close();
  EXPECT_EQ(game.process->wait().errors, "");
  Game next(next_of(game, conditions));
  EXPECT_TRUE(eventually([&] { return next.window->size().width == 1280; }));
  next.tap("F11");
  EXPECT_TRUE(eventually([&] { return next.window->size().width == 660; }));
}

TEST(OpenPanel, SwitchesToFullScreenAndBack) {
  Game game(Conditions{.has_window_manager = true});
  ASSERT_TRUE(game.is_on_title());
  open_panel(game);
  for (const char* key : {"Down", "Return"})
    game.tap(key);
  ASSERT_TRUE(game.is_panel_open()); // of the settings, the first
  for (const char* key : {"Down", "Down", "Return"})
    game.tap(key);
  EXPECT_TRUE(kavo::desktop::eventually([&] { return game.window->size().width == 1280; }));
  game.tap("Return");
  EXPECT_TRUE(kavo::desktop::eventually([&] { return game.window->size().width == 660; }));
}

TEST(OpenPanel, IsLeftWithTheWindow) {
  Game game;
  game.start_playing();
  open_panel(game);
  game.window->ask_to_close();
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
}

} // namespace
