// What a player sees who started the game from a menu and has no terminal: the program's messages
// in a window of its own, which a key closes.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>

#include "tests/desktop/game/playing.h"

namespace {

namespace fs = std::filesystem;
using kavo::playing::Conditions;
using kavo::playing::Game;

constexpr const char* message = "KAVO"; // the window's title
constexpr const char* table = "tmp/kavo_high.txt";

void start_from_a_menu(kavo::desktop::Launch& launch) {
  launch.environment["QORRT_MESSAGES"] = "window";
}

kavo::desktop::Launch launch_from_a_menu(const fs::path& folder) {
  kavo::desktop::Launch launch = kavo::playing::launch(folder, "", {});
  start_from_a_menu(launch);
  return launch;
}

// How many pixels in the part above its button are not of the colour of its corner.
long ink_of(const kavo::desktop::Bitmap& picture) {
  const auto text_end = picture.pixels.begin() + picture.pixels.size() / 2;
  return std::count_if(picture.pixels.begin(), text_end,
                       [&](uint32_t pixel) { return pixel != picture.at(0, 0); });
}

// Closes the message as somebody does who has read it.
void dismiss(kavo::desktop::Desktop& desktop) {
  const kavo::desktop::DesktopWindow window = desktop.wait_for_window(message);
  constexpr long some_words = 500; // pixels
  ASSERT_TRUE(kavo::desktop::eventually([&] {
    const auto picture = window.pixels_if_visible();
    return picture && ink_of(*picture) > some_words;
  }));
  window.focus();
  desktop.tap("Return");
  ASSERT_TRUE(kavo::desktop::eventually([&] { return !desktop.find_window(message); }));
}

TEST(FromAMenu, ASecondCopySaysInAWindowWhyItDoesNotStart) {
  Game game(Conditions{.change = start_from_a_menu});
  ASSERT_TRUE(game.is_on_title());
  const auto second = game.desktop.start(launch_from_a_menu(game.folder.path()));
  dismiss(game.desktop);
  const auto outcome = second->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_TRUE(outcome.errors.starts_with("the game is running already")) << outcome.errors;
}

TEST(FromAMenu, TheGameBeginsOnceItIsReadThatScoresAreNotKept) {
  kavo::desktop::Desktop desktop;
  const kavo::test::TemporaryFolder folder;
  kavo::test::write_file(folder / "tmp", "mine");
  const auto process = desktop.start(launch_from_a_menu(folder.path()));
  desktop.wait_for_window(message);
  EXPECT_FALSE(desktop.find_window(kavo::playing::title));
  dismiss(desktop);
  desktop.wait_for_window(kavo::playing::title).ask_to_close();
  EXPECT_EQ(process->wait().code, 0);
}

TEST(FromAMenu, AnErrorIsShownWhenTheGameIsGone) {
  Game game(Conditions{.change = start_from_a_menu});
  game.lose();
  fs::create_directory(game.folder / table); // where no table can be written any more
  game.enter_name();
  game.desktop.wait_for_window(message);
  EXPECT_FALSE(game.desktop.find_window(kavo::playing::title));
  EXPECT_TRUE(game.process->is_running());
  dismiss(game.desktop);
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "Unhandled exception: BINWRITER: cannot write \"tmp/kavo_high.txt\": "
                            "Is a directory\n");
}

TEST(FromAMenu, AMessageGoesWithTheProgramThatASignalEnds) {
  kavo::desktop::Desktop desktop;
  const kavo::test::TemporaryFolder folder;
  kavo::test::write_file(folder / "tmp", "mine");
  const auto process = desktop.start(launch_from_a_menu(folder.path()));
  desktop.wait_for_window(message);
  process->send_signal(SIGTERM);
  const auto outcome = process->wait();
  EXPECT_FALSE(outcome.has_exited);
  EXPECT_EQ(outcome.code, SIGTERM);
  EXPECT_TRUE(kavo::desktop::eventually([&] { return !desktop.find_window(message); }));
}

// Nobody waits for a window that cannot be: the error ends the program as it does in a terminal.
TEST(FromAMenu, WithoutADisplayNothingWaits) {
  const kavo::test::TemporaryFolder folder;
  kavo::desktop::Launch launch = launch_from_a_menu(folder.path());
  launch.environment["DISPLAY"] = std::nullopt;
  launch.environment["WAYLAND_DISPLAY"] = std::nullopt;
  EXPECT_EQ(kavo::desktop::Process(launch).wait().code, 1);
}

TEST(FromAMenu, ADisplayThatGoesAwayLeavesNothingToWaitFor) {
  Game game(Conditions{.change = start_from_a_menu});
  ASSERT_TRUE(game.is_on_title());
  game.desktop.end();
  EXPECT_EQ(game.process->wait().code, 1);
}

} // namespace
