// The real game while its player is in another window: it stands still until they are back.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "tests/desktop/game/playing.h"

namespace {

namespace fs = std::filesystem;
using kavo::desktop::DesktopWindow;
using kavo::playing::Conditions;
using kavo::playing::Game;

constexpr uint32_t box_frame = 0x4F6480; // around what says that the game waits

class GameBesideAnother : public testing::Test {
protected:
  GameBesideAnother() : game(Conditions{.has_window_manager = true}) {}

  void come_back(const DesktopWindow& other) {
    other.destroy();
    ASSERT_TRUE(kavo::desktop::eventually([&] { return game.window->is_focused(); }));
  }

  // Away and back; the key that goes on would be seen by the screen if it were the game's.
  void leave_and_return(const std::string& key_to_go_on) {
    const DesktopWindow other = game.desktop.open_other_window();
    ASSERT_TRUE(game.is_waiting());
    game.tap("space"); // into the other window
    come_back(other);
    ASSERT_TRUE(game.is_waiting());
    game.tap(key_to_go_on);
    // What is typed together with that key would not be the game's either.
    ASSERT_TRUE(game.shows([](const auto& picture) { return picture.at(140, 358) != box_frame; }));
  }

  Game game;
};

TEST_F(GameBesideAnother, WaitsOnEveryScreenAndItsKeyIsNotTheGames) {
  ASSERT_TRUE(game.is_on_title());
  leave_and_return("Escape");
  ASSERT_TRUE(game.is_on_title());
  game.tap("o");
  ASSERT_TRUE(game.is_in_options());
  leave_and_return("Escape");
  ASSERT_TRUE(game.is_in_options());
  game.tap("Escape");
  game.start_playing();
  leave_and_return("p");
  ASSERT_TRUE(game.is_playing());
  game.tap("p");
  ASSERT_TRUE(game.is_paused());
  leave_and_return("Escape");
  ASSERT_TRUE(game.is_paused());
  game.tap("Escape");
  game.lose();
  leave_and_return("Return");
  ASSERT_TRUE(game.is_entering_a_name());
}

TEST_F(GameBesideAnother, GoesOnWhereItWas) {
  game.start_playing();
  leave_and_return("space");
  ASSERT_TRUE(game.is_playing());
  EXPECT_EQ(game.move(-1) + game.move(1), 2);
}

TEST_F(GameBesideAnother, GoesOnAfterAClick) {
  game.start_playing();
  const DesktopWindow other = game.desktop.open_other_window();
  ASSERT_TRUE(game.is_waiting());
  come_back(other);
  const auto place = game.window->place();
  game.desktop.move_pointer(place.x + 100, place.y + 100);
  // A desktop may take the first click for itself.
  EXPECT_TRUE(game.shows([&](const auto&) {
    game.desktop.press_pointer();
    game.desktop.release_pointer();
    return game.picture().at(146, 300) == kavo::playing::well_frame;
  }));
}

TEST_F(GameBesideAnother, WaitsWhenItIsMinimised) {
  game.start_playing();
  game.window->minimise();
  ASSERT_TRUE(kavo::desktop::eventually([&] { return !game.window->is_shown(); }));
  game.window->restore();
  ASSERT_TRUE(
      kavo::desktop::eventually([&] { return game.window->pixels_if_visible().has_value(); }));
  EXPECT_TRUE(game.is_waiting());
}

TEST_F(GameBesideAnother, EndsWhileItWaits) {
  for (const int signal : {0, SIGINT, SIGTERM}) {
    Game waiting(Conditions{.has_window_manager = true});
    waiting.start_playing();
    waiting.desktop.open_other_window();
    ASSERT_TRUE(waiting.is_waiting());
    if (signal == 0)
      waiting.window->ask_to_close();
    else
      waiting.process->send_signal(signal);
    const auto outcome = waiting.process->wait();
    EXPECT_TRUE(outcome.has_exited);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, "");
  }
}

// How often its threads have gone to sleep, which each wakes up from.
int naps_of(pid_t process) {
  int naps = 0;
  for (const auto& thread : fs::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
    std::ifstream status(thread.path() / "status");
    for (std::string word; status >> word;)
      if (int count = 0; word == "voluntary_ctxt_switches:" && status >> count)
        naps += count;
  }
  return naps;
}

// A game in play wakes up sixty times a second, and its sound more often.
TEST_F(GameBesideAnother, SleepsUntilSomethingHappens) {
  game.start_playing();
  game.desktop.open_other_window();
  ASSERT_TRUE(game.is_waiting());
  std::this_thread::sleep_for(std::chrono::seconds(3)); // what has just happened may go on
  const int before = naps_of(game.process->id());
  std::this_thread::sleep_for(std::chrono::seconds(3));
  EXPECT_LE(naps_of(game.process->id()) - before, 6);
}

TEST(GameAlone, DoesNotWaitForAKeyboardThatItNeverHad) {
  kavo::desktop::Desktop desktop;
  const kavo::test::TemporaryFolder folder;
  const auto process = desktop.start(kavo::playing::launch(folder.path(), "", {}));
  const DesktopWindow window = desktop.wait_for_window(kavo::playing::title);
  EXPECT_TRUE(kavo::desktop::eventually([&] {
    const auto picture = window.pixels_if_visible();
    return picture && picture->at(3, 790) == kavo::playing::night;
  }));
}

} // namespace
