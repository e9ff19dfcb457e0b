// The game's window as the desktop's menu and taskbar know it.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "tests/desktop/game/playing.h"

namespace {

// What the desktop entry says of `key`.
std::string entry(const std::string& key) {
  std::ifstream file(DESKTOP_ENTRY);
  std::string line;
  while (std::getline(file, line))
    if (line.starts_with(key + "="))
      return line.substr(key.size() + 1);
  return {};
}

TEST(MenuEntry, NamesTheClassOfTheWindow) {
  const kavo::playing::Game game;
  const std::string name = entry("StartupWMClass");
  EXPECT_EQ(game.window->class_names(), (std::vector<std::string>{name, name}));
}

TEST(MenuEntry, HasAWindowWithAnIcon) {
  const kavo::playing::Game game;
  EXPECT_EQ(game.window->icon().width, 64);
}

} // namespace
