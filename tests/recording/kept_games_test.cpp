// The folder of the last games.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "recording/kept_games.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::recording {
namespace {

namespace fs = std::filesystem;
using test::read_file;
using test::TemporaryFolder;
using test::write_file;

Header header_of(int64_t began) {
  return {.version = "1", .began = began, .state = std::string(2000, 's')};
}

std::vector<std::string> names_in(const std::string& folder) {
  std::vector<std::string> names;
  for (const fs::path& game : kept_games(folder))
    names.push_back(game.filename());
  return names;
}

TEST(KeptGames, AreCalledByWhenTheyBeganAndCompressedWhenTheyHaveEnded) {
  const TemporaryFolder folder;
  const Header header = header_of(1'700'000'000);
  const auto game = keep_game(folder / "a/b", header);
  game->append(std::string(mark()) + header_block(header));
  game->append(frames_block({.frames = 3}, "abc") + end_block({.frames = 3}));
  ASSERT_EQ(names_in(folder / "a/b"), std::vector<std::string>{"2023-11-14T22-13-20Z.kavo"});
  const fs::path file = kept_games(folder / "a/b").front();
  const auto size = fs::file_size(file);
  EXPECT_EQ(read_recording(file).frames, "abc") << "what was appended is there at once";
  game->finish();
  EXPECT_LT(fs::file_size(file), size);
  EXPECT_EQ(read_recording(file).frames, "abc");
  EXPECT_TRUE(read_recording(file).is_complete);
  EXPECT_EQ(fs::status(folder / "a").permissions(), fs::perms::owner_all);
}

TEST(KeptGames, AreTheLastTwentyAndWhatElseLiesThereStays) {
  const TemporaryFolder folder;
  const std::vector<std::string> others = {"mine.kavo", "2023-11-14T22-13-20Z.kavo.txt",
                                           "2023-11-14T22-13-20Z-x.kavo", "0000.kavo"};
  for (const std::string& name : others)
    write_file(folder / name, "mine");
  fs::create_directory(folder / "2000-01-01T00-00-00Z.kavo");
  for (int64_t began = 0; began < 45; ++began)
    keep_game(folder.path(), header_of(began));
  const auto names = names_in(folder.path());
  ASSERT_EQ(names.size(), most_kept_games);
  EXPECT_EQ(names.front(), "1970-01-01T00-00-44Z.kavo");
  EXPECT_EQ(names.back(), "1970-01-01T00-00-25Z.kavo");
  for (const std::string& name : others)
    EXPECT_EQ(read_file(folder / name), "mine");
  EXPECT_TRUE(fs::is_directory(folder / "2000-01-01T00-00-00Z.kavo"));
}

TEST(KeptGames, OfOneSecondAreTwo) {
  const TemporaryFolder folder;
  keep_game(folder.path(), header_of(5));
  keep_game(folder.path(), header_of(5));
  EXPECT_EQ(names_in(folder.path()).size(), 2U);
}

TEST(KeptGames, AreNoneWhereThereIsNoFolder) {
  EXPECT_TRUE(kept_games("/nowhere/at/all").empty());
  EXPECT_TRUE(kept_games("").empty());
}

std::string reason_of(const fs::path& file) {
  try {
    read_recording(file);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

TEST(KeptGames, ThatCannotBeReadAreNamed) {
  const TemporaryFolder folder;
  EXPECT_EQ(reason_of(folder / "none"),
            "cannot read \"" + (folder / "none") + "\": No such file or directory");
  write_file(folder / "large", std::string(mark()));
  fs::resize_file(folder / "large", largest_file + 1);
  EXPECT_EQ(reason_of(folder / "large"),
            "\"" + (folder / "large") + "\": it is larger than a recording can be");
}

} // namespace
} // namespace kavo::recording
