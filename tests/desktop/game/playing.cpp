#include "tests/desktop/game/playing.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kavo::playing {

namespace {

constexpr int board_left = 150;
constexpr int board_top = 80;
constexpr int cell_size = 36;
constexpr int beside_the_streaks = 8; // a drop's streaks run down the middle of its columns
constexpr uint32_t panel_frame = 0x4F6480;
constexpr uint32_t accent = 0xFAE678; // (250, 230, 120): what the player is to look at

// Whether text in the accent colour stands in the 16 pixels below (x, y).
bool has_accent(const kavo::desktop::Bitmap& picture, int x, int y, int width) {
  for (int row = y; row < y + 16; ++row)
    for (int column = x; column < x + width; ++column)
      if (picture.at(column, row) == accent)
        return true;
  return false;
}

bool is_name_entry(const kavo::desktop::Bitmap& picture) {
  return has_accent(picture, 100, 150, 128);
}

} // namespace

kavo::desktop::Launch launch(const std::string& folder, const std::string& seed,
                             std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), KAVO_PROGRAM);
  kavo::desktop::Launch launch;
  launch.arguments = std::move(arguments);
  launch.folder = folder;
  launch.environment["SDL_AUDIODRIVER"] = "dummy";
  launch.environment["XDG_CONFIG_HOME"] = folder + "/config";
  launch.environment["XDG_STATE_HOME"] = folder + "/state";
  launch.environment["LSAN_OPTIONS"] = "print_suppressions=0:suppressions=" LEAK_SUPPRESSIONS;
  launch.environment["QORRT_SEED"] = seed.empty() ? std::nullopt : std::optional(seed);
  return launch;
}

uint32_t cell_in(const kavo::desktop::Bitmap& picture, int row, int column) {
  return picture.at(board_left + column * cell_size + beside_the_streaks,
                    board_top + row * cell_size + cell_size / 2);
}

Game::Game(const Conditions& conditions) : desktop(conditions.displays) {
  if (conditions.displays.size() > 1 || conditions.has_window_manager)
    desktop.start_window_manager();
  if (conditions.arrange)
    conditions.arrange(folder);
  kavo::desktop::Launch how = launch(folder.path(), conditions.seed, {});
  if (conditions.change)
    conditions.change(how);
  process = desktop.start(how);
  window = desktop.wait_for_window(title);
  window->focus();
}

bool Game::is_on_title() {
  return shows([](const auto& picture) { return has_accent(picture, 130, 470, 104); });
}

bool Game::is_in_options() {
  return shows([](const auto& picture) { return has_accent(picture, 130, 250, 80); });
}

bool Game::is_playing() {
  return shows([](const auto& picture) {
    return picture.at(board_left - 4, 300) != night && !has_accent(picture, 282, 338, 40);
  });
}

bool Game::is_entering_a_name() {
  return shows(is_name_entry);
}

bool Game::is_paused() {
  return shows([](const auto& picture) { return has_accent(picture, 282, 338, 40); });
}

bool Game::is_panel_open() {
  return shows([](const auto& picture) {
    return picture.at(31, 61) == panel_frame && has_accent(picture, 80, 150, 80);
  });
}

bool Game::is_waiting() {
  return shows([](const auto& picture) { return has_accent(picture, 282, 378, 96); });
}

int Game::leftmost_column() const {
  const kavo::desktop::Bitmap now = picture();
  for (int column = 0; column < 10; ++column)
    for (int row = 0; row < 9; ++row)
      if (cell_in(now, row, column) != empty_cell)
        return column;
  return 10;
}

bool Game::is_piece_high() const {
  constexpr int rows_where_it_appears = 4;
  constexpr int rows_looked_at = 9;
  const kavo::desktop::Bitmap now = picture();
  for (int column = 0; column < 10; ++column)
    for (int row = rows_where_it_appears; row < rows_looked_at; ++row)
      if (cell_in(now, row, column) != empty_cell)
        return false;
  return leftmost_column() < 10;
}

int Game::move(int moves) {
  const int step = moves < 0 ? -1 : 1;
  int moved = 0;
  for (int i = 0; i < std::abs(moves); ++i) {
    const int before = leftmost_column();
    tap(step < 0 ? "Left" : "Right");
    moved += kavo::desktop::eventually([&] { return leftmost_column() == before + step; });
  }
  return moved;
}

void Game::start_playing() {
  ASSERT_TRUE(is_on_title());
  tap("space");
  ASSERT_TRUE(is_playing());
}

void Game::start_again() {
  tap("Escape");
  ASSERT_TRUE(is_paused());
  tap("Escape");
  start_playing();
}

// Twenty pieces dropped where they appear overflow the well.
void Game::lose() {
  start_playing();
  ASSERT_TRUE(kavo::desktop::eventually([&] {
    tap("space");
    return is_name_entry(picture());
  }));
}

} // namespace kavo::playing
