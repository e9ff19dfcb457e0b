#include "tests/film/flashes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "tests/film/flash_meter.h"
#include "tests/film/studio.h"
#include "tests/support/temporary_folder.h"

namespace kavo::film {
namespace {

constexpr int allowed = 3; // in any second

// The last picture of a test scene.
host::Canvas picture_of(const char* scene) {
  const test::WorkingFolder pictures;
  std::optional<host::Canvas> last;
  studio().watch = [&](const host::Canvas& picture) { last = copy_of(picture); };
  EXPECT_TRUE(run_game({"shot", scene}, 1));
  studio() = {};
  return std::move(*last);
}

// The flashes of a still that is moved to and fro, sixteen times.
int flashes_of_shaken(const host::Canvas& still, int by) {
  FlashMeter meter;
  for (int frame = 0; frame <= 16; ++frame) {
    host::Canvas picture = copy_of(still);
    std::vector<uint32_t> pixels(still.pixels().begin(), still.pixels().end());
    picture.move_to(pixels.data());
    std::rotate(pixels.begin(), pixels.begin() + frame % 2 * by, pixels.end());
    meter.look_at(picture, frame * 16.0);
    picture.move_home();
  }
  return meter.general().in_step.most();
}

TEST(Flashes, AFullWellThatShakesFlashesAndOneThatTremblesDoesNot) {
  const host::Canvas storm = picture_of("storm");
  EXPECT_EQ(flashes_of_shaken(storm, 12), 8);
  EXPECT_EQ(flashes_of_shaken(storm, 2), 0);
}

// Everything but tips and shakes stays within what the guidelines allow, whichever way they are
// read: the rows that clear, lightning, popups, the red pulse of a full well. Tips and shakes do
// not; what they flash is what the manual says.
TEST(Flashes, WhereTheWellStandsStillThereAreThreeInASecondAtMost) {
  const test::WorkingFolder scores;
  for (const double pull : {0.4, -0.3}) {
    const auto flashes = flashes_of_play(Player({.pull = pull}, 10), 1, 500);
    ASSERT_TRUE(flashes.has_ended_well);
    EXPECT_GE(flashes.seconds, 8);
    EXPECT_LE(flashes.at_rest.general.overlapping, allowed);
    EXPECT_LE(flashes.at_rest.red.overlapping, allowed);
    EXPECT_LE(flashes.all.general.overlapping, 11);
    EXPECT_LE(flashes.all.general.in_step, 4);
    EXPECT_LE(flashes.all.red.overlapping, allowed);
  }
}

} // namespace
} // namespace kavo::film
