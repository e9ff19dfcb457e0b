// Score files from hell: the real program starts with them, shows its title with what it made of
// them, and is left as always.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/desktop/game/playing.h"

namespace {

namespace fs = std::filesystem;
using kavo::playing::Conditions;
using kavo::playing::Game;

void expect_a_title_with(const std::string& scores) {
  Game game(Conditions{.arrange = [&](const kavo::test::TemporaryFolder& folder) {
    fs::create_directory(folder / "tmp");
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

TEST(ScoreFile, OfNumbersWithFourHundredDigitsIsNoObstacle) {
  const std::string digits(400, '9');
  expect_a_title_with("JON;" + digits + "\nABE;-" + digits + "\nZED;0." + digits + "\nQUI;1e" +
                      digits + "\n" + digits + ";" + digits);
}

TEST(ScoreFile, InUtf16WithAByteOrderMarkIsNoObstacle) {
  expect_a_title_with(as_utf16("JON;12000\nABE;8400\nZED;5000"));
}

TEST(ScoreFile, OfSemicolonsIsNoObstacle) {
  expect_a_title_with(std::string(65'536, ';'));
}

TEST(ScoreFile, WithCarriageReturnsIsNoObstacle) {
  expect_a_title_with("JON;12000\r\nABE;8400\r\nZED;5000\r\n");
}

TEST(ScoreFile, OfLineFeedsIsNoObstacle) {
  expect_a_title_with(std::string(65'536, '\n'));
}

TEST(ScoreFile, OfEveryByteIsNoObstacle) {
  std::string bytes;
  for (int round = 0; round < 200; ++round)
    for (int byte = 255; byte >= 0; --byte)
      bytes += static_cast<char>(byte);
  expect_a_title_with(bytes);
}

// ---- what is none -------------------------------------------------------------------------------

constexpr const char* table = "tmp/kavo_high.txt";
constexpr const char* aside = "tmp/kavo_high.txt.not-a-table";

std::string told(const std::string& what, const kavo::test::TemporaryFolder& folder) {
  return "\"tmp/kavo_high.txt\" was " + what +
         " and no table of scores; it is called \"tmp/kavo_high.txt.not-a-table\" now (in " +
         fs::canonical(folder.path()).string() + ")\n";
}

// A game is lost, named and saved; what stood in the table's place lies beside it. `put` puts that
// at a path, `is_kept` looks at it there.
void expect_put_aside(const std::string& what, void (*put)(const std::string&),
                      bool (*is_kept)(const std::string&)) {
  SCOPED_TRACE(what);
  Game game(Conditions{.arrange = [&](const kavo::test::TemporaryFolder& folder) {
    fs::create_directory(folder / "tmp");
    put(folder / table);
  }});
  game.lose();
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  game.tap("Escape");
  const auto outcome = game.process->wait();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, told(what, game.folder));
  EXPECT_TRUE(is_kept(game.folder / aside));
  EXPECT_TRUE(kavo::test::read_file(game.folder / table).starts_with("AAA;"));
}

TEST(NoScoreFile, APipeIsPutAside) {
  expect_put_aside(
      "a pipe", [](const std::string& path) { ASSERT_EQ(mkfifo(path.c_str(), 0600), 0); },
      [](const std::string& path) { return fs::is_fifo(path); });
}

TEST(NoScoreFile, ASocketIsPutAside) {
  expect_put_aside(
      "a socket",
      [](const std::string& path) {
        const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        path.copy(static_cast<char*>(address.sun_path), sizeof(address.sun_path) - 1);
        EXPECT_EQ(bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
        close(socket);
      },
      [](const std::string& path) { return fs::is_socket(path); });
}

TEST(NoScoreFile, ALinkToADeviceIsPutAside) {
  expect_put_aside(
      "a device", [](const std::string& path) { fs::create_symlink("/dev/zero", path); },
      [](const std::string& path) { return fs::read_symlink(path) == "/dev/zero"; });
}

TEST(NoScoreFile, ALinkThatGoesRoundIsPutAside) {
  expect_put_aside(
      "a link that leads nowhere",
      [](const std::string& path) { fs::create_symlink("kavo_high.txt", path); },
      [](const std::string& path) { return fs::is_symlink(path); });
}

TEST(NoScoreFile, AFolderIsPutAsideWithWhatItHolds) {
  expect_put_aside(
      "a folder",
      [](const std::string& path) {
        fs::create_directory(path);
        kavo::test::write_file(path + "/note", "mine");
      },
      [](const std::string& path) { return kavo::test::read_file(path + "/note") == "mine"; });
}

TEST(NoScoreFile, AnythingOfAGigabyteIsPutAside) {
  expect_put_aside(
      "a file larger than any table",
      [](const std::string& path) {
        kavo::test::write_file(path, "JON;1200\n");
        fs::resize_file(path, 1'000'000'000);
      },
      [](const std::string& path) { return fs::file_size(path) == 1'000'000'000; });
}

TEST(NoScoreFile, LeavesWhatWasPutAsideBefore) {
  Game game(Conditions{.arrange = [](const kavo::test::TemporaryFolder& folder) {
    fs::create_directories(folder / table);
    kavo::test::write_file(folder / aside, "first");
  }});
  EXPECT_TRUE(game.is_on_title());
  EXPECT_EQ(kavo::test::read_file(game.folder / aside), "first");
  EXPECT_TRUE(fs::is_directory(game.folder / aside + "-2"));
}

// A scene saves no scores: it moves nothing, and draws what it would without a table.
TEST(NoScoreFile, IsPassedOverByAScene) {
  const kavo::test::TemporaryFolder folder;
  fs::create_directory(folder / "tmp");
  ASSERT_EQ(mkfifo((folder / table).c_str(), 0600), 0);
  kavo::desktop::Launch launch = kavo::playing::launch(folder.path(), "1", {"shot", "opts"});
  launch.environment["DISPLAY"] = std::nullopt;
  const auto outcome = kavo::desktop::Process(launch).wait();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.output, "opts shot\n");
  EXPECT_EQ(outcome.errors, "");
  EXPECT_TRUE(fs::is_fifo(folder / table));
}

} // namespace
