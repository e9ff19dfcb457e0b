// Where the window was: kept for the next start, whatever the file says.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/settings/window_state.h"
#include "tests/fakes/stage.h"
#include "tests/host/played.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using kavo::host::read_window_state;
using kavo::host::WindowPlace;
using kavo::host::write_window_state;
using kavo::test::Environment;
using kavo::test::Played;
using kavo::test::read_file;
using kavo::test::stage;
using kavo::test::write_file;

constexpr WindowPlace some_place = {
    .width = 1320, .height = 1600, .corner = {{-20, 40}}, .is_full_screen = true};

class WindowState : public testing::Test {
protected:
  kavo::test::TemporaryFolder home;
  fs::path folder = home.path() / "state" / "kavo";
  fs::path file = folder / "window.ini";
};

TEST_F(WindowState, IsReadBackAsItWasWritten) {
  EXPECT_EQ(read_window_state(folder), std::nullopt);
  write_window_state(folder, some_place);
  EXPECT_EQ(read_window_state(folder), some_place);
  const WindowPlace elsewhere = {.width = 10, .height = 20};
  write_window_state(folder, elsewhere);
  EXPECT_EQ(read_window_state(folder), elsewhere);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
  struct stat status = {};
  ASSERT_EQ(::stat(folder.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(WindowState, IsWrittenOnlyWhenItHasChanged) {
  write_window_state(folder, some_place);
  const std::string same = read_file(file) + "; a mark\n";
  write_file(file, same);
  write_window_state(folder, some_place);
  EXPECT_EQ(read_file(file), same);
}

TEST_F(WindowState, ThatMakesNoSenseIsNone) {
  fs::create_directories(folder);
  for (const char* text :
       {"", "what", "[window]\nwidth = 5\n", "[window]\nwidth = 0\nheight = 5\n",
        "[window]\nwidth = 9999999\nheight = 5\n", "[window]\nwidth = 99999999999999\nheight = 5\n",
        "[window]\nwidth = 5x\nheight = 5\n"}) {
    write_file(file, text);
    EXPECT_EQ(read_window_state(folder), std::nullopt) << text;
  }
  write_file(file, "[window]\nx = 5\nwidth = 7\nheight = 6\nfull_screen = maybe\n");
  EXPECT_EQ(read_window_state(folder), (WindowPlace{.width = 7, .height = 6}));
  write_file(file, std::string(5000, ';'));
  EXPECT_EQ(read_window_state(folder), std::nullopt);
}

TEST_F(WindowState, WhatIsInTheWayHarmsNothing) {
  fs::create_directories(file);
  write_window_state(folder, some_place);
  EXPECT_EQ(read_window_state(folder), std::nullopt);
  EXPECT_TRUE(fs::is_directory(file));
  write_window_state(home.path() / "settings", some_place);
  const fs::path pipe = home.path() / "settings" / "window.ini";
  fs::remove(pipe);
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(read_window_state(pipe.parent_path()), std::nullopt) << "nothing waits for it";
}

TEST_F(WindowState, IsNotKeptBelowAFile) {
  write_file(home.path() / "state", "in the way");
  write_window_state(folder, some_place);
  EXPECT_EQ(read_file(home.path() / "state"), "in the way");
}

// ---- in a game ----------------------------------------------------------------------------------

class RememberedWindow : public WindowState {
protected:
  RememberedWindow() {
    stage() = {};
    stage().state_folder = folder;
    stage().place = {.width = 660, .height = 800, .corner = {{10, 20}}};
  }
  ~RememberedWindow() override { stage() = {}; }

  // A game that the player leaves with the window like this. How it asked for it.
  static kavo::host::ScreenRequest play(const WindowPlace& left,
                                        const std::vector<const char*>& words = {"kavo"},
                                        double scale = 1) {
    const Played program(words);
    program.send("SCREEN", 660, 800, "x", scale);
    kavo::host::ScreenRequest request = stage().requests.back();
    stage().place = left;
    program.send("GFX.CLOSE");
    return request;
  }

  kavo::test::WorkingFolder scores;
};

constexpr WindowPlace moved = {.width = 1320, .height = 1600, .corner = {{50, 60}}};
constexpr WindowPlace filling = {
    .width = 1320, .height = 1600, .corner = {{50, 60}}, .is_full_screen = true};

TEST_F(RememberedWindow, IsAskedForAtTheNextStart) {
  const auto first = play(moved);
  EXPECT_EQ(first.place, std::nullopt);
  EXPECT_TRUE(first.may_grow);
  EXPECT_EQ(play(filling).place, moved);
  EXPECT_TRUE(play(filling).is_full_screen);
  EXPECT_EQ(read_window_state(folder), filling);
}

TEST_F(RememberedWindow, HasAnyScaleThatTheProgramNames) {
  for (const double scale : {0.5, 1.5, 2.25})
    EXPECT_EQ(play(moved, {"kavo"}, scale).scale, scale);
}

TEST_F(RememberedWindow, IsNoOtherProgramsWindow) {
  for (const char* name : {"another", "", "/usr/games/kavorik"}) {
    const auto request = play(moved, {name});
    EXPECT_FALSE(request.may_grow) << name;
    EXPECT_EQ(request.place, std::nullopt) << name;
    EXPECT_EQ(read_window_state(folder), std::nullopt) << name;
  }
  EXPECT_TRUE(play(moved, {"/usr/libexec/kavo/kavo"}).may_grow);
}

TEST_F(RememberedWindow, StaysAsItIsWhereOptionsGoBeforeIt) {
  write_window_state(folder, filling);
  {
    const Environment scale("QORRT_SCALE", "3");
    const Environment full_screen("QORRT_FULLSCREEN", "0");
    stage().place = {.width = 1980, .height = 2400};
    const auto request = play({.width = 1980, .height = 2400, .corner = {{1, 2}}});
    EXPECT_EQ(request.place, std::nullopt);
    EXPECT_EQ(request.scale, 3);
    EXPECT_FALSE(request.may_grow);
    EXPECT_FALSE(request.is_full_screen);
  }
  EXPECT_EQ(read_window_state(folder), filling);
}

TEST_F(RememberedWindow, TakesWhatThePlayerChangedAfterwards) {
  write_window_state(folder, moved);
  const Environment scale("QORRT_SCALE", "1");
  const Environment full_screen("QORRT_FULLSCREEN", "1");
  stage().place->is_full_screen = true;
  const WindowPlace left = {.width = 700, .height = 850, .corner = {{5, 5}}};
  EXPECT_TRUE(play(left).is_full_screen);
  EXPECT_EQ(read_window_state(folder), left);
}

TEST_F(RememberedWindow, IsNobodysWhereNobodyPlaysOrNothingIsSeen) {
  const auto scene = play(moved, {"kavo", "shot", "title"});
  EXPECT_FALSE(scene.may_grow);
  play(moved, {});
  stage().place.reset();
  const Played program;
  program.send("SCREEN", 660, 800, "x", 1);
  EXPECT_FALSE(fs::exists(folder));
}

} // namespace
