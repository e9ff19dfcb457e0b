#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "host/screen/calm_display.h"
#include "tests/fakes/stage.h"
#include "tests/support/temporary_folder.h"
#include "tools/film/flash_meter.h"
#include "tools/film/flashes.h"
#include "tools/film/studio.h"

namespace kavo::film {
namespace {

constexpr int allowed = 3; // in any second

// The last picture of a test scene.
host::Canvas picture_of(const char* scene) {
  const kavo::test::WorkingFolder pictures;
  std::optional<host::Canvas> last;
  kavo::test::stage().watch = [&](const host::Canvas& picture) { last = copy_of(picture); };
  EXPECT_TRUE(run_game({"shot", scene}, 1));
  kavo::test::stage() = {};
  return std::move(*last);
}

// The flashes of a still that is moved to and fro, sixteen times.
int flashes_of_shaken(const host::Canvas& still, int by) {
  FlashMeter meter;
  for (int frame = 0; frame <= 16; ++frame) {
    host::Canvas picture = copy_of(still);
    std::vector<uint32_t> pixels(still.pixels().begin(), still.pixels().end());
    std::rotate(pixels.begin(), pixels.begin() + frame % 2 * by, pixels.end());
    std::ranges::copy(pixels, picture.pixels_to_change().begin());
    meter.look_at(picture, frame * 16.0);
  }
  return meter.general().in_step.most();
}

TEST(Flashes, AFullWellThatShakesFlashesAndOneThatTremblesDoesNot) {
  const host::Canvas storm = picture_of("storm");
  EXPECT_EQ(flashes_of_shaken(storm, 12), 8);
  EXPECT_EQ(flashes_of_shaken(storm, 2), 0);
}

FilmedPlay play_of(double liking_for_tips, int64_t frames) {
  const kavo::test::WorkingFolder scores;
  return film_play(Player({.pull = liking_for_tips}, 10), 1, frames, {1, 0.5});
}

FilmedPlay calm_play_of(double liking_for_tips, int64_t frames) {
  const kavo::test::WorkingFolder scores;
  return film_play(Player({.pull = liking_for_tips}, 10), 1, frames, {1},
                   host::CalmDisplay::usual_share);
}

// Tips and shakes do flash more often in a window of the picture's size: as often as the manual
// says. In one of half its size nothing does; and at rest nothing does in either, neither rows that
// clear nor lightning, popups or the red pulse of a full well.
TEST(Flashes, OnlyTipsAndShakesInALargeWindowFlashMoreThanThreeTimesInASecond) {
  const FilmedPlay play = play_of(0.4, 700);
  ASSERT_TRUE(play.has_ended_well);
  EXPECT_GE(play.seconds, 11);
  EXPECT_GE(play.tips, 3);
  const Flashing& whole = play.scales[0];
  EXPECT_GT(whole.all.general.overlapping, allowed);
  EXPECT_LE(whole.all.general.overlapping, 11);
  EXPECT_LE(whole.all.general.in_step, 4);
  EXPECT_LE(whole.all.red.overlapping, allowed);
  for (const MostOfEach& most : {whole.at_rest, play.scales[1].all}) {
    EXPECT_LE(most.general.overlapping, allowed);
    EXPECT_LE(most.red.overlapping, allowed);
  }
}

// The same play as above.
TEST(Flashes, NothingFlashesMoreThanThreeTimesInASecondOnACalmDisplay) {
  const FilmedPlay play = calm_play_of(0.4, 700);
  ASSERT_TRUE(play.has_ended_well);
  EXPECT_GE(play.tips, 3);
  EXPECT_LE(play.scales[0].all.general.overlapping, allowed);
  EXPECT_LE(play.scales[0].all.red.overlapping, allowed);
  EXPECT_EQ(play.scales[0].too_many.overlapping, 0);
}

TEST(Flashes, APlayerWhoAvoidsTipsSeesThreeInASecondAtMostInASmallWindow) {
  const FilmedPlay play = play_of(-0.3, 400);
  ASSERT_TRUE(play.has_ended_well);
  for (const MostOfEach& most : {play.scales[0].at_rest, play.scales[1].all}) {
    EXPECT_LE(most.general.overlapping, allowed);
    EXPECT_LE(most.red.overlapping, allowed);
  }
}

} // namespace
} // namespace kavo::film
