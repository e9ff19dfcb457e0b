// The pictures of the recordings in games/, drawn by the real host: their checksums stand in
// games/pictures.txt. scripted_games.h tells how they are made anew.
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>

#include "game/commands.h"
#include "game/program.h"
#include "game/state.h"
#include "host/screen/calm_display.h"
#include "recording/compression.h"
#include "recording/replay.h"
#include "tests/fakes/stage.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

using recording::Replay;
using recording::Standing;

const std::string folder_of_games = KAVO_RECORDED_GAMES;

uint32_t sum_of(const host::Canvas& canvas) {
  const auto pixels = canvas.pixels();
  std::string bytes;
  bytes.reserve(pixels.size() * 3);
  for (const uint32_t pixel : pixels)
    for (const unsigned shift : {16U, 8U, 0U})
      bytes += static_cast<char>(pixel >> shift);
  return recording::checksum(bytes);
}

// A checksum of the checksums of every so-many-th frame's pictures, the first and last of an
// animation's among them.
uint32_t pictures_of(const std::string& name, std::optional<int> calm_share) {
  constexpr int64_t frames_for_a_picture = 60;
  const auto recording = recording::parsed(read_file(folder_of_games + "/" + name + ".kavo"));
  std::string sums;
  stage() = {};
  stage().calm_share = calm_share;
  stage().watch = [&sums](const host::Canvas& canvas) {
    sums += std::to_string(sum_of(canvas)) + '\n';
  };
  qor_runtime_set_handle(qorrt_init(0, nullptr));
  static_cast<void>(command::screen(SCRW, SCRH, window_title, 1));
  Replay replay(recording);
  Standing standing = Standing::playing;
  while (standing == Standing::playing) {
    replay.set_presented(replay.progress().frames % frames_for_a_picture == 0);
    standing = replay.play_frame();
  }
  EXPECT_EQ(standing, Standing::as_recorded);
  EXPECT_GT(sums.size(), 50U);
  qorrt_shutdown(qor_runtime_handle());
  release_state();
  stage() = {};
  return recording::checksum(sums);
}

std::string line_of(const std::string& name, std::optional<int> calm_share) {
  return name + (calm_share ? " calm " : " ") + std::to_string(pictures_of(name, calm_share)) +
         "\n";
}

TEST(PicturesOfRecordedGames, AreWhatTheyWere) {
  const WorkingFolder folder;
  std::string lines;
  for (const char* name : {"nameless", "power-ups"})
    lines += line_of(name, std::nullopt);
  lines += line_of("clumsy", host::CalmDisplay::usual_share);
  const std::string file = folder_of_games + "/pictures.txt";
  if (std::getenv("KAVO_UPDATE_GOLDEN") != nullptr)
    write_file(file, lines);
  EXPECT_EQ(lines, read_file(file));
}

} // namespace
} // namespace kavo::test
