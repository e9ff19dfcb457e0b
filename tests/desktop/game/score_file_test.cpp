// Score files from hell: the real program starts with them, shows its title with what it made of
// them, and is left as always.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/desktop/game/playing.h"

namespace {

using kavo::playing::Conditions;
using kavo::playing::Game;

void expect_a_title_with(const std::string& scores) {
  Game game(Conditions{.arrange = [&](const kavo::test::TemporaryFolder& folder) {
    std::filesystem::create_directory(folder / "tmp");
    kavo::test::write_file(folder / "tmp/kavo_high.txt", scores);
  }});
  EXPECT_TRUE(game.is_on_title());
  game.tap("Escape");
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.output, "done\n");
  EXPECT_EQ(outcome.errors, "");
}

std::string as_utf16(const std::string& text) {
  std::string bytes = "\xFF\xFE";
  for (const char character : text)
    (bytes += character) += '\0';
  return bytes;
}

TEST(ScoreFile, OfNulBytesIsNoObstacle) {
  expect_a_title_with(std::string("JON;12\0ABE;8\n", 13) + std::string(1000, '\0') + "\nZED;5");
}

TEST(ScoreFile, OfAHundredMegabytesInOneLineIsNoObstacle) {
  expect_a_title_with(std::string(100'000'000, 'N') + ";77");
}

TEST(ScoreFile, OfNumbersWithFourHundredDigitsIsNoObstacle) {
  const std::string digits(400, '9');
  expect_a_title_with("JON;" + digits + "\nABE;-" + digits + "\nZED;0." + digits + "\nQUI;1e" +
                      digits + "\n" + digits + ";" + digits);
}

TEST(ScoreFile, InUtf16WithAByteOrderMarkIsNoObstacle) {
  expect_a_title_with(as_utf16("JON;12000\nABE;8400\nZED;5000"));
}

TEST(ScoreFile, OfSemicolonsIsNoObstacle) {
  expect_a_title_with(std::string(100'000, ';'));
}

TEST(ScoreFile, WithCarriageReturnsIsNoObstacle) {
  expect_a_title_with("JON;12000\r\nABE;8400\r\nZED;5000\r\n");
}

TEST(ScoreFile, OfLineFeedsIsNoObstacle) {
  expect_a_title_with(std::string(1'000'000, '\n'));
}

TEST(ScoreFile, OfEveryByteIsNoObstacle) {
  std::string bytes;
  for (int round = 0; round < 1000; ++round)
    for (int byte = 255; byte >= 0; --byte)
      bytes += static_cast<char>(byte);
  expect_a_title_with(bytes);
}

} // namespace
